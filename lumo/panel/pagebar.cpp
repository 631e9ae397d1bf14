#include "panel/pagebar.h"

#include "look/scale.h"
#include "look/tokens.h"
#include "look/type.h"
#include "panel/captionedbox.h"
#include "widgets/wraptoolbutton.h"

#include <QEvent>
#include <QFrame>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>

namespace lumo {

namespace {

// At factor 1.
constexpr int barHeight = 64;
constexpr int secondRow = 56;
constexpr int control = 48;
constexpr int gap = 8;
constexpr int margin = 16;
constexpr int nameGap = 24;
constexpr int widestBox = 200;
constexpr int leastBox = 112;
constexpr int leastName = 72;  ///< also of the state of storage below it
constexpr int leastTool = 52, usualTool = 60, largeTool = 72;
constexpr int mostTools = 6;
/// Pages from this width on have large buttons and wide gaps.
constexpr int largeFrom = 1000;
constexpr int rightMargin = 8;
constexpr int undoAndRedo = 2;

}  // namespace

// --- Name -----------------------------------------------------------------------------------------

QFont NameLabel::fontFor(int width) const {
    const QFont large = look::font(look::Size::Title, look::Weight::Strong);
    return look::textWidth(large, text()) <= width ? large
                                                   : look::font(look::Size::Text, look::Weight::Strong);
}

QSize NameLabel::sizeHint() const {
    const QFont large = look::font(look::Size::Title, look::Weight::Strong);
    return {look::textWidth(large, text()) + 1, QFontMetrics(large).height()};
}

QSize NameLabel::minimumSizeHint() const {
    const QFont small = look::font(look::Size::Text, look::Weight::Strong);
    return {look::textWidth(small, text()) / 2, QFontMetrics(small).height()};
}

int NameLabel::heightForWidth(int width) const {
    const QFont font = fontFor(width);
    const int line = QFontMetrics(font).height();
    return look::textWidth(font, text()) <= width ? line : 2 * line;
}

void NameLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setPen(QColor(look::ink));
    painter.setFont(fontFor(width()));
    const QFontMetrics metrics = painter.fontMetrics();
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAnywhere);
    if (2 * width() > metrics.horizontalAdvance(text())) {
        painter.drawText(QRectF(rect()), text(), option);
    } else {
        painter.drawText(rect(), 0, metrics.elidedText(text(), Qt::ElideMiddle, width()));
    }
}

// --- Bar ------------------------------------------------------------------------------------------

PageBar::PageBar(QWidget* parent) : QWidget(parent), rule_(new QFrame(this)) {
    rule_->setObjectName(QStringLiteral("pageBarRule"));
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void PageBar::setParts(const Parts& parts) {
    parts_ = parts;
    parts.newProject->setFace(QStringLiteral("new"), ButtonFace::Place::Over);
    parts.open->setFace(QStringLiteral("open"), ButtonFace::Place::Over);
    parts.save->setFace(QStringLiteral("save"), ButtonFace::Place::Over);
    parts.saveAs->setFace(QStringLiteral("save_as"), ButtonFace::Place::Over);
}

void PageBar::setUndo(QWidget* undo) {
    undo_ = undo;
    if (undo_) {
        undo_->setParent(this);
    }
    arrange();
}

void PageBar::setRunning(bool running) {
    if (running != running_) {
        running_ = running;
        for (QWidget* const button : {parts_.newProject, parts_.open}) {
            button->setVisible(!running);
        }
        arrange();
    }
}

void PageBar::setProject(const QString& name) {
    parts_.name->setText(name);
    arrange();
}

void PageBar::setStored(const QString& text, bool strong) {
    parts_.stored->setText(text);
    isStrong_ = strong;
    arrange();
}

int PageBar::boxWidth(const CaptionedBox* box) {
    return std::clamp(box->sizeHint().width(), look::px(leastBox), look::px(widestBox));
}

/// Also while a program runs, when there are fewer buttons: what stands below the bar keeps its place.
bool PageBar::hasTwoRows() const {
    if (!isSized_) {
        return false;  // most windows have room for one
    }
    const QFont name = look::font(look::Size::Text, look::Weight::Strong);
    const int boxes = boxWidth(parts_.tool) + boxWidth(parts_.workObject) + look::px(gap);
    const int words = std::max(look::px(leastName), look::textWidth(name, parts_.name->text()));
    const int around = look::px(margin + 2 * gap + rightMargin);
    return around + boxes + words + toolsWidth(toolWidth(look::px(leastTool))) > width();
}

QSize PageBar::sizeHint() const {
    if (!parts_.name) {
        return {};
    }
    return {look::px(largeFrom), look::px(hasTwoRows() ? barHeight + secondRow : barHeight)};
}

/// Of each button: at least `usual`, and as wide as the widest word in two lines needs.
int PageBar::toolWidth(int usual) const {
    int words = 0;
    for (const WrapToolButton* button : {parts_.newProject, parts_.open, parts_.save, parts_.saveAs}) {
        words = std::max(words, button->minimumSizeHint().width());
    }
    return std::max(usual, words);
}

/// Of all buttons that there may be, with the rule.
int PageBar::toolsWidth(int each) {
    return mostTools * each + 2 * look::px(gap / 2) + 1;
}

int PageBar::toolWidthNow() const {
    if (width() >= look::px(largeFrom)) {
        return toolWidth(look::px(largeTool));
    }
    if (hasTwoRows()) {
        const int most = (width() - look::px(gap + rightMargin) - toolsWidth(0)) / mostTools;
        const int each = most - look::px(leastName + margin) / mostTools;
        return std::min(most, toolWidth(std::clamp(each, look::px(leastTool), look::px(usualTool))));
    }
    const int taken = parts_.workObject->geometry().right() + 1 +
                      std::max(look::px(leastName), parts_.name->sizeHint().width()) +
                      look::px(2 * gap + rightMargin);
    const int each = (width() - taken - toolsWidth(0)) / mostTools;
    return toolWidth(std::clamp(each, look::px(leastTool), look::px(usualTool)));
}

QList<WrapToolButton*> PageBar::tools() const {
    return running_ ? QList<WrapToolButton*>{parts_.save, parts_.saveAs}
                    : QList<WrapToolButton*>{parts_.newProject, parts_.open, parts_.save, parts_.saveAs};
}

/// From the right; gives the left end.
int PageBar::placeTools(int right, int top, int height) {
    const int width = toolWidthNow();
    const int between = this->width() >= look::px(largeFrom) ? look::px(4) : 0;
    const QList<WrapToolButton*> all = tools();
    int x = right;
    for (auto button = all.rbegin(); button != all.rend(); ++button) {
        x -= width;
        (*button)->setGeometry(x, top, width, height);
        x -= between;
    }
    const bool undoes = undo_ && !running_;
    rule_->setVisible(undoes);
    if (undo_) {
        undo_->setVisible(undoes);
    }
    if (undoes) {
        const int around = look::px(width >= look::px(largeTool) ? gap : gap / 2);
        rule_->setGeometry(x - around, top + look::px(gap), 1, height - look::px(2 * gap));
        x -= 2 * around + 1 + undoAndRedo * width;
        undo_->setGeometry(x, top, undoAndRedo * width, height);
    }
    return x;
}

void PageBar::placeBoxes(int left, int right, int top) {
    const int between = look::px(gap);
    const int half = (right - left - between) / 2;
    const auto widthOf = [this, half](const CaptionedBox* box) {
        return hasTwoRows() ? half : std::min(half, boxWidth(box));
    };
    const int tool = widthOf(parts_.tool);
    parts_.tool->setGeometry(left, top, tool, look::px(control));
    parts_.workObject->setGeometry(left + tool + between, top, widthOf(parts_.workObject), look::px(control));
}

void PageBar::placeName(const QRect& place) {
    parts_.stored->setFont(
        look::font(look::Size::Caption, isStrong_ ? look::Weight::Strong : look::Weight::Plain));
    const bool hasState = !parts_.stored->text().isEmpty();
    const int name = parts_.name->heightForWidth(place.width());
    const int state = hasState ? parts_.stored->sizeHint().height() : 0;
    const int top = place.top() + (place.height() - name - state) / 2;
    parts_.name->setGeometry(place.left(), top, place.width(), name);
    parts_.stored->setGeometry(place.left(), top + name, place.width(), state);
    parts_.stored->setVisible(hasState);
}

void PageBar::arrange() {
    if (!isSized_) {
        return;
    }
    if (height() != sizeHint().height()) {
        updateGeometry();
    }
    const int edge = look::px(margin);
    const int bar = look::px(barHeight);
    const int top = look::px(gap);
    if (!hasTwoRows()) {
        placeBoxes(edge, width() - edge, top);
    }
    const int toolsLeft = placeTools(width() - look::px(rightMargin), top, bar - 2 * top);
    if (hasTwoRows()) {
        placeInTwoRows(toolsLeft);
        return;
    }
    const int after = look::px(width() >= look::px(largeFrom) ? nameGap : gap);
    const int left = parts_.workObject->geometry().right() + 1 + after;
    placeName({left, 0, std::max(0, toolsLeft - look::px(gap) - left), bar});
}

/// The name stands before the buttons, or in the second row where their words leave it no place.
void PageBar::placeInTwoRows(int toolsLeft) {
    const int edge = look::px(margin), bar = look::px(barHeight), least = look::px(leastName);
    const int room = toolsLeft - look::px(gap) - edge;
    const bool isBelow = !running_ && room < least;
    const int left = isBelow ? edge + std::max(least, look::px(leastBox) * 3 / 4) + look::px(gap) : edge;
    placeBoxes(left, width() - edge, bar);
    placeName(isBelow ? QRect(edge, bar, left - look::px(gap) - edge, look::px(control))
                      : QRect(edge, 0, std::max(0, room), bar));
}

void PageBar::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    isSized_ = true;
    arrange();
}

void PageBar::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        updateGeometry();
        arrange();
    }
}

}  // namespace lumo
