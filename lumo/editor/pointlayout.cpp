#include "editor/pointlayout.h"

#include "look/icon.h"
#include "look/scale.h"
#include "look/sheet.h"
#include "look/tokens.h"
#include "look/type.h"
#include "ui_pointwidget.h"

#include <array>

using look::px;

namespace lumo {

namespace {

constexpr int pageMargin = 16;
constexpr int gap = 8;
constexpr int captionWidth = 24;
constexpr int mostJoints = 7;

// The page's own sheet makes everything in it white. These are nearer, and so win.
const char* const bodyGrounds =
    "QWidget { background: transparent; }"
    "QFrame#card1, QFrame#card2, QFrame#cardSpeed, QFrame#cardNote { background: @panel; }"
    "QLineEdit, QTextEdit, QPushButton { background: @white; }"
    "QPushButton:pressed { background: @pressed; }"
    "QPushButton:disabled { background: @panel; }";
const char* const barGrounds = "QFrame { background: @frame; } QLabel { background: transparent; }";

using Pair = std::array<QWidget*, 2>;  // caption and field

/// Caption and field side by side.
void place(QGridLayout* grid, const Pair& pair, int row, int column) {
    grid->addWidget(pair[0], row, 2 * column);
    grid->addWidget(pair[1], row, 2 * column + 1);
    grid->setColumnStretch(2 * column + 1, 1);
}

void forgetStretches(QGridLayout* grid) {
    for (int column = 0; column < 2 * mostJoints; ++column) {
        grid->setColumnStretch(column, 0);
    }
}

}  // namespace

PointLayout::PointLayout(Ui::PointWidget* form) : form_(form) {
    form->body->setStyleSheet(look::filled(QLatin1String(bodyGrounds)));
    form->bar->setStyleSheet(look::filled(QLatin1String(barGrounds)));
    const std::pair<QPushButton*, const char*> buttons[] = {
        {form->btnMoveThere, "goto"}, {form->updateBtn1, "import"}, {form->updateBtn2, "import"},
        {form->okayBtn, "check"},     {form->cancelBtn, "close"},
    };
    for (const auto& [button, icon] : buttons) {
        const bool isBlack = button != form->btnMoveThere;
        button->setProperty("fixedColour", isBlack);
        button->setIcon(look::icon(QLatin1String(icon), isBlack ? look::white : look::ink2));
    }
    form->columnNote->setStretch(1, 1);
    measure();
}

void PointLayout::showSeventh(bool shown) {
    hasSeventh_ = shown;
    shape_ = Shape::None;
}

void PointLayout::measure() {
    constexpr int iconSize = 20, fieldGap = 16, noteHeight = 112, buttonWidth = 152;
    Ui::PointWidget& form = *form_;
    form.titleLayout->setContentsMargins(px(pageMargin), px(gap), px(pageMargin), px(gap));
    form.cards->setContentsMargins(px(pageMargin), px(gap), px(pageMargin), px(pageMargin));
    form.cards->setSpacing(px(pageMargin));
    form.barLayout->setContentsMargins(px(pageMargin), px(gap), px(pageMargin), px(gap));
    form.barLayout->setSpacing(px(gap));
    for (QVBoxLayout* const column : {form.column1, form.column2, form.columnSpeed, form.columnNote}) {
        column->setContentsMargins(px(pageMargin), px(pageMargin), px(pageMargin), px(pageMargin));
        column->setSpacing(px(gap));
    }
    for (QBoxLayout* const row :
         {form.head1, form.head2, form.words1, form.words2, form.buttons1, form.buttons2}) {
        row->setSpacing(px(gap));
    }
    for (QGridLayout* const grid : {form.gridLP1, form.gridLP2, form.gridSpeed}) {
        grid->setHorizontalSpacing(px(gap));
        grid->setVerticalSpacing(px(gap));
    }
    form.gridSpeed->setHorizontalSpacing(px(fieldGap));
    form.gridSpeed->setVerticalSpacing(px(gap) / 2);
    form.textEditNote->setMinimumHeight(px(noteHeight) / 2);
    form.textEditNote->setMaximumHeight(px(noteHeight));
    for (QPushButton* const button :
         {form.btnMoveThere, form.updateBtn1, form.updateBtn2, form.okayBtn, form.cancelBtn}) {
        button->setIconSize({px(iconSize), px(iconSize)});
        button->setMinimumWidth(px(buttonWidth));
    }
    shape_ = Shape::None;
}

void PointLayout::arrange(int width) {
    constexpr int narrow = 620, broad = 1200;
    const Shape shape = width < px(narrow) ? Shape::Narrow : width < px(broad) ? Shape::Wide : Shape::Broad;
    if (shape == shape_) {
        return;
    }
    shape_ = shape;
    for (QBoxLayout* const head : {form_->head1, form_->head2}) {
        head->setDirection(shape == Shape::Narrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    }
    placeCoordinates();
    placeSpeed();
}

/// Narrow: positions in the first column, angles in the second.
void PointLayout::placeCoordinates() const {
    Ui::PointWidget& f = *form_;
    const std::array<Pair, mostJoints> first{{{f.lblX1, f.lineEditX1},
                                              {f.lblY1, f.lineEditY1},
                                              {f.lblZ1, f.lineEditZ1},
                                              {f.lblA1, f.lineEditA1},
                                              {f.lblB1, f.lineEditB1},
                                              {f.lblC1, f.lineEditC1},
                                              {f.lblJ7, f.lineEditJ7}}};
    const std::array<Pair, mostJoints - 1> second{{{f.lblX2, f.lineEditX2},
                                                   {f.lblY2, f.lineEditY2},
                                                   {f.lblZ2, f.lineEditZ2},
                                                   {f.lblA2, f.lineEditA2},
                                                   {f.lblB2, f.lineEditB2},
                                                   {f.lblC2, f.lineEditC2}}};
    const bool isNarrow = shape_ == Shape::Narrow;
    const int inRow = shape_ == Shape::Wide ? 3 : hasSeventh_ ? mostJoints : mostJoints - 1;
    const auto placeAll = [&](QGridLayout* grid, const Pair* pairs, int count) {
        forgetStretches(grid);
        for (int i = 0; i < count; ++i) {
            pairs[i][0]->setMinimumWidth(px(captionWidth));
            const bool isLast = i == mostJoints - 1;
            const int row = !isNarrow ? i / inRow : isLast ? 3 : i % 3;
            const int column = !isNarrow ? i % inRow : isLast ? 0 : i / 3;
            place(grid, pairs[i], row, column);
        }
    };
    placeAll(f.gridLP1, first.data(), int(hasSeventh_ ? first.size() : first.size() - 1));
    placeAll(f.gridLP2, second.data(), int(second.size()));
}

/// Narrow: captions above their fields. Broad: fields beside their captions, no wider than they have to be.
void PointLayout::placeSpeed() const {
    constexpr int broadWidth = 240, afterPair = 4;
    Ui::PointWidget& f = *form_;
    QGridLayout* const grid = f.gridSpeed;
    forgetStretches(grid);
    const std::array<QLabel*, 2> captions{f.label_26, f.label_27}, notes{f.lblSpeedRange, f.lblTurnRange};
    const std::array<QLineEdit*, 2> fields{f.lineEditSpeed, f.lineEditTurn};
    const bool isNarrow = shape_ == Shape::Narrow, isBroad = shape_ == Shape::Broad;
    const QFontMetrics metrics(look::font(look::Size::Text));
    grid->setColumnStretch(afterPair, isBroad ? 1 : 0);
    for (int i = 0; i < 2; ++i) {
        const int column = isNarrow ? i : 2 * i + 1;
        const int row = isNarrow ? 1 : 0;
        const auto at = std::size_t(i);
        grid->addWidget(captions[at], 0, isNarrow ? i : 2 * i);
        grid->addWidget(fields[at], row, column);
        grid->addWidget(notes[at], row + 1, column);
        // "mm/s" is not broken at its stroke.
        const bool isWhole = isBroad || (!isNarrow && i == 0);
        captions[at]->setMinimumWidth(isWhole ? metrics.horizontalAdvance(captions[at]->text()) + px(2) : 0);
        fields[at]->setMinimumWidth(isBroad ? px(broadWidth) : 0);
        fields[at]->setMaximumWidth(isBroad ? px(broadWidth) : QWIDGETSIZE_MAX);
        if (isBroad) {
            continue;
        }
        grid->setColumnStretch(column, 2);
        if (!isNarrow) {
            grid->setColumnStretch(column - 1, 1);
        }
    }
}

}  // namespace lumo
