#include "editor/runbar.h"

#include "editor/dryrunrow.h"
#include "editor/findingsbutton.h"
#include "look/scale.h"
#include "widgets/switchbutton.h"
#include "widgets/switchcell.h"
#include "widgets/wraptoolbutton.h"

#include <QEvent>
#include <QLabel>

#include <algorithm>
#include <iterator>

namespace lumo {

namespace {

// At factor 1.
constexpr int barHeight = 64;
constexpr int control = 48;
constexpr int gap = 8;
constexpr int groupGap = 16;
constexpr int margin = 16;
constexpr int leastOver = 56;    // of a button with its icon over the word
constexpr int leastBefore = 86;  // with its icon before it

/// From the one that shows most to the one that needs least.
constexpr RunBar::Look looks[] = {
    {192, false, false, false, false}, {164, false, false, false, false}, {172, false, true, false, false},
    {168, true, true, false, false},   {168, true, true, true, false},    {148, true, true, true, false},
    {160, true, true, false, true},    {148, true, true, true, true},
};

/// Between the groups of the bar.
int aroundRule(const RunBar::Look& look) {
    return look::px(look.wordsOver ? gap : groupGap);
}

}  // namespace

RunBar::RunBar(QWidget* parent)
    : QFrame(parent), weld_(new SwitchCell(this)), handWeld_(new SwitchCell(this)), rule_(new QFrame(this)) {
    rule_->setObjectName(QStringLiteral("runRule"));
}

void RunBar::setParts(const Parts& parts) {
    parts_ = parts;
    weld_->setParts(parts.weldCaption, parts.weld);
    handWeld_->setParts(parts.handWeldCaption, parts.handWeld);
    connect(parts.dry, &DryRunRow::resized, this, &RunBar::arrangeAnew);
    connect(parts.findings, &FindingsButton::countsShown, this, &RunBar::arrangeAnew);
}

int RunBar::buttonWidth(const WrapToolButton* button, bool wordsOver) const {
    ButtonFace face;
    face.place = wordsOver ? ButtonFace::Place::Over : ButtonFace::Place::Before;
    face.text = button->text();
    face.font = look::font(wordsOver ? look::Size::Caption : look::Size::Text);
    const int words = face.leastSize().width();
    return wordsOver ? std::max(look::px(leastOver), words + look::px(gap))
                     : std::max(look::px(leastBefore), words + look::px(22 + gap + 2 * 12));
}

int RunBar::neededWidth(const Look& look) const {
    int buttons = look::px(look.start);
    for (const WrapToolButton* button : {parts_.point, parts_.stop, parts_.reset}) {
        buttons += look::px(gap) + buttonWidth(button, look.wordsOver);
    }
    int switches = 2 * look::px(look.captionsOver ? gap : groupGap) + aroundRule(look);
    for (SwitchCell* cell : {weld_, handWeld_}) {
        cell->setCaptionOver(look.captionsOver);
        switches += cell->sizeHint().width();
    }
    parts_.dry->setCaptionOver(look.captionsOver);
    switches += parts_.dry->sizeHint().width();
    switches += look.shortResult ? parts_.findings->compactWidth() : parts_.findings->fullWidth();
    const int rule = 2 * aroundRule(look) + 1;
    return 2 * look::px(margin) + (look.twoRows ? std::max(buttons, switches) : buttons + rule + switches);
}

RunBar::Look RunBar::lookFor(int width) const {
    if (!known_ || known_->first != width) {
        const Look* const found = std::find_if(std::begin(looks), std::end(looks),
                                               [&](const Look& look) { return neededWidth(look) <= width; });
        known_ = {width, found != std::end(looks) ? *found : *std::rbegin(looks)};
    }
    return known_->second;
}

int RunBar::heightFor(int width) const {
    const int rows = lookFor(width).twoRows ? 2 : 1;
    return rows * look::px(barHeight) - (rows - 1) * look::px(gap);
}

void RunBar::apply(const Look& look) {
    const auto place = look.wordsOver ? ButtonFace::Place::Over : ButtonFace::Place::Before;
    parts_.point->setFace(QStringLiteral("step"), place);
    parts_.stop->setFace(QStringLiteral("stop"), place, look::red);
    parts_.reset->setFace(QStringLiteral("reset"), place);
    weld_->setCaptionOver(look.captionsOver);
    handWeld_->setCaptionOver(look.captionsOver);
    parts_.dry->setCaptionOver(look.captionsOver);
    parts_.findings->setCompact(look.shortResult);
}

void RunBar::placeButtons(const Look& look, const QRect& row) {
    int needed = look::px(look.start);
    for (const WrapToolButton* button : {parts_.point, parts_.stop, parts_.reset}) {
        needed += look::px(gap) + buttonWidth(button, look.wordsOver);
    }
    // In a row of their own the buttons share what is left.
    const int more = look.twoRows ? std::max(0, row.width() - needed) / 4 : 0;
    int x = row.left();
    for (WrapToolButton* button : {parts_.start, parts_.point, parts_.stop, parts_.reset}) {
        const int width =
            (button == parts_.start ? look::px(look.start) : buttonWidth(button, look.wordsOver)) + more;
        button->setGeometry(x, row.top(), width, row.height());
        x += width + look::px(gap);
    }
}

void RunBar::placeSwitches(const Look& look, const QRect& row) {
    const int between = look::px(look.captionsOver ? gap : groupGap);
    int x = row.left();
    for (QWidget* cell : {static_cast<QWidget*>(weld_), static_cast<QWidget*>(handWeld_),
                          static_cast<QWidget*>(parts_.dry)}) {
        const int width = cell->sizeHint().width();
        // The whole height of the bar is the target.
        cell->setGeometry(x, row.top() - look::px(gap) + 1, width, row.height() + 2 * look::px(gap) - 2);
        x += width + between;
    }
    const int left = row.right() + 1 - x;
    const int width = std::min(parts_.findings->sizeHint().width(), std::max(0, left));
    parts_.findings->setGeometry(row.right() + 1 - width, row.top(), width, row.height());
    // The speed of a dry run may need its place.
    parts_.findings->setVisible(width >= parts_.findings->compactWidth());
}

void RunBar::arrange() {
    if (!parts_.start) {
        return;
    }
    const Look look = lookFor(width());
    apply(look);
    const int edge = look::px(margin);
    QRect row(edge, look::px(gap), width() - 2 * edge, look::px(control));
    placeButtons(look, row);
    const int x = parts_.reset->geometry().right() + 1 + aroundRule(look);
    rule_->setVisible(!look.twoRows);
    rule_->setGeometry(x, row.top(), 1, row.height());
    if (look.twoRows) {
        row.translate(0, look::px(control + gap));
    } else {
        row.setLeft(x + 1 + aroundRule(look));
    }
    placeSwitches(look, row);
}

void RunBar::arrangeAnew() {
    known_.reset();
    arrange();
}

void RunBar::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    arrange();
}

void RunBar::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        arrangeAnew();
    }
}

}  // namespace lumo
