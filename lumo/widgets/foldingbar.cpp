#include "widgets/foldingbar.h"

#include "look/icon.h"
#include "look/scale.h"
#include "look/type.h"

#include <QEvent>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QStyle>
#include <QVariant>

#include <algorithm>

namespace lumo {

namespace {

constexpr int iconSize = 22;
constexpr int openWidth = 104;  ///< least of an open button, px at factor 1
constexpr int margins = 24;     ///< of a button, with its edges
constexpr int tightMargins = 8;
constexpr int margin = 16;  ///< of the bar
constexpr int gap = 8;
constexpr int tightGap = 4;
constexpr const char* foldProperty = "fold";  ///< 0 open, 1 without icons, 2 tight

int widestWord(const QString& text, const QFont& font) {
    int width = 0;
    const QStringList words = text.split(QLatin1Char(' '));
    for (const QString& word : words) {
        width = std::max(width, look::textWidth(font, word));
    }
    return width;
}

}  // namespace

FoldingBar::FoldingBar(QWidget* parent) : QFrame(parent) {}

void FoldingBar::dress(QPushButton* button, const char* icon, bool isPrimary) {
    button->setProperty("primary", isPrimary);
    button->setProperty(foldProperty, static_cast<int>(shown_));
    icons_.insert(button,
                  isPrimary ? look::icon(QLatin1String(icon), look::white) : look::icon(QLatin1String(icon)));
    button->setIcon(icons_.value(button));
    button->setIconSize(QSize(look::px(iconSize), look::px(iconSize)));
}

/// The page may always be narrower: the buttons fold.
QSize FoldingBar::minimumSizeHint() const {
    return {1, QFrame::minimumSizeHint().height()};
}

void FoldingBar::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    fold();
}

void FoldingBar::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        for (auto button = icons_.cbegin(); button != icons_.cend(); ++button) {
            button.key()->setIconSize(QSize(look::px(iconSize), look::px(iconSize)));
        }
        fold();
    }
}

void FoldingBar::space() {
    layout()->setContentsMargins(look::px(margin), 0, look::px(margin), 0);
    layout()->setSpacing(look::px(shown_ == Fold::Tight ? tightGap : gap));
}

int FoldingBar::neededWidth(Fold fold) const {
    const bool isOpen = fold == Fold::Open;
    const QFont words = look::font(fold == Fold::Tight ? look::Size::Caption : look::Size::Text);
    const QMargins around = layout()->contentsMargins();
    int width = around.left() + around.right();
    const int between = look::px(fold == Fold::Tight ? tightGap : gap);
    for (int i = 0; i < layout()->count(); ++i) {
        const QWidget* const widget = layout()->itemAt(i)->widget();
        width += i > 0 ? between : 0;
        if (const auto* const button = qobject_cast<const QPushButton*>(widget)) {
            const int text = look::textWidth(words, button->text());
            width += isOpen ? std::max(look::px(openWidth), text + look::px(iconSize) + 4 + margins)
                            : text + (fold == Fold::Tight ? tightMargins : margins);
        } else if (const auto* const title = qobject_cast<const QLabel*>(widget)) {
            width += isOpen ? look::textWidth(title->font(), title->text())
                            : widestWord(title->text(), title->font());
        } else if (widget) {
            width += widget->sizeHint().width();
        }
    }
    return width;
}

void FoldingBar::fold() {
    if (!layout()) {
        return;
    }
    space();
    Fold wanted = Fold::Tight;
    for (const Fold fold : {Fold::Open, Fold::WithoutIcons}) {
        if (neededWidth(fold) <= width()) {
            wanted = fold;
            break;
        }
    }
    if (wanted != shown_) {
        apply(wanted);
    }
}

void FoldingBar::apply(Fold fold) {
    shown_ = fold;
    space();
    for (auto it = icons_.cbegin(); it != icons_.cend(); ++it) {
        QPushButton* const button = it.key();
        button->setIcon(fold == Fold::Open ? it.value() : QIcon());
        button->setProperty(foldProperty, static_cast<int>(fold));
        // Short words get a place for a finger from the free room.
        button->setSizePolicy(fold == Fold::Tight ? QSizePolicy::Expanding : QSizePolicy::Minimum,
                              QSizePolicy::Fixed);
        button->style()->unpolish(button);
        button->style()->polish(button);
    }
}

}  // namespace lumo
