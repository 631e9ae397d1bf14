#include "editor/resumedialog.h"

#include "editor/seampicture.h"
#include "executor/circle.h"
#include "executor/lumoexecutor.h"
#include "look/dialog.h"
#include "look/icon.h"
#include "look/scale.h"
#include "look/tokens.h"
#include "look/type.h"
#include "module/globals.h"
#include "program/words.h"
#include "widgets/fieldanswer.h"

#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

using look::px;
using namespace prog;

namespace lumo {

namespace {

constexpr int gap = 8;
constexpr int iconSize = 24;

/// The overlap that the spin box begins with: that of the last choice, also of other pages.
double rememberedMm = 5.0;

QString mmText(double mm) {
    return QString::number(mm, 'f', 1);
}

/// Which of the program's welds a line is in: "2 of 5".
std::pair<int, int> seamOf(int line) {
    int seam = 0, seams = 0;
    const ModuleObject* const program = m(key::program);
    for (int i = 0; i < program->size(); ++i) {
        const ModuleObject* const statement = program->c(i);
        const bool opens = statement->c(field::type)->getString() == statement::open &&
                           statement->c(field::execute)->getBool(true);
        seams += opens ? 1 : 0;
        seam = i == line ? seams : seam;
    }
    return {std::max(seam, 1), std::max(seams, 1)};
}

QFrame* rule(QWidget* parent) {
    auto* const line = new QFrame(parent);
    line->setObjectName(QStringLiteral("rule"));
    line->setFixedHeight(1);
    return line;
}

QLabel* text(const char* name, QWidget* parent) {
    auto* const label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

}  // namespace

ResumeDialog::ResumeDialog(int line, QWidget* parent)
    : QDialog(parent),
      line_(line),
      picture_(new SeamPicture(this)),
      distance_(text("lblDistance", this)),
      again_(text("lblAgain", this)),
      left_(text("lblLeft", this)),
      overlap_(new QDoubleSpinBox(this)) {
    constexpr int bestWidth = 800, leastWidth = 440, padding = 24;
    setObjectName(QStringLiteral("resumeDialog"));
    setWindowTitle(tr("继续焊接"));
    look::dress(this);
    const int room = parent ? parent->width() - 2 * px(gap) : px(bestWidth);
    setFixedWidth(std::clamp(room, px(leastWidth), px(bestWidth)));
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(px(padding), px(padding) - px(gap) / 2, px(padding), px(padding) - px(gap) / 2);
    rows->setSpacing(px(gap));
    rows->addLayout(makeHead());
    rows->addWidget(picture_);
    rows->addSpacing(px(gap));
    addChoices(rows);
    rows->addLayout(makeFoot());
    follow();
    refresh();
}

QLayout* ResumeDialog::makeHead() {
    auto* const title = text("lblTitle", this);
    title->setProperty("heading", "page");
    title->setText(tr("中断后继续焊接"));
    auto* const where = text("lblWhere", this);
    where->setWordWrap(false);
    const auto [seam, seams] = seamOf(line_);
    where->setText(tr("第 %1 行，第 %2 条焊缝，共 %3 条").arg(line_ + 1).arg(seam).arg(seams));
    auto* const head = new QHBoxLayout;
    head->addWidget(title, 1);
    head->addWidget(where);
    return head;
}

QLayout* ResumeDialog::makeFoot() {
    auto* const note = text("lblNothing", this);
    note->setText(tr("选择之前不会有任何动作。"));
    QPushButton* const cancel = makeButton(tr("取消"), "close", "btnCancel");
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* const foot = new QHBoxLayout;
    foot->setContentsMargins(0, px(gap), 0, 0);
    foot->addWidget(note, 1);
    foot->addWidget(cancel);
    return foot;
}

void ResumeDialog::addChoices(QVBoxLayout* rows) {
    QPushButton* const goOn = makeButton(tr("回到中断点，继续焊接"), "back", "btnGoOn");
    goOn->setDefault(true);
    goOn->setIcon(look::icon(QStringLiteral("back"), look::white));
    goOn->setFocus();
    QPushButton* const again = makeButton(tr("回到中断点，重叠一段后继续焊接"), "back", "btnOverlap");
    QPushButton* const dark = makeButton(tr("从这里不出光继续"), "play", "btnDark");
    addChoice(rows, goOn, distance_, nullptr);
    addChoice(rows, again, again_, makeOverlap());
    addChoice(rows, dark, left_, nullptr);
    rows->addWidget(rule(this));
    connect(goOn, &QPushButton::clicked, this, [this] { choose(Choice::GoOn); });
    connect(again, &QPushButton::clicked, this, [this] { choose(Choice::GoOnWithOverlap); });
    connect(dark, &QPushButton::clicked, this, [this] { choose(Choice::GoOnDark); });
}

QPushButton* ResumeDialog::makeButton(const QString& caption, const char* icon, const char* name) {
    auto* const button = new QPushButton(look::icon(QLatin1String(icon)), caption, this);
    button->setObjectName(QLatin1String(name));
    button->setIconSize({px(iconSize), px(iconSize)});
    button->setAutoDefault(false);
    return button;
}

/// A choice, what it does, and what belongs to it. In a narrow sheet the words stand below the choice.
void ResumeDialog::addChoice(QVBoxLayout* rows, QPushButton* button, QLabel* effect, QWidget* more) {
    constexpr int choiceWidth = 312, choiceHeight = 56, narrow = 700;
    const bool isNarrow = width() < px(narrow);
    button->setProperty("choice", true);
    button->setFixedHeight(px(choiceHeight));
    rows->addWidget(rule(this));
    auto* const row = new QHBoxLayout;
    row->setSpacing(2 * px(gap));
    if (isNarrow) {
        rows->addWidget(button);
    } else {
        button->setFixedWidth(px(choiceWidth));
        row->addWidget(button);
    }
    row->addWidget(effect, 1);
    if (more) {
        row->addWidget(more);
    }
    rows->addLayout(row);
}

/// Changes the overlap by whole millimetres, as long as it is held.
QPushButton* ResumeDialog::stepButton(const char* icon, int steps) {
    constexpr int side = 48;
    auto* const button = makeButton(QString(), icon, steps < 0 ? "btnLess" : "btnMore");
    button->setFixedSize(px(side), px(side));
    button->setAccessibleName(steps < 0 ? tr("减少重叠") : tr("增加重叠"));
    button->setAutoRepeat(true);
    connect(button, &QPushButton::clicked, overlap_, [this, steps] { overlap_->stepBy(steps); });
    return button;
}

/// The length of the overlap, in the row of its choice.
QWidget* ResumeDialog::makeOverlap() {
    constexpr int fieldWidth = 88;
    overlap_->setObjectName(QStringLiteral("spinOverlap"));
    overlap_->setDecimals(1);
    overlap_->setRange(0.0, mostOverlapMm);
    overlap_->setSuffix(QLatin1Char(' ') + unitText("mm"));
    overlap_->setValue(rememberedMm);
    overlap_->setButtonSymbols(QAbstractSpinBox::NoButtons);
    overlap_->setAlignment(Qt::AlignCenter);
    overlap_->setFixedWidth(px(fieldWidth));
    overlap_->setContextMenuPolicy(Qt::NoContextMenu);
    overlap_->setProperty(pad::caption, tr("重叠"));
    overlap_->setProperty(pad::unit, unitText("mm"));
    auto* const place = new QWidget(this);
    auto* const row = new QHBoxLayout(place);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(gap));
    row->addWidget(stepButton("minus", -1));
    row->addWidget(overlap_);
    row->addWidget(stepButton("plus", +1));
    connect(overlap_, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, [this](double mm) {
        picture_->showOverlap(mm);
        tellOverlap();
    });
    picture_->showOverlap(overlap_->value());
    return place;
}

/// The tool may be jogged; and what is asked may have become the wrong question.
void ResumeDialog::follow() {
    for (const auto change : {&ModuleObject::added, &ModuleObject::removed}) {
        connect(m(key::program), change, this, &QDialog::reject);
    }
    connect(m(key::program), &ModuleObject::changed, this, &QDialog::reject);
    for (const QLatin1String path : {key::executeState, key::weldOpen, key::currentLine, key::robotMode,
                                     key::weldSwitch, key::handWeldSwitch, key::executeDry}) {
        connect(m(path), &ModuleObject::changed, this, &ResumeDialog::reread);
    }
    for (int axis = 0; axis < 3; ++axis) {
        connect(kordservice()->dataNode(mName(key::posturePlace, mIndex(axis))), &ModuleObject::changed, this,
                &ResumeDialog::refreshLater);
    }
}

void ResumeDialog::refreshLater() {
    if (!refreshes_) {
        refreshes_ = true;
        QMetaObject::invokeMethod(this, &ResumeDialog::refresh, Qt::QueuedConnection);
    }
}

void ResumeDialog::reread() {
    view_.reset();
    refreshLater();
}

void ResumeDialog::refresh() {
    refreshes_ = false;
    const bool isStill = executor && !isRunning() && m(key::currentLine)->getInt() == line_ &&
                         executor->outlook(line_).reopens;
    if (!isStill) {
        reject();
        return;
    }
    constexpr double nearMm = 2.0;
    if (!view_) {
        view_ = executor->resumeView(line_);
    }
    view_->tool = positionOf(kordservice()->get(nullptr, key::posture));
    const double awayMm = view_->awayMm();
    const QString weldedMm = mmText(view_->weldedMm());
    distance_->setText(awayMm > nearMm
                           ? tr("焊枪不出光退回 %1 mm，激光在 %2 mm 处打开。").arg(mmText(awayMm), weldedMm)
                           : tr("激光在 %1 mm 处打开。").arg(weldedMm));
    left_->setText(tr("剩余 %1 mm 焊缝不焊接，焊接开关将关闭。").arg(mmText(view_->leftMm())));
    tellOverlap();
    picture_->show(*view_);
}

void ResumeDialog::tellOverlap() {
    if (view_) {
        const double fromMm = std::max(0.0, view_->weldedMm() - overlap_->value());
        again_->setText(tr("激光在 %1 mm 处打开，再焊一段已焊部分。").arg(mmText(fromMm)));
    }
}

double ResumeDialog::overlapMm() const {
    return overlap_->value();
}

void ResumeDialog::choose(Choice choice) {
    if (choice == Choice::GoOnWithOverlap) {
        rememberedMm = overlap_->value();
    }
    emit chosen(choice);
    accept();
}

}  // namespace lumo
