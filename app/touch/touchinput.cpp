#include "app/touch/touchinput.h"

#include "app/appearance.h"
#include "app/dock/dockarea.h"
#include "app/preferences.h"
#include "app/sheet/numberkeys.h"
#include "app/touch/dialogplace.h"
#include "app/touch/keyboard.h"
#include "app/touch/numberpad.h"
#include "look/scale.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScrollArea>
#include <QVBoxLayout>

namespace app {

namespace {

constexpr int air = 8;

/// A window for keys that never takes the focus from its dialog, which is its parent.
QWidget* makeWindow(QWidget* dialog) {
    auto* const window = new QWidget(dialog, Qt::Tool | Qt::FramelessWindowHint |
                                                 Qt::BypassWindowManagerHint | Qt::WindowDoesNotAcceptFocus);
    window->setObjectName(QStringLiteral("touchWindow"));
    window->setAttribute(Qt::WA_ShowWithoutActivating);
    window->setAttribute(Qt::WA_StyledBackground);
    window->setFont(QApplication::font());
    dress(window);
    auto* const column = new QVBoxLayout(window);
    column->setContentsMargins(2, 2, 2, 2);
    return window;
}

/// A sheet with keys of its own needs no others.
bool hasOwnKeys(const QWidget* widget) {
    for (; widget && !widget->isWindow(); widget = widget->parentWidget()) {
        if (widget->findChild<NumberKeys*>(QString(), Qt::FindDirectChildrenOnly)) {
            return true;
        }
    }
    return false;
}

/// Scrolls what the field lies in, so that it is seen.
void bringIntoView(QWidget* field) {
    for (QWidget* child = field; child && !child->isWindow(); child = child->parentWidget()) {
        if (auto* const area = qobject_cast<QScrollArea*>(child)) {
            area->ensureWidgetVisible(field, 0, look::px(air));
        } else if (auto* const view = qobject_cast<QAbstractItemView*>(child)) {
            view->scrollTo(view->currentIndex());
        }
    }
}

QRect onScreen(const QWidget* widget) {
    return {widget->mapToGlobal(QPoint()), widget->size()};
}

}  // namespace

const QString TouchInput::padId = QStringLiteral("numberpad");

TouchInput::TouchInput(DockArea* docks, QObject* parent)
    : QObject(parent), docks_(docks), language_(presentLanguage()) {
    docks_->add(
        padId,
        [this]() -> QWidget* {
            pad_ = new NumberPad;
            connect(pad_, &NumberPad::done, this, &TouchInput::close);
            connect(pad_, &NumberPad::switchedOff, this, &TouchInput::switchOff);
            return pad_;
        },
        QString(), DockWidth::Narrow);
    docks_->setGuest(padId);
    docks_->installEventFilter(this);
    QCoreApplication::instance()->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { follow(now); });
    connect(docks_, &DockArea::changed, this, &TouchInput::place);
}

TouchInput::~TouchInput() = default;

/// For good; the menu brings it back.
void TouchInput::switchOff() {
    const bool isNumber = field_.isNumber();
    if (isNumber) {
        Preferences::rememberNumberPad(false);
    } else {
        Preferences::rememberKeyboard(false);
    }
    close();
    emit told(isNumber ? tr("数字键盘已关闭，可在菜单中重新打开。")
                       : tr("字母键盘已关闭，可在菜单中重新打开。"));
}

// --- Taps -----------------------------------------------------------------------------------------

bool TouchInput::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (watched == docks_ && type == QEvent::Resize) {
        QMetaObject::invokeMethod(this, &TouchInput::place, Qt::QueuedConnection);
    } else if (type == QEvent::MouseButtonPress && watched->isWidgetType()) {
        onPress(static_cast<QWidget*>(watched));
    } else if (type == QEvent::MouseButtonRelease && watched->isWidgetType()) {
        onRelease(static_cast<QWidget*>(watched));
    } else if (watched == field_.widget() && (type == QEvent::Hide || type == QEvent::EnabledChange)) {
        QMetaObject::invokeMethod(
            this, [this] { follow(QApplication::focusWidget()); }, Qt::QueuedConnection);
    }
    return false;
}

bool TouchInput::isOwn(const QWidget* widget) const {
    for (const QWidget* const own : {static_cast<QWidget*>(pad_), static_cast<QWidget*>(drawer_.data()),
                                     static_cast<QWidget*>(keysWindow_.data())}) {
        if (own && (own == widget || own->isAncestorOf(widget))) {
            return true;
        }
    }
    return false;
}

void TouchInput::onPress(QWidget* widget) {
    if (!isOwn(widget) && !due_) {
        windowBefore_ = QApplication::activeWindow();
    }
}

void TouchInput::onRelease(QWidget* widget) {
    if (isOwn(widget) || due_) {
        return;
    }
    due_ = true;
    released_ = widget;
    // After the tap has done what it does: it may open an entry in a cell, or a dialog.
    QMetaObject::invokeMethod(this, &TouchInput::openAtFocus, Qt::QueuedConnection);
}

/// For the field that was tapped, an entry that the tap has opened in a cell, and the figure of a dialog that
/// the tap has opened.
void TouchInput::openAtFocus() {
    due_ = false;
    const EntryField field = EntryField::of(QApplication::focusWidget());
    if (!field.widget() || field.widget() == field_.widget() || hasOwnKeys(field.widget())) {
        return;
    }
    const bool tapped = released_ && (released_ == field.widget() || field.widget()->isAncestorOf(released_));
    const QWidget* const window = field.widget()->window();
    const bool inNewDialog = window != windowBefore_ && window->isModal();
    if (tapped || field.isInCell() || (inNewDialog && field.isNumber())) {
        open(field);
    }
}

/// Closes the keys when another widget gets the focus, but not when the whole window loses it.
void TouchInput::follow(QWidget* now) {
    QWidget* const field = field_.widget();
    const bool stays = field && field->isVisible() && field->isEnabled() &&
                       (!now || now == field || field->isAncestorOf(now));
    if (!stays && (pad_ || drawer_ || keysWindow_)) {
        close();
    }
}

// --- Opening and closing --------------------------------------------------------------------------

void TouchInput::open(const EntryField& field) {
    close();
    if (field.isNumber() ? Preferences::numberPad() : Preferences::keyboard()) {
        field_ = field;
        if (field.isNumber()) {
            openPad(field);
        } else {
            openKeyboard(field);
        }
        place();
    }
}

QWidget* TouchInput::dialog() const {
    QWidget* const window = field_.widget() ? field_.widget()->window() : nullptr;
    return window == docks_->window() ? nullptr : window;
}

QWidget* TouchInput::windowFor(QWidget* content) {
    keysWindow_ = makeWindow(dialog());
    keysWindow_->layout()->addWidget(content);
    movedDialog_ = dialog();
    dialogBefore_ = movedDialog_->geometry();
    return keysWindow_;
}

void TouchInput::openPad(const EntryField& field) {
    if (!dialog()) {
        docks_->content(padId);
        pad_->begin(field);
        docks_->open(padId);
        return;
    }
    auto* const pad = new NumberPad;
    connect(pad, &NumberPad::done, this, &TouchInput::close);
    connect(pad, &NumberPad::switchedOff, this, &TouchInput::switchOff);
    windowFor(pad);
    pad->begin(field);
    dialogPad_ = pad;
}

void TouchInput::openKeyboard(const EntryField& field) {
    auto* const keyboard = new Keyboard(language_, dialog() ? nullptr : docks_);
    connect(keyboard, &Keyboard::done, this, &TouchInput::close);
    connect(keyboard, &Keyboard::switchedOff, this, &TouchInput::switchOff);
    if (dialog()) {
        windowFor(keyboard);
        dialogKeyboard_ = keyboard;
    } else {
        drawer_ = keyboard;
        dress(keyboard);
    }
    keyboard->begin(field);
}

void TouchInput::close() {
    field_ = {};
    if (pad_) {
        pad_->end();
    }
    docks_->close(padId);
    for (const Keyboard* const keyboard : {drawer_.data(), dialogKeyboard_.data()}) {
        language_ = keyboard ? keyboard->language() : language_;
    }
    if (drawer_) {
        drawer_->hide();
        drawer_->deleteLater();
        drawer_ = nullptr;
    }
    dialogKeyboard_ = nullptr;
    dialogPad_ = nullptr;
    if (keysWindow_) {
        keysWindow_->hide();
        keysWindow_->deleteLater();
        keysWindow_ = nullptr;
    }
    putBack();
}

void TouchInput::putBack() {
    if (shifted_) {
        shifted_->move(shifted_->x(), shifted_->y() + shift_);
        shifted_->setProperty("covers", false);
        shifted_ = nullptr;
    }
    shift_ = 0;
    if (movedDialog_ && movedDialog_->isVisible()) {
        movedDialog_->setGeometry(dialogBefore_);
    }
    movedDialog_ = nullptr;
}

// --- Places ---------------------------------------------------------------------------------------

void TouchInput::place() {
    if (!field_.widget()) {
        return;
    }
    if (drawer_) {
        placeDrawer();
    } else if (keysWindow_ && movedDialog_) {
        placeWindow();
    }
    bringIntoView(field_.widget());
}

/// The drawer lies over the bottom of page and docks; what has the field goes up until it is seen.
void TouchInput::placeDrawer() {
    if (shifted_) {
        shifted_->move(shifted_->x(), 0);
        shift_ = 0;
    }
    const int height = drawer_->sizeHint().height();
    const int top = docks_->height() - height;
    drawer_->setGeometry(0, top, docks_->width(), height);
    drawer_->show();
    drawer_->raise();
    QWidget* child = field_.widget();
    bringIntoView(child);
    const QRect place(child->mapTo(docks_, QPoint()), child->size());
    while (child->parentWidget() != docks_) {
        child = child->parentWidget();
    }
    const int below = place.bottom() + 1 + look::px(air) - top;
    shift_ = qMax(0, qMin(below, place.top() - look::px(air)));
    shifted_ = child;
    shifted_->setProperty("covers", shift_ > 0);
    shifted_->move(shifted_->x(), -shift_);
}

/// Page and docks, as they lie on the screen: keys at a dialog do not lie over the frame.
QRect TouchInput::room() const {
    return onScreen(docks_);
}

void TouchInput::placeWindow() {
    if (auto* const files = qobject_cast<QFileDialog*>(movedDialog_.data())) {
        const int left =
            room().height() - (dialogKeyboard_ ? dialogKeyboard_->sizeHint().height() : 0) - 2 * air;
        files->resize(files->width(), qMin(dialogBefore_.height(), left));
        if (auto* const line = field_.line()) {
            line->setCompleter(nullptr);  // its list would lie over the files, and take a tap to close
        }
    }
    keysWindow_->ensurePolished();
    const QRect field = onScreen(field_.widget());
    const QRect frame = movedDialog_->geometry();
    constexpr int border = 2;
    DialogPlace place;
    if (dialogKeyboard_) {
        place = keysBelow(frame, field, dialogKeyboard_->sizeHint().height() + 2 * border, room());
    } else {
        place = keysBeside(frame, field, dialogPad_->sizeHint() + QSize(2 * border, 2 * border), room());
    }
    movedDialog_->move(movedDialog_->pos() + place.dialog - frame.topLeft());
    keysWindow_->setGeometry(place.keys);
    keysWindow_->show();
    keysWindow_->raise();
}

}  // namespace app
