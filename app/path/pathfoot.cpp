#include "app/path/pathfoot.h"

#include "app/path/seamtrack.h"
#include "look/icon.h"
#include "look/scale.h"
#include "look/seam.h"
#include "look/type.h"
#include "mendo/modulemanager.h"
#include "program/ports.h"
#include "program/statement.h"
#include "program/words.h"
#include "workcell/cellsignals.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QToolButton>

#include <algorithm>

namespace app {

namespace {

constexpr int frameMs = 40;

QString mm(double metres) {
    return look::figure(metres * prog::mmPerM, 1);
}

QString iconOf(prog::StatementType type) {
    using prog::StatementType;
    switch (type) {
        case StatementType::MoveJ:
            return QStringLiteral("joint");
        case StatementType::MoveC:
            return QStringLiteral("arc");
        case StatementType::MoveCC:
            return QStringLiteral("circle");
        case StatementType::MoveL:
            return QStringLiteral("line");
        case StatementType::Open:
            return QStringLiteral("laser");
        case StatementType::Close:
            return QStringLiteral("laser_off");
        case StatementType::Param:
            return QStringLiteral("welding_parameters");
        case StatementType::SetDO:
            return QStringLiteral("set_output");
        case StatementType::WaitDI:
            return QStringLiteral("wait_input");
        case StatementType::Delay:
            return QStringLiteral("delay");
        default:
            return {};
    }
}

QString wordOf(const prog::Statement& statement) {
    const prog::StatementRow* row = prog::statementRow(statement.word);
    return row ? QCoreApplication::translate("QObject", row->caption) : statement.word;
}

QLabel* makeLabel(const QString& name, const char* kind) {
    auto* label = new QLabel;
    label->setObjectName(name);
    if (kind) {
        label->setProperty(kind, true);
    }
    label->setTextFormat(Qt::PlainText);
    return label;
}

QString describe(const PathMove& move) {
    if (move.impossible) {
        return PathFoot::tr("无法运动");
    }
    if (move.path.size() == 1) {
        return PathFoot::tr("路径起点");
    }
    return (move.weld ? PathFoot::tr("焊接，%1 mm") : PathFoot::tr("空程，%1 mm")).arg(mm(move.length()));
}

void setText(QLabel* label, const QString& text) {
    if (label->text() != text) {
        label->setText(text);
    }
}

}  // namespace

PathFoot::PathFoot(SeamTrack* seams, QWidget* parent)
    : QWidget(parent),
      seams_(seams),
      number_(makeLabel(QStringLiteral("lblPathNumber"), "figureTitle")),
      icon_(new QLabel),
      word_(makeLabel(QStringLiteral("lblPathWord"), "figureTitle")),
      place_(makeLabel(QStringLiteral("lblPathSeam"), "caption")),
      bar_(new SeamBar),
      line_(makeLabel(QStringLiteral("lblPathLine"), nullptr)),
      welded_(makeLabel(QStringLiteral("lblSeam"), nullptr)),
      clear_(new QToolButton) {
    setObjectName(QStringLiteral("pathFoot"));
    setAttribute(Qt::WA_StyledBackground);
    clear_->setObjectName(QStringLiteral("btnClearSeam"));
    clear_->setText(tr("清除"));
    clear_->setAccessibleName(tr("清除焊缝"));
    clear_->setIcon(look::icon(QStringLiteral("eraser")));
    clear_->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    clear_->setFocusPolicy(Qt::TabFocus);
    auto* row = new QHBoxLayout;
    auto* told = new QVBoxLayout;
    told->setSpacing(0);
    told->addWidget(line_);
    told->addWidget(welded_);
    row->addLayout(told, 1);
    row->addWidget(clear_);
    auto* column = new QVBoxLayout(this);
    column->addWidget(makeTitle());
    column->addWidget(bar_);
    column->addLayout(row);
    column->addWidget(makeValues());
    connect(clear_, &QToolButton::clicked, seams, &SeamTrack::clear);
    later_.setSingleShot(true);
    later_.setInterval(frameMs);
    connect(&later_, &QTimer::timeout, this, &PathFoot::refresh);
    connect(seams, &SeamTrack::changed, this, [this] {
        if (isVisible() && !later_.isActive()) {
            later_.start();
        }
    });
    arrange();
    refresh();
}

QWidget* PathFoot::makeTitle() {
    auto* title = new QWidget;
    auto* row = new QHBoxLayout(title);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(number_);
    row->addWidget(icon_);
    row->addWidget(word_);
    row->addStretch(1);
    row->addWidget(place_);
    return title;
}

QWidget* PathFoot::makeValues() {
    values_ = new QWidget;
    auto* row = new QHBoxLayout(values_);
    row->setContentsMargins(0, 0, 0, 0);
    speed_ = makeValue(QStringLiteral("lblPathSpeed"), tr("速度 mm/s"));
    power_ = makeValue(QStringLiteral("lblPathPower"), tr("功率 %"));
    gas_ = makeValue(QStringLiteral("lblPathGas"), tr("气体"));
    wire_ = makeValue(QStringLiteral("lblPathWire"), tr("送丝"));
    for (const Value& value : {speed_, power_, gas_, wire_}) {
        row->addWidget(value.place);
    }
    return values_;
}

PathFoot::Value PathFoot::makeValue(const QString& name, const QString& caption) {
    auto* place = new QWidget;
    auto* column = new QVBoxLayout(place);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    QLabel* const head = makeLabel(QString(), "caption");
    head->setText(caption);
    QLabel* const value = makeLabel(name, "figureTitle");
    column->addWidget(head);
    column->addWidget(value);
    return {place, value};
}

void PathFoot::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        arrange();
    }
}

void PathFoot::showEvent(QShowEvent* event) {
    refresh();
    QWidget::showEvent(event);
}

void PathFoot::arrange() {
    layout()->setContentsMargins(look::px(16), look::px(8), look::px(16), look::px(8));
    layout()->setSpacing(look::px(6));
    bar_->setFixedHeight(look::px(28));
    clear_->setIconSize(QSize(1, 1) * look::px(18));
    clear_->setMaximumHeight(look::px(48));
}

void PathFoot::setBrief(bool brief) {
    brief_ = brief;
    refresh();
}

void PathFoot::setRunning(bool running) {
    running_ = running;
    refresh();
}

void PathFoot::say(const QString& text) {
    number_->clear();
    icon_->clear();
    word_->clear();
    place_->clear();
    setText(line_, text);
    weldM_ = 0;
    refresh();
}

void PathFoot::show(const mendo::ModuleObject* program, const std::vector<PathMove>& moves, int line) {
    const mendo::ModuleObject* const node = program->c(line);
    if (line < 0 || node->isNull()) {
        say(QString());
        return;
    }
    const prog::Statement statement = prog::Statement::from(node);
    setText(number_, QString::number(line + 1));
    setText(word_, wordOf(statement));
    icon_->setPixmap(look::picture(iconOf(statement.type), look::px(24)));
    const auto move = std::find_if(moves.begin(), moves.end(),
                                   [line](const PathMove& found) { return found.line == line; });
    setText(line_, move == moves.end() ? QString() : describe(*move));
    const int seam = seamOf(moves, line);
    weldM_ = seam < 0 ? 0 : lengthOf(seamPath(moves, seam));
    setText(place_, seam < 0 ? QString() : tr("焊缝 %1 / %2").arg(seam + 1).arg(seamCount(moves)));
    refresh();
}

void PathFoot::refresh() {
    const bool inWeld = running_ && weldM_ > 0;
    const bool isWelded = seams_->length() > 0;
    if (parentWidget()) {
        setVisible(!(brief_ && running_));  // wide screens tell it beside the program
    }
    number_->parentWidget()->setVisible(!brief_ && !number_->text().isEmpty());
    bar_->setVisible(inWeld && !brief_);
    line_->setVisible(!inWeld);
    welded_->setVisible(inWeld || isWelded);
    clear_->setVisible(isWelded && !running_);
    values_->setVisible(running_ && !brief_);
    if (inWeld) {
        const double welded = std::min(seams_->weldLength(), weldM_);
        bar_->setShare(welded / weldM_, seams_->emitting());
        setText(welded_, tr("已焊 %1 / %2 mm").arg(mm(welded), mm(weldM_)));
    } else {
        setText(welded_, tr("已焊 %1 mm").arg(mm(seams_->length())));
    }
    if (running_ && !brief_) {
        showValues();
    }
}

double PathFoot::signal(const QString& name) const {
    const int index = signals_ ? signals_->indexOf(name) : -1;
    return index < 0 ? 0 : signals_->all()[std::size_t(index)].value;
}

void PathFoot::showValues() {
    const auto port = [this](I_PORT which) {
        return signal(m(prog::key::port)->c(which)->c(prog::field::name)->getString()) != 0;
    };
    const auto word = [](bool on) { return on ? tr("开") : tr("关"); };
    setText(speed_.value, look::figure(signal(QStringLiteral("speed_mm_s")), 1));
    setText(power_.value, look::figure(signal(QStringLiteral("power_pct")), 0));
    setText(gas_.value, word(port(DO_GAS)));
    setText(wire_.value, word(port(DO_WIRE_ENABLE)));
}

void SeamBar::setShare(double share, bool laser) {
    if (share != share_ || laser != laser_) {
        share_ = share;
        laser_ = laser;
        update();
    }
}

void SeamBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    look::paintSeamBar(&painter, rect(), share_, laser_);
}

}  // namespace app
