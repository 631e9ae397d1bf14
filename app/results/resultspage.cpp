#include "app/results/resultspage.h"

#include "app/results/passport.h"
#include "app/results/resultcsv.h"
#include "app/results/resultfigures.h"
#include "app/results/resulttext.h"
#include "app/results/runlist.h"
#include "app/results/seamlanes.h"
#include "app/results/seamlist.h"
#include "app/results/weldpicture.h"
#include "look/icon.h"
#include "look/scale.h"
#include "look/tokens.h"
#include "look/type.h"
#include "mendo/clock.h"

#include <QEvent>
#include <QFileInfo>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QStyle>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace app {

namespace {

// px at factor 1.
constexpr int rowHeight = 44, headHeight = 40, barHeight = 64;
constexpr int widePage = 800;  // figures in one row, the path beside the lanes
constexpr int withSet = 940;   // room for the names of the parameter sets
constexpr int withAllFigures = 830;
constexpr int mostReasons = 3;  // of a verdict that are shown at once

QLabel* makeLabel(const QString& name) {
    auto* label = new QLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

/// "Finished, today at 10:42".
QString whenText(const RunResult& result) {
    const QDateTime end = result.begun.addSecs(qint64(result.record.seconds));
    const QString clock = end.toString(QStringLiteral("HH:mm"));
    const bool isToday = end.date() == mendo::Clock::current().now().date();
    const QString when =
        isToday ? ResultsPage::tr("今天 %1").arg(clock) : end.toString(QStringLiteral("yyyy-MM-dd HH:mm"));
    return reasonText(result.record.reason) + QStringLiteral(" · ") + when;
}

}  // namespace

ResultsPage::ResultsPage(RunHistory* history, QWidget* parent)
    : QWidget(parent),
      history_(history),
      runList_(new RunList(history, this)),
      seamList_(new SeamList(this)),
      export_(new ResultExport(this)),
      runs_(makeTable(QStringLiteral("runsTable"))),
      seams_(makeTable(QStringLiteral("seamsTable"))),
      title_(makeLabel(QStringLiteral("lblResult"))),
      when_(makeLabel(QStringLiteral("lblResultWhen"))),
      reasons_(makeLabel(QStringLiteral("lblReasons"))),
      seam_(makeLabel(QStringLiteral("lblResultSeam"))),
      written_(makeLabel(QStringLiteral("lblResultWritten"))),
      figures_(new ResultFigures),
      lanes_(new SeamLanes),
      picture_(new WeldPicture),
      stack_(new QStackedWidget) {
    setObjectName(QStringLiteral("resultsPage"));
    setAttribute(Qt::WA_StyledBackground);
    for (QLabel* const label : {title_, when_, reasons_, written_}) {
        QSizePolicy policy = label->sizePolicy();
        policy.setHorizontalPolicy(QSizePolicy::Ignored);  // a long name must not make the page wider
        label->setSizePolicy(policy);
    }
    setUpRuns();
    setUpSeams();
    auto* empty = new QLabel(tr("还没有运行记录。程序运行结束后，焊缝和限值显示在这里。"));
    empty->setObjectName(QStringLiteral("lblNoRuns"));
    empty->setWordWrap(true);
    empty->setAlignment(Qt::AlignCenter);
    empty->setMargin(40);
    stack_->addWidget(empty);
    stack_->addWidget(makePart());
    stack_->addWidget(makeEarlier());
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeBar());
    column->addWidget(stack_, 1);
    column->addWidget(makeFoot());
    connect(history, &RunHistory::changed, this, &ResultsPage::onHistory);
    connect(export_, &ResultExport::written, this, [this](const QString& file) {
        written_->setText(tr("已保存：%1").arg(QFileInfo(file).fileName()));
    });
    arrange();
    onHistory(false);
}

QToolButton* ResultsPage::makeButton(const QString& name, const QString& icon, const QString& text) {
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setIcon(look::icon(icon, look::ink2, look::white));
    button->setText(text);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

QWidget* ResultsPage::makeBar() {
    back_ = makeButton(QStringLiteral("btnResultBack"), QStringLiteral("back"), {});
    back_->setAccessibleName(tr("返回"));
    earlier_ = makeButton(QStringLiteral("btnEarlier"), QStringLiteral("history"), tr("较早的零件"));
    earlier_->setCheckable(true);
    csv_ = makeButton(QStringLiteral("btnRunCsv"), QStringLiteral("table"), tr("CSV"));
    passport_ = makeButton(QStringLiteral("btnPassport"), QStringLiteral("document"), tr("焊缝档案"));
    bar_ = new QWidget;
    auto* row = new QHBoxLayout(bar_);
    auto* titles = new QVBoxLayout;
    titles->setSpacing(0);
    titles->addStretch(1);
    titles->addWidget(title_);
    titles->addWidget(when_);
    titles->addStretch(1);
    row->addWidget(back_);
    row->addLayout(titles, 1);
    for (QToolButton* button : {earlier_, csv_, passport_}) {
        row->addWidget(button);
    }
    connect(back_, &QToolButton::clicked, this, [this] {
        if (stack_->currentIndex() == Earlier) {
            showLeaf(Part);
        } else {
            emit closeAsked();
        }
    });
    connect(earlier_, &QToolButton::clicked, this, [this](bool on) { showLeaf(on ? Earlier : Part); });
    for (const auto& [button, ending] :
         {std::pair(passport_, QStringLiteral("pdf")), {csv_, QStringLiteral("csv")}}) {
        connect(button, &QToolButton::clicked, this,
                [this, ending = ending] { export_->ask(suggestedName(ending), writerOf(ending)); });
    }
    return bar_;
}

QWidget* ResultsPage::makePart() {
    part_ = new QWidget;
    auto* grid = new QGridLayout(part_);
    grid->addWidget(figures_, 0, 0, 1, 2);
    grid->addWidget(reasons_, 1, 0, 1, 2);
    grid->addWidget(seams_, 2, 0, 1, 2);
    grid->addWidget(seam_, 3, 0);
    grid->addWidget(lanes_, 4, 0);
    grid->addWidget(picture_, 3, 1, 2, 1);
    grid->setRowStretch(4, 1);
    grid->setColumnStretch(0, 1);
    return part_;
}

QWidget* ResultsPage::makeEarlier() {
    auto* leaf = new QWidget;
    auto* column = new QVBoxLayout(leaf);
    column->addWidget(runs_);
    return leaf;
}

QWidget* ResultsPage::makeFoot() {
    foot_ = new QWidget;
    foot_->setObjectName(QStringLiteral("resultFoot"));
    foot_->setAttribute(Qt::WA_StyledBackground);
    all_ = new QPushButton(tr("全部 CSV"));
    all_->setObjectName(QStringLiteral("btnAllCsv"));
    all_->setIcon(look::icon(QStringLiteral("table")));
    next_ = new QPushButton(tr("回到下一件"));
    next_->setObjectName(QStringLiteral("btnNextPart"));
    next_->setIcon(look::icon(QStringLiteral("cell"), look::white));
    next_->setProperty("primary", true);
    auto* row = new QHBoxLayout(foot_);
    row->addWidget(written_, 1);
    row->addWidget(all_);
    row->addWidget(next_);
    connect(all_, &QPushButton::clicked, this, &ResultsPage::exportAll);
    connect(next_, &QPushButton::clicked, this, &ResultsPage::closeAsked);
    return foot_;
}

QTableView* ResultsPage::makeTable(const QString& name) {
    auto* table = new QTableView(this);
    table->setObjectName(name);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->setTabKeyNavigation(false);
    table->setCornerButtonEnabled(false);
    table->setWordWrap(false);
    table->setShowGrid(false);
    table->verticalHeader()->hide();
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    return table;
}

/// Widths are fixed: measuring the contents would read the files of all runs.
void ResultsPage::setUpRuns() {
    runs_->setModel(runList_);
    runs_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    runs_->horizontalHeader()->setSectionResizeMode(RunList::Project, QHeaderView::Stretch);
    connect(runs_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (current.isValid()) {
                    choose(current.row());
                }
            });
    const auto show = [this] { showLeaf(Part); };
    connect(runs_, &QTableView::clicked, this, show);
    connect(runs_, &QTableView::activated, this, show);
}

void ResultsPage::setUpSeams() {
    seams_->setModel(seamList_);
    seams_->setItemDelegate(new SeamDelegate(seams_));
    seams_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    seams_->horizontalHeader()->setSectionResizeMode(SeamSet + 1, QHeaderView::Stretch);
    connect(seams_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &ResultsPage::showSeam);
}

// --- Size ---------------------------------------------------------------------------------------

void ResultsPage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrange();
}

void ResultsPage::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange && bar_) {
        arrange();
        showChosen();
    }
}

void ResultsPage::arrange() {
    const bool isWide = width() >= look::px(widePage);
    const int margin = look::px(16), gap = look::px(8);
    bar_->setFixedHeight(look::px(barHeight));
    foot_->setFixedHeight(look::px(barHeight));
    for (QWidget* row : {bar_, foot_}) {
        row->layout()->setContentsMargins(margin, gap, margin, gap);
        row->layout()->setSpacing(gap);
    }
    back_->setFixedSize(look::px(48), look::px(48));
    back_->setIconSize(QSize(1, 1) * look::px(24));
    for (QToolButton* button : {earlier_, csv_, passport_}) {
        button->setToolButtonStyle(isWide ? Qt::ToolButtonTextBesideIcon : Qt::ToolButtonTextUnderIcon);
        button->setIconSize(QSize(1, 1) * look::px(isWide ? 24 : 20));
        button->setMaximumHeight(look::px(48));
        if (button->property("small").toBool() == isWide) {
            button->setProperty("small", !isWide);
            button->style()->unpolish(button);
            button->style()->polish(button);
        }
        button->updateGeometry();
    }
    for (QPushButton* button : {all_, next_}) {
        button->setIconSize(QSize(1, 1) * look::px(24));
    }
    part_->layout()->setContentsMargins(margin, gap, margin, gap);
    part_->layout()->setSpacing(look::px(12));
    figures_->arrange(isWide);
    picture_->setVisible(isWide);
    picture_->setFixedWidth(std::min(look::px(560), width() / 3));
    fitRuns();
    fitSeams();
}

void ResultsPage::fitRuns() {
    constexpr int widths[] = {184, 0, 168, 80, 80, 88};
    constexpr int allColumns = 640;
    runs_->verticalHeader()->setDefaultSectionSize(look::px(48));
    QHeaderView* const header = runs_->horizontalHeader();
    header->setFixedHeight(look::px(32));
    for (int column = 0; column < RunList::ColumnCount; ++column) {
        if (widths[column] > 0) {
            header->resizeSection(column, look::px(widths[column]));
        }
    }
    for (const int column : {int(RunList::Duration), int(RunList::Seams)}) {
        runs_->setColumnHidden(column, width() < look::px(allColumns));
    }
}

/// As many rows as there are, but no more than leave room for the lanes.
void ResultsPage::fitSeams() {
    constexpr int widths[] = {64, 96, 0, 88, 92, 96, 104, 96, 88, 76};
    QHeaderView* const header = seams_->horizontalHeader();
    header->setFixedHeight(look::px(headHeight));
    header->setFont(look::font(look::Size::Caption, look::Weight::Strong));
    seams_->verticalHeader()->setDefaultSectionSize(look::px(rowHeight));
    const bool showsSet = width() >= look::px(withSet);
    const bool showsAll = width() >= look::px(withAllFigures);
    for (int column = 0; column <= seamColumns; ++column) {
        if (widths[column] > 0) {
            header->resizeSection(column, look::px(widths[column]));
        }
    }
    seams_->setColumnHidden(SeamSet + 1, !showsSet);
    header->setSectionResizeMode(SeamLines + 1, showsSet ? QHeaderView::Fixed : QHeaderView::Stretch);
    for (const int column : {int(SeamGas), int(SeamGaps), int(SeamEnergy)}) {
        seams_->setColumnHidden(column + 1, !showsAll);
    }
    const int others = look::px(2 * barHeight + 80 + 40) + lanes_->sizeHint().height() +
                       (reasons_->isHidden() ? 0 : reasons_->sizeHint().height());
    const int room = std::max(2, (height() - others - look::px(headHeight)) / look::px(rowHeight));
    const int rows = std::min(room, std::max(1, seamList_->rowCount()));
    seams_->setFixedHeight(look::px(headHeight) + rows * look::px(rowHeight) + 2);
}

// --- What is shown ------------------------------------------------------------------------------

void ResultsPage::showEvent(QShowEvent* event) {
    history_->refresh();
    QWidget::showEvent(event);
}

/// A new run is shown unless an older one than the newest was chosen.
void ResultsPage::onHistory(bool added) {
    const int row = added && row_ > 0 ? row_ + 1 : 0;
    if (history_->count() == 0) {
        row_ = -1;
        result_.reset();
        showChosen();
    } else {
        runs_->setCurrentIndex(runList_->index(std::min(row, history_->count() - 1), 0));
    }
    showLeaf(stack_->currentIndex() == Earlier ? Earlier : Part);
}

void ResultsPage::showLeaf(Leaf leaf) {
    stack_->setCurrentIndex(history_->count() == 0 ? Nothing : leaf);
    earlier_->setChecked(stack_->currentIndex() == Earlier);
    earlier_->setEnabled(history_->count() > 0);
    all_->setVisible(stack_->currentIndex() == Earlier);
}

void ResultsPage::choose(int row) {
    row_ = row;
    const std::optional<RunResult> read = history_->at(row);
    result_ = read ? std::make_shared<const RunResult>(*read) : nullptr;
    written_->setText(tr("已与程序、参数和信号一起保存"));
    showChosen();
}

void ResultsPage::showChosen() {
    passport_->setEnabled(result_ != nullptr);
    csv_->setEnabled(result_ != nullptr);
    figures_->show(result_.get());
    picture_->show(result_);
    showVerdict();
    if (!result_) {
        seamList_->clear();
        title_->setText(row_ < 0 ? tr("结果") : history_->fileName(row_));
        when_->setText(row_ < 0 ? QString() : tr("文件已损坏，无法读取"));
    } else {
        const QString title = result_->title();
        title_->setText(title.isEmpty() ? tr("没有工程文件") : title);
        when_->setText(whenText(*result_));
        seamList_->show(*result_);
        seams_->selectRow(0);
    }
    const bool hasSeams = seamList_->rowCount() > 0;
    for (QWidget* widget :
         {static_cast<QWidget*>(seams_), static_cast<QWidget*>(lanes_), static_cast<QWidget*>(seam_)}) {
        widget->setVisible(hasSeams);
    }
    showSeam();
    fitSeams();
}

void ResultsPage::showVerdict() {
    QStringList lines;
    if (result_) {
        lines = violationTexts(*result_) + incidentTexts(*result_);
        if (!result_->limitsFile.isEmpty() && !result_->limits) {
            lines.prepend(limitsText(*result_));
        }
        if (lines.size() > mostReasons) {
            const int more = lines.size() - mostReasons;
            lines = lines.mid(0, mostReasons) << QStringLiteral("… +%1").arg(more);
        }
    }
    reasons_->setText(lines.join(QLatin1Char('\n')));
    reasons_->setVisible(!lines.isEmpty());
}

void ResultsPage::showSeam() {
    const int seam = seams_->currentIndex().row();
    if (!result_ || seam < 0 || seam >= int(result_->record.seams.size())) {
        lanes_->clear();
        seam_->clear();
        return;
    }
    const workcell::SeamRecord& record = result_->record.seams[std::size_t(seam)];
    seam_->setText(tr("焊缝 %1，全长 %2 mm").arg(seam + 1).arg(look::figure(record.programmedMm, 1)));
    lanes_->show(seam, *result_);
}

// --- Export -------------------------------------------------------------------------------------

QString ResultsPage::suggestedName(const QString& ending) const {
    constexpr int longest = 100;
    const QString title =
        result_ && !result_->title().isEmpty() ? result_->title().left(longest) : QStringLiteral("run");
    const QString date = result_ ? result_->begun.toString(QStringLiteral("yyyyMMdd-HHmmss")) : QString();
    return QStringLiteral("%1_%2.%3").arg(title, date, ending);
}

/// For the run that is chosen now: another one may be chosen while the dialog is open.
ResultExport::Write ResultsPage::writerOf(const QString& ending) const {
    const bool isPassport = ending == QLatin1String("pdf");
    return [isPassport, result = result_](QIODevice* device) {
        if (!result) {
            return false;
        }
        if (isPassport) {
            return writePassport(device, *result);
        }
        return device->write(csvHeader()) >= 0 && device->write(csvLines(*result)) >= 0;
    };
}

void ResultsPage::exportTo(const QString& file) {
    export_->writeTo(file, writerOf(QFileInfo(file).suffix().toLower()));
}

void ResultsPage::exportAll() {
    export_->ask(QStringLiteral("runs.csv"), [history = history_](QIODevice* device) {
        device->write(csvHeader());
        for (int row = 0; row < history->count(); ++row) {
            const std::optional<RunResult> result = history->at(row);
            device->write(result ? csvLines(*result) : QByteArray());
        }
        return true;
    });
}

}  // namespace app
