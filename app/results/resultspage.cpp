#include "app/results/resultspage.h"

#include "app/clocktext.h"
#include "app/results/passport.h"
#include "app/results/resultcsv.h"
#include "app/results/resulttext.h"
#include "app/results/runlist.h"
#include "app/results/seamlist.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStackedLayout>
#include <QStyle>
#include <QTableView>
#include <QVBoxLayout>

namespace app {

namespace {

constexpr int buttonHeight = 48;
constexpr int rowHeight = 44;  // of the list of runs, for a finger
constexpr int seamWidth = 112;
constexpr int mostReasons = 3;  // of a verdict that are shown at once
constexpr double msPerS = 1000;

}  // namespace

ResultsPage::ResultsPage(RunHistory* history, QWidget* parent)
    : QWidget(parent),
      history_(history),
      runList_(new RunList(history, this)),
      seamList_(new SeamList(this)),
      export_(new ResultExport(this)),
      runs_(makeTable(QStringLiteral("runsTable"))),
      seams_(makeTable(QStringLiteral("seamsTable"))),
      passport_(makeButton(QStringLiteral("btnPassport"), tr("焊缝档案 PDF"))),
      csv_(makeButton(QStringLiteral("btnRunCsv"), tr("CSV"))),
      summary_(new QLabel),
      verdict_(new QLabel),
      written_(new QLabel),
      stack_(new QStackedLayout(this)) {
    summary_->setObjectName(QStringLiteral("lblResult"));
    verdict_->setObjectName(QStringLiteral("lblVerdict"));
    written_->setObjectName(QStringLiteral("lblResultWritten"));
    for (QLabel* const label : {summary_, verdict_, written_}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        QSizePolicy policy = label->sizePolicy();
        policy.setHorizontalPolicy(QSizePolicy::Ignored);  // a long name must not make the window wider
        label->setSizePolicy(policy);
    }
    setUpRuns();
    setUpSeams();
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(8, 6, 8, 6);
    column->setSpacing(6);
    column->addWidget(makeButtons());
    column->addWidget(runs_, 2);
    column->addWidget(summary_);
    column->addWidget(verdict_);
    column->addWidget(seams_, 3);
    auto* empty = new QLabel(tr("还没有运行记录。程序运行结束后，焊缝和限值显示在这里。"));
    empty->setObjectName(QStringLiteral("lblNoRuns"));
    empty->setWordWrap(true);
    empty->setAlignment(Qt::AlignCenter);
    empty->setMargin(40);
    stack_->addWidget(empty);
    stack_->addWidget(content);
    connect(history, &RunHistory::changed, this, &ResultsPage::onHistory);
    connect(export_, &ResultExport::written, this, [this](const QString& file) {
        written_->setText(tr("已保存：%1").arg(QFileInfo(file).fileName()));
    });
    onHistory(false);
}

QPushButton* ResultsPage::makeButton(const QString& name, const QString& text) {
    auto* button = new QPushButton(text, this);
    button->setObjectName(name);
    button->setMinimumSize(buttonHeight, buttonHeight);
    return button;
}

QWidget* ResultsPage::makeButtons() {
    QPushButton* const all = makeButton(QStringLiteral("btnAllCsv"), tr("全部 CSV"));
    csv_->setToolTip(tr("所选运行的焊缝"));
    all->setToolTip(tr("所有运行的焊缝"));
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(passport_);
    row->addWidget(csv_);
    row->addWidget(all);
    row->addWidget(written_, 1);
    for (const auto& [button, ending] :
         {std::pair(passport_, QStringLiteral("pdf")), {csv_, QStringLiteral("csv")}}) {
        connect(button, &QPushButton::clicked, this,
                [this, ending = ending] { export_->ask(suggestedName(ending), writerOf(ending)); });
    }
    connect(all, &QPushButton::clicked, this, &ResultsPage::exportAll);
    return bar;
}

QTableView* ResultsPage::makeTable(const QString& name) {
    auto* table = new QTableView(this);
    table->setObjectName(name);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->setTabKeyNavigation(false);
    table->setCornerButtonEnabled(false);
    table->horizontalHeader()->setHighlightSections(false);
    table->verticalHeader()->setHighlightSections(false);
    return table;
}

/// Widths are fixed: measuring the contents would read the files of all runs.
void ResultsPage::setUpRuns() {
    constexpr int widths[] = {160, 0, 100, 62, 62, 78};
    runs_->setModel(runList_);
    runs_->setSelectionBehavior(QAbstractItemView::SelectRows);
    runs_->setWordWrap(false);
    runs_->verticalHeader()->hide();
    runs_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    runs_->verticalHeader()->setDefaultSectionSize(rowHeight);
    QHeaderView* const header = runs_->horizontalHeader();
    header->setSectionResizeMode(QHeaderView::Fixed);
    header->setSectionResizeMode(RunList::Project, QHeaderView::Stretch);
    for (int column = 0; column < RunList::ColumnCount; ++column) {
        if (widths[column] > 0) {
            header->resizeSection(column, widths[column]);
        }
    }
    connect(runs_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (current.isValid()) {
                    choose(current.row());
                }
            });
}

void ResultsPage::setUpSeams() {
    seams_->setModel(seamList_);
    seams_->setSelectionMode(QAbstractItemView::NoSelection);
    seams_->setFocusPolicy(Qt::TabFocus);
    seams_->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    seams_->horizontalHeader()->setDefaultSectionSize(seamWidth);
    seams_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
}

// --- What is shown ------------------------------------------------------------------------------

void ResultsPage::showEvent(QShowEvent* event) {
    history_->refresh();
    QWidget::showEvent(event);
}

/// A new run is shown unless an older one than the newest was chosen.
void ResultsPage::onHistory(bool added) {
    stack_->setCurrentIndex(history_->count() > 0 ? 1 : 0);
    const int row = added && row_ > 0 ? row_ + 1 : 0;
    if (history_->count() == 0) {
        row_ = -1;
    } else {
        runs_->setCurrentIndex(runList_->index(std::min(row, history_->count() - 1), 0));
    }
    written_->clear();
}

void ResultsPage::choose(int row) {
    row_ = row;
    result_ = history_->at(row);
    written_->clear();
    showChosen();
}

void ResultsPage::showChosen() {
    passport_->setEnabled(result_.has_value());
    csv_->setEnabled(result_.has_value());
    showVerdict();
    if (!result_) {
        seamList_->clear();
        summary_->setText(tr("文件 %1 已损坏，无法读取").arg(history_->fileName(row_)));
        return;
    }
    const workcell::RunRecord& record = result_->record;
    QStringList parts{result_->title(), reasonText(record.reason), clockText(qint64(record.seconds * msPerS)),
                      weldedText(*result_)};
    parts.removeAll(QString());
    summary_->setText(parts.join(QStringLiteral("  ·  ")));
    seamList_->show(*result_);
    seams_->setVisible(!record.seams.empty());
    seams_->resizeRowsToContents();
}

void ResultsPage::showVerdict() {
    QStringList lines;
    if (result_) {
        lines << limitsText(*result_);
        if (result_->record.seams.empty()) {
            lines.prepend(tr("这次运行没有焊缝"));
        }
        QStringList reasons = violationTexts(*result_) + incidentTexts(*result_);
        verdict_->setToolTip(reasons.join(QLatin1Char('\n')));
        if (reasons.size() > mostReasons) {
            const int more = reasons.size() - mostReasons;
            reasons = reasons.mid(0, mostReasons) << QStringLiteral("… +%1").arg(more);
        }
        lines << reasons;
    }
    verdict_->setText(lines.join(QLatin1Char('\n')));
    const bool isBad = result_ && (!result_->violations().isEmpty() || !incidentTexts(*result_).isEmpty() ||
                                   (!result_->limitsFile.isEmpty() && !result_->limits));
    verdict_->setProperty("warning", isBad);
    verdict_->style()->unpolish(verdict_);
    verdict_->style()->polish(verdict_);
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
