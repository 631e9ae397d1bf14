#include "app/roles/rolegate.h"

#include "app/roles/padlock.h"
#include "app/roles/rolekeeper.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QPainter>
#include <QStackedWidget>

namespace app {

namespace {

/// The button of the package's navigation, and the pages that it leads to.
const struct {
    const char* button;
    const char* pages[2];
} ways[] = {
    {"btnPort", {"PortConfigWidget", nullptr}},
    {"btnBind", {"SignalsBindWidget", "SignalsBindingParamWidget"}},
    {"btnDeviceControl", {"DeviceControlWidget", nullptr}},
};

constexpr int badgePx = 20;
constexpr int badgeMargin = 4;
const QColor badgeColour(0x7a, 0x4b, 0x00);

/// A closed padlock over a corner of a button.
class LockBadge : public QWidget {
public:
    explicit LockBadge(QWidget* button) : QWidget(button) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFixedSize(badgePx, badgePx);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        paintPadlock(&painter, rect(), badgeColour, false);
    }
};

bool isPress(const QEvent* event) {
    switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::TouchBegin:
        case QEvent::Shortcut:
            return true;
        case QEvent::KeyPress: {
            const int key = static_cast<const QKeyEvent*>(event)->key();
            return key == Qt::Key_Space || key == Qt::Key_Select || key == Qt::Key_Return ||
                   key == Qt::Key_Enter;
        }
        default:
            return false;
    }
}

}  // namespace

RoleGate::RoleGate(const RoleKeeper* keeper, QWidget* page, QObject* parent)
    : QObject(parent),
      keeper_(keeper),
      page_(page),
      stack_(page->findChild<QStackedWidget*>(QStringLiteral("stackedWidget"))) {
    for (const auto& way : ways) {
        if (auto* const button = page->findChild<QAbstractButton*>(QLatin1String(way.button))) {
            button->installEventFilter(this);
            badges_.append(new LockBadge(button));
        }
    }
    if (stack_) {
        // Queued: the package is still about to show the page.
        connect(stack_, &QStackedWidget::currentChanged, this, &RoleGate::leaveLockedPage,
                Qt::QueuedConnection);
    }
    connect(keeper, &RoleKeeper::changed, this, &RoleGate::refresh);
    refresh();
}

void RoleGate::refresh() {
    for (const QPointer<QWidget>& badge : qAsConst(badges_)) {
        if (badge) {
            badge->move(badge->parentWidget()->width() - badgePx - badgeMargin, badgeMargin);
            badge->setVisible(!keeper_->isOpen());
        }
    }
    leaveLockedPage();
}

QAbstractButton* RoleGate::wayTo(const QWidget* shown) const {
    for (const auto& way : ways) {
        for (const char* const name : way.pages) {
            if (name && shown && shown->inherits(name)) {
                return page_->findChild<QAbstractButton*>(QLatin1String(way.button));
            }
        }
    }
    return nullptr;
}

/// Reached in another way than by the button, or open when the session ended.
void RoleGate::leaveLockedPage() {
    if (keeper_->isOpen() || !page_ || !stack_) {
        return;
    }
    QAbstractButton* const way = wayTo(stack_->currentWidget());
    auto* const project = page_->findChild<QAbstractButton*>(QStringLiteral("btnProject"));
    if (way && project) {
        project->click();
        refuse(way);
    }
}

void RoleGate::refuse(QAbstractButton* way) {
    emit refused(way->text().simplified());
    refused_ = way;  // an earlier question, which that has closed, forgets its page
}

void RoleGate::openRefused() {
    QAbstractButton* const way = refused_;
    refused_.clear();
    if (way) {
        way->click();
    }
}

bool RoleGate::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize || event->type() == QEvent::Show) {
        refresh();
    }
    if (keeper_->isOpen() || !isPress(event)) {
        return false;
    }
    refuse(static_cast<QAbstractButton*>(watched));
    return true;
}

}  // namespace app
