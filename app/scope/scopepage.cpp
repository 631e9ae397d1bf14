#include "app/scope/scopepage.h"

#include "app/scope/scopeplot.h"
#include "look/dialog.h"
#include "look/icon.h"
#include "look/scale.h"

#include <QComboBox>
#include <QDateTime>
#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QSaveFile>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QToolButton>

#include <set>

namespace app {

namespace {

constexpr int tickMs = 200;
constexpr double stretchStep = 2;
constexpr double msPerS = 1000;

QString seconds(qint64 ms, int decimals) {
    return QString::number(double(ms) / msPerS, 'f', decimals).replace(QLatin1Char('-'), QChar(0x2212));
}

}  // namespace

ScopePage::ScopePage(const SignalRecorder* recorder, QWidget* parent)
    : QWidget(parent),
      recorder_(recorder),
      plot_(new ScopePlot(recorder)),
      length_(new QLabel),
      readout_(new QLabel),
      scroll_(new QScrollBar(Qt::Horizontal)),
      rows_(new QScrollBar(Qt::Vertical)),
      range_(new QComboBox),
      written_(new QLabel) {
    readout_->setObjectName(QStringLiteral("lblCursor"));
    written_->setObjectName(QStringLiteral("lblWritten"));
    length_->setObjectName(QStringLiteral("lblLength"));
    setObjectName(QStringLiteral("scopePage"));
    setAttribute(Qt::WA_StyledBackground);
    auto* column = new QVBoxLayout(this);
    column->addLayout(makeControls());
    column->addLayout(makePlot(), 1);
    column->addWidget(scroll_);
    column->addLayout(makeCursor());
    column->addLayout(makeExport());
    column->addWidget(written_);
    written_->setWordWrap(true);
    written_->hide();
    arrange();
    connect(plot_, &ScopePlot::cursorAsked, this, &ScopePage::setCursor);
    connect(plot_, &ScopePlot::edgeAsked, this, &ScopePage::jump);
    connect(plot_, &ScopePlot::stretchAsked, this, &ScopePage::stretch);
    connect(scroll_, &QScrollBar::valueChanged, this, &ScopePage::scrollTo);
    connect(&tick_, &QTimer::timeout, this, &ScopePage::refresh);
    tick_.setInterval(tickMs);
}

QToolButton* ScopePage::makeButton(const QString& name, const QString& icon, const QString& text) {
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setIcon(look::icon(icon, look::ink2, look::white));
    button->setText(text);
    button->setToolButtonStyle(text.isEmpty() ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextBesideIcon);
    button->setFocusPolicy(Qt::TabFocus);
    buttons_ << button;
    return button;
}

QToolButton* ScopePage::makeSign(const QString& name, const QString& icon, const QString& meaning) {
    QToolButton* const button = makeButton(name, icon, {});
    button->setAccessibleName(meaning);
    return button;
}

QLayout* ScopePage::makeControls() {
    hold_ = makeButton(QStringLiteral("btnHold"), QStringLiteral("pause"), tr("保持"));
    mark_ = makeButton(QStringLiteral("btnMark"), QStringLiteral("flag"), tr("标记"));
    for (QToolButton* button : {hold_, mark_}) {
        button->setCheckable(true);
        button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        button->setProperty("small", true);
    }
    QToolButton* const longer =
        makeSign(QStringLiteral("btnLonger"), QStringLiteral("minus"), tr("显示更长时间"));
    QToolButton* const shorter =
        makeSign(QStringLiteral("btnShorter"), QStringLiteral("plus"), tr("显示更短时间"));
    length_->setAlignment(Qt::AlignCenter);
    auto* row = new QHBoxLayout;
    row->addWidget(hold_, 1);
    row->addWidget(mark_, 1);
    row->addWidget(longer);
    row->addWidget(length_);
    row->addWidget(shorter);
    connect(hold_, &QToolButton::clicked, this, &ScopePage::setHeld);
    connect(mark_, &QToolButton::clicked, this, &ScopePage::toggleMark);
    connect(longer, &QToolButton::clicked, this, [this] { stretch(stretchStep); });
    connect(shorter, &QToolButton::clicked, this, [this] { stretch(1 / stretchStep); });
    return row;
}

QLayout* ScopePage::makeCursor() {
    QToolButton* const back =
        makeSign(QStringLiteral("btnEdgeBack"), QStringLiteral("chevron_left"), tr("光标到上一个变化"));
    QToolButton* const next =
        makeSign(QStringLiteral("btnEdgeNext"), QStringLiteral("chevron_right"), tr("光标到下一个变化"));
    readout_->setAlignment(Qt::AlignCenter);
    readout_->setWordWrap(true);
    auto* row = new QHBoxLayout;
    row->addWidget(back);
    row->addWidget(readout_, 1);
    row->addWidget(next);
    connect(back, &QToolButton::clicked, this, [this] { jump(-1); });
    connect(next, &QToolButton::clicked, this, [this] { jump(1); });
    return row;
}

QLayout* ScopePage::makePlot() {
    auto* row = new QHBoxLayout;
    row->setSpacing(2);
    row->addWidget(plot_, 1);
    row->addWidget(rows_);
    connect(plot_, &ScopePlot::resized, this, &ScopePage::refreshRows);
    connect(rows_, &QScrollBar::valueChanged, plot_, [this](int first) {
        plot_->setFirstRow(first);
        plot_->replot();
    });
    return row;
}

QLayout* ScopePage::makeExport() {
    range_->setObjectName(QStringLiteral("cmbRange"));
    range_->addItems({tr("显示的时段"), tr("上次运行"), tr("全部记录")});
    range_->setAccessibleName(tr("导出"));
    range_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    auto* row = new QHBoxLayout;
    row->addWidget(range_, 1);
    for (const char* ending : {"png", "csv", "vcd"}) {
        const QString text = QString::fromLatin1(ending);
        QToolButton* const button =
            makeButton(QStringLiteral("btn_") + text, QStringLiteral("export"), text.toUpper());
        button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        button->setProperty("small", true);
        row->addWidget(button);
        connect(button, &QToolButton::clicked, this, [this, text] { askFile(text); });
    }
    return row;
}

void ScopePage::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange && layout()) {
        arrange();
    }
}

void ScopePage::arrange() {
    const int margin = look::px(16), gap = look::px(8);
    layout()->setContentsMargins(margin, 0, margin, gap);
    layout()->setSpacing(gap);
    for (QToolButton* button : buttons_) {
        const bool isSmall = button->toolButtonStyle() == Qt::ToolButtonTextUnderIcon;
        button->setMaximumHeight(look::px(48));
        button->setIconSize(QSize(1, 1) * look::px(isSmall ? 18 : 24));
    }
    length_->setMinimumWidth(look::px(56));
}

// --- What is shown ------------------------------------------------------------------------------

void ScopePage::showEvent(QShowEvent* event) {
    refresh();
    tick_.start();
    QWidget::showEvent(event);
}

void ScopePage::hideEvent(QHideEvent* event) {
    tick_.stop();
    QWidget::hideEvent(event);
}

TimeSpan ScopePage::shown() const {
    return window_.span(SignalRecorder::nowMs());
}

void ScopePage::refresh() {
    const std::vector<ScopeRow> rows = rowsOf(recorder_->cellSignals(), recorder_->record());
    if (rows != plot_->rows()) {
        plot_->setRows(rows);
        refreshRows();
    }
    const TimeSpan span = shown();
    // Drop a cursor that has scrolled out of view.
    const std::optional<qint64> cursorMs = plot_->cursorMs();
    if (!window_.isHeld() && cursorMs && *cursorMs < span.fromMs) {
        plot_->setCursor({});
    }
    plot_->showSpan(span);
    refreshScrollBar(span);
    refreshReadout();
}

void ScopePage::refreshRows() {
    const int hidden = int(plot_->rows().size()) - plot_->rowsThatFit();
    rows_->setRange(0, std::max(0, hidden));
    rows_->setPageStep(plot_->rowsThatFit());
    rows_->setVisible(hidden > 0);
}

/// The scroll bar counts milliseconds from the beginning of the record.
void ScopePage::refreshScrollBar(const TimeSpan& span) {
    const QSignalBlocker blocker(scroll_);
    const TimeSpan all = recorder_->all();
    scroll_->setRange(0, int(std::max<qint64>(0, all.length() - span.length())));
    scroll_->setPageStep(int(span.length()));
    scroll_->setSingleStep(int(span.length() / 10));
    scroll_->setValue(int(span.fromMs - all.fromMs));
    hold_->setChecked(window_.isHeld());
    length_->setText(tr("%1 s").arg(seconds(span.length(), span.length() < msPerS ? 2 : 0)));
}

void ScopePage::refreshReadout() {
    const auto cursor = plot_->cursorMs();
    mark_->setEnabled(cursor.has_value());
    mark_->setChecked(plot_->markMs().has_value());
    if (!cursor) {
        readout_->setText(tr("点击曲线放置光标；右侧为当前值"));
        return;
    }
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(*cursor + recorder_->epochMs());
    QString text = tr("光标 %1").arg(time.toString(QStringLiteral("hh:mm:ss.zzz")));
    if (const auto mark = plot_->markMs()) {
        text += QStringLiteral("    ") + tr("Δ %1 s").arg(seconds(*cursor - *mark, 3));
    }
    readout_->setText(text);
}

void ScopePage::setHeld(bool held) {
    if (held) {
        window_.hold(SignalRecorder::nowMs());
    } else {
        window_.release();
    }
    refresh();
}

void ScopePage::stretch(double factor) {
    const TimeSpan span = shown();
    const qint64 middle = span.fromMs + span.length() / 2;
    const qint64 cursor = plot_->cursorMs().value_or(middle);
    window_.stretch(factor, cursor >= span.fromMs && cursor <= span.toMs ? cursor : middle);
    refresh();
}

void ScopePage::scrollTo(int position) {
    window_.scrollTo(recorder_->all().fromMs + position);
    refresh();
}

void ScopePage::setCursor(qint64 ms) {
    const TimeSpan all = recorder_->all();
    plot_->setCursor(std::clamp(ms, all.fromMs, all.toMs));
    refresh();
}

/// Moves the cursor to the next change of a shown signal.
void ScopePage::jump(int direction) {
    const SignalRecord& record = recorder_->record();
    std::set<int> wanted;
    for (const ScopeRow& row : plot_->rows()) {
        wanted.insert(row.signal);
    }
    const TimeSpan span = shown();
    const qint64 from = plot_->cursorMs().value_or(direction > 0 ? span.fromMs : span.toMs);
    const auto& changes = record.changes();
    qint64 position = direction > 0 ? qint64(record.firstAt(from + 1)) : qint64(record.firstAt(from)) - 1;
    for (; position >= 0 && position < qint64(changes.size()); position += direction) {
        const SignalRecord::Change& change = changes[size_t(position)];
        if (!wanted.count(change.signal)) {
            continue;
        }
        window_.reveal(change.ms, SignalRecorder::nowMs());
        setCursor(change.ms);
        return;
    }
}

void ScopePage::toggleMark() {
    plot_->setMark(plot_->markMs() ? std::nullopt : plot_->cursorMs());
    refresh();
}

// --- Export -------------------------------------------------------------------------------------

TimeSpan ScopePage::chosen() const {
    switch (range_->currentIndex()) {
        case LastRun:
            return recorder_->lastRun();
        case All:
            return recorder_->all();
        default: {
            const TimeSpan span = shown();
            return {std::max(span.fromMs, recorder_->record().beginMs()), span.toMs};
        }
    }
}

void ScopePage::askFile(const QString& ending) {
    if (range_->currentIndex() == LastRun && !recorder_->hasRun()) {
        tell(tr("还没有运行过"));
        return;
    }
    const QString name = QStringLiteral("signals.") + ending;
    auto* dialog =
        new QFileDialog(this, tr("导出"), QDir::current().filePath(name), QStringLiteral("*.") + ending);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setOption(QFileDialog::ReadOnly);              // no deleting or renaming of files
    dialog->setOption(QFileDialog::DontConfirmOverwrite);  // its own question is not dressed
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(ending);
    look::dress(dialog);
    constexpr int width = 720, height = 480;
    dialog->resize(look::px(width), look::px(height));
    connect(dialog, &QFileDialog::fileSelected, this, &ScopePage::confirm);
    dialog->open();
}

/// Writes the file, after a question where there is one already.
void ScopePage::confirm(const QString& file) {
    if (!QFileInfo::exists(file)) {
        exportTo(file);
        return;
    }
    auto* question = new QMessageBox(QMessageBox::Question, tr("导出"),
                                     tr("文件 %1 已存在，是否覆盖？").arg(QFileInfo(file).fileName()),
                                     QMessageBox::Yes | QMessageBox::No, this);
    question->setAttribute(Qt::WA_DeleteOnClose);
    question->setDefaultButton(QMessageBox::No);
    question->setTextFormat(Qt::PlainText);
    look::dress(question);
    connect(question, &QDialog::finished, this, [this, file](int answer) {
        if (answer == QMessageBox::Yes) {
            exportTo(file);
        }
    });
    question->open();
}

/// What became of an export.
void ScopePage::tell(const QString& text) {
    written_->setText(text);
    written_->setVisible(!text.isEmpty());
}

void ScopePage::exportTo(const QString& file) {
    QSaveFile out(file);
    QString error;
    if (!out.open(QIODevice::WriteOnly) ||
        (write(&out, QFileInfo(file).suffix().toLower(), &error) && !(out.flush() && out.commit()))) {
        error = out.errorString();
    }
    tell(error.isEmpty() ? tr("已保存：%1").arg(QFileInfo(file).fileName()) : QString());
    if (error.isEmpty()) {
        return;
    }
    auto* message = new QMessageBox(QMessageBox::Warning, tr("导出"),
                                    tr("无法写入文件：%1\n%2").arg(file, error), QMessageBox::Ok, this);
    message->setAttribute(Qt::WA_DeleteOnClose);
    look::dress(message);
    message->open();
}

bool ScopePage::write(QIODevice* device, const QString& ending, QString* error) const {
    if (ending == QLatin1String("vcd")) {
        return writeVcd(device, *recorder_, chosen(), error);
    }
    if (ending == QLatin1String("csv")) {
        return writeCsv(device, *recorder_, plot_->rows(), chosen(), error);
    }
    if (plot_->picture().save(device, "PNG")) {
        return true;
    }
    *error = device->errorString();
    return false;
}

}  // namespace app
