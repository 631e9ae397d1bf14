#include "app/events/eventpage.h"

#include "app/appearance.h"
#include "app/events/eventlist.h"
#include "app/results/resultexport.h"
#include "mendo/clock.h"

#include <QComboBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace app {

namespace {

constexpr int controlHeight = 48;
constexpr int rowHeight = 40;  // two lines
constexpr int searchDelayMs = 300;
constexpr int dayWidth = 120;

}  // namespace

EventPage::EventPage(EventStore* store, QWidget* parent)
    : QWidget(parent),
      store_(store),
      list_(new EventList(this)),
      search_(store),
      all_(store),
      export_(new ResultExport(this)),
      text_(new QLineEdit),
      kind_(new QComboBox),
      day_(makeButton(QStringLiteral("btnEventDay"), {})),
      table_(new QTableView),
      count_(new QLabel),
      csv_(makeButton(QStringLiteral("btnEventCsv"), tr("CSV"))) {
    setUpTable();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(8, 6, 8, 6);
    column->setSpacing(6);
    column->addWidget(makeSearch());
    column->addWidget(table_, 1);
    column->addWidget(makeBottom());
    later_.setSingleShot(true);
    later_.setInterval(searchDelayMs);
    connect(&later_, &QTimer::timeout, this, &EventPage::search);
    connect(store, &EventStore::added, this, &EventPage::searchLater);
    connect(&search_, &EventSearch::done, this, &EventPage::showFound);
    connect(&all_, &EventSearch::done, this, &EventPage::collected);
    connect(export_, &ResultExport::written, this, [this](const QString& file) {
        count_->setText(tr("已保存：%1").arg(QFileInfo(file).fileName()));
    });
    showDay();
}

QPushButton* EventPage::makeButton(const QString& name, const QString& text) {
    auto* button = new QPushButton(text, this);
    button->setObjectName(name);
    button->setMinimumSize(controlHeight, controlHeight);
    return button;
}

QWidget* EventPage::makeSearch() {
    text_->setObjectName(QStringLiteral("edtEventText"));
    text_->setPlaceholderText(tr("查找"));
    addClearButton(text_);
    text_->setMinimumHeight(controlHeight);
    kind_->setObjectName(QStringLiteral("cmbEventKind"));
    kind_->setMinimumHeight(controlHeight);
    kind_->addItem(tr("全部事件"));
    for (int kind = 0; kind < eventKinds; ++kind) {
        kind_->addItem(kindText(Event::Kind(kind)));
    }
    day_->setMinimumWidth(dayWidth);
    QPushButton* const back = makeButton(QStringLiteral("btnEventDayBack"), QStringLiteral("◀"));
    QPushButton* const on = makeButton(QStringLiteral("btnEventDayOn"), QStringLiteral("▶"));
    back->setAccessibleName(tr("前一天"));
    on->setAccessibleName(tr("后一天"));
    day_->setToolTip(tr("显示所有日期"));
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(text_, 1);
    row->addWidget(kind_);
    row->addWidget(back);
    row->addWidget(day_);
    row->addWidget(on);
    connect(text_, &QLineEdit::textChanged, this, &EventPage::searchLater);
    connect(kind_, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &EventPage::search);
    connect(back, &QPushButton::clicked, this, [this] { moveDay(-1); });
    connect(on, &QPushButton::clicked, this, [this] { moveDay(1); });
    connect(day_, &QPushButton::clicked, this, [this] { moveDay(0); });
    return bar;
}

QWidget* EventPage::makeBottom() {
    count_->setObjectName(QStringLiteral("lblEventCount"));
    csv_->setToolTip(tr("将找到的所有事件写入文件"));
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(csv_);
    row->addWidget(count_, 1);
    connect(csv_, &QPushButton::clicked, this, [this] { collect({}); });
    return bar;
}

void EventPage::setUpTable() {
    constexpr int widths[] = {128, 92, 84, 84, 62};
    table_->setObjectName(QStringLiteral("eventTable"));
    table_->setModel(list_);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table_->setTabKeyNavigation(false);
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table_->verticalHeader()->setDefaultSectionSize(rowHeight);
    QHeaderView* const header = table_->horizontalHeader();
    header->setHighlightSections(false);
    header->setStretchLastSection(true);
    for (int column = 0; column < int(std::size(widths)); ++column) {
        header->resizeSection(column, widths[column]);
    }
}

// --- Searching ------------------------------------------------------------------------------------

EventFilter EventPage::filter() const {
    EventFilter filter;
    if (kind_->currentIndex() > 0) {
        filter.kind = Event::Kind(kind_->currentIndex() - 1);
    }
    filter.day = chosenDay_;
    filter.text = text_->text().trimmed();
    return filter;
}

void EventPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    search();
}

/// Hidden, the page costs nothing.
void EventPage::searchLater() {
    if (isVisible() && !later_.isActive()) {
        later_.start();
    }
}

void EventPage::search() {
    later_.stop();
    search_.start(filter(), mostShown);
}

void EventPage::showFound() {
    list_->show(search_.found());
    const int count = search_.found().size();
    count_->setText(search_.isCut() ? tr("最新的 %1 个事件").arg(count) : tr("%1 个事件").arg(count));
    csv_->setEnabled(count > 0);
}

/// The first step back leads from all days to today.
void EventPage::moveDay(int days) {
    const QDate today = mendo::Clock::current().now().date();
    if (days == 0) {
        chosenDay_ = QDate();
    } else {
        chosenDay_ = chosenDay_.isValid() ? std::min(today, chosenDay_.addDays(days)) : today;
    }
    showDay();
    search();
}

void EventPage::showDay() {
    day_->setText(chosenDay_.isValid() ? chosenDay_.toString(Qt::ISODate) : tr("所有日期"));
}

// --- Export ---------------------------------------------------------------------------------------

void EventPage::exportTo(const QString& file) {
    collect(file);
}

/// All that the search finds, not only what is shown.
void EventPage::collect(const QString& file) {
    exportFile_ = file;
    csv_->setEnabled(false);
    all_.start(filter(), EventStore::mostEvents + EventStore::mostWaiting);
}

void EventPage::collected() {
    csv_->setEnabled(true);
    const auto write = [events = all_.found()](QIODevice* device) {
        QByteArray lines = eventCsvHeader();
        for (const Event& event : events) {
            lines += eventCsvLine(event);
        }
        return device->write(lines) == lines.size();
    };
    if (exportFile_.isEmpty()) {
        export_->ask(QStringLiteral("events.csv"), write);
    } else {
        export_->writeTo(exportFile_, write);
    }
}

}  // namespace app
