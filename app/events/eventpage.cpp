#include "app/events/eventpage.h"

#include "app/appearance.h"
#include "app/events/eventlist.h"
#include "app/results/resultexport.h"
#include "look/icon.h"
#include "look/scale.h"
#include "mendo/clock.h"

#include <QComboBox>
#include <QEvent>
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

constexpr int rowPx = 48;  // two lines
constexpr int searchDelayMs = 300;
constexpr int kindPx = 176, dayPx = 128;
constexpr int narrowPx = 640;  // narrower, the day stands below the text, and some columns are left out
constexpr int widthsPx[] = {144, 168, 136, 152, 80};

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
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(makeSearch());
    column->addWidget(table_, 1);
    column->addWidget(makeBottom());
    fit();
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
    return button;
}

QWidget* EventPage::makeSearch() {
    text_->setObjectName(QStringLiteral("edtEventText"));
    text_->setPlaceholderText(tr("查找"));
    addClearButton(text_);
    kind_->setObjectName(QStringLiteral("cmbEventKind"));
    kind_->addItem(tr("全部事件"));
    for (int kind = 0; kind < eventKinds; ++kind) {
        kind_->addItem(kindText(Event::Kind(kind)));
    }
    QPushButton* const back = makeButton(QStringLiteral("btnEventDayBack"), {});
    QPushButton* const on = makeButton(QStringLiteral("btnEventDayOn"), {});
    back->setIcon(look::icon(QStringLiteral("chevron_left")));
    on->setIcon(look::icon(QStringLiteral("chevron_right")));
    back->setAccessibleName(tr("前一天"));
    on->setAccessibleName(tr("后一天"));
    auto* days = new QHBoxLayout;
    days->addWidget(back);
    days->addWidget(day_, 1);
    days->addWidget(on);
    auto* words = new QHBoxLayout;
    words->addWidget(text_, 1);
    words->addWidget(kind_);
    auto* bar = new QWidget;
    filter_ = new QBoxLayout(QBoxLayout::LeftToRight, bar);
    filter_->addLayout(words, 1);
    filter_->addLayout(days);
    connect(text_, &QLineEdit::textChanged, this, &EventPage::searchLater);
    connect(kind_, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &EventPage::search);
    connect(back, &QPushButton::clicked, this, [this] { moveDay(-1); });
    connect(on, &QPushButton::clicked, this, [this] { moveDay(1); });
    connect(day_, &QPushButton::clicked, this, [this] { moveDay(0); });
    return bar;
}

QWidget* EventPage::makeBottom() {
    count_->setObjectName(QStringLiteral("lblEventCount"));
    csv_->setIcon(look::icon(QStringLiteral("export")));
    csv_->setAccessibleDescription(tr("将找到的所有事件写入文件"));
    auto* bar = new QFrame;
    bar->setObjectName(QStringLiteral("pageBar"));
    auto* row = new QHBoxLayout(bar);
    row->addWidget(count_, 1);
    row->addWidget(csv_);
    connect(csv_, &QPushButton::clicked, this, [this] { collect({}); });
    return bar;
}

void EventPage::setUpTable() {
    table_->setObjectName(QStringLiteral("eventTable"));
    table_->setModel(list_);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table_->setTabKeyNavigation(false);
    table_->setShowGrid(false);
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    QHeaderView* const header = table_->horizontalHeader();
    header->setHighlightSections(false);
    header->setStretchLastSection(true);
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

// --- Measures -------------------------------------------------------------------------------------

void EventPage::fit() {
    const int margin = look::px(16);
    layout()->setSpacing(look::px(8));
    filter_->setContentsMargins(margin, 0, margin, 0);
    const QList<QHBoxLayout*> rows = findChildren<QHBoxLayout*>();
    for (QHBoxLayout* const row : rows) {
        row->setSpacing(look::px(8));
    }
    auto* const bar = findChild<QFrame*>(QStringLiteral("pageBar"));
    bar->setFixedHeight(look::px(64));
    bar->layout()->setContentsMargins(margin, 0, margin, 0);
    kind_->setMinimumWidth(look::px(kindPx));
    day_->setMinimumWidth(look::px(dayPx));
    const QSize icon(look::px(22), look::px(22));
    const QList<QPushButton*> buttons = findChildren<QPushButton*>();
    for (QPushButton* const button : buttons) {
        button->setIconSize(icon);
    }
    table_->setIconSize(QSize(look::px(18), look::px(18)));
    table_->verticalHeader()->setDefaultSectionSize(look::px(rowPx));
    for (int column = 0; column < int(std::size(widthsPx)); ++column) {
        table_->horizontalHeader()->resizeSection(column, look::px(widthsPx[column]));
    }
    fitWidth();
}

void EventPage::fitWidth() {
    const bool isNarrow = width() < look::px(narrowPx);
    filter_->setDirection(isNarrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    table_->setColumnHidden(EventList::By, isNarrow);
    table_->setColumnHidden(EventList::Project, isNarrow);
}

void EventPage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    fitWidth();
}

void EventPage::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        fit();
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
