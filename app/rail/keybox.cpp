#include "app/rail/keybox.h"

#include "app/rail/holdbutton.h"
#include "look/scale.h"
#include "simulator/controller.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>

namespace app {

namespace {

constexpr int columns = 2;
/// F1 is the handbook's.
constexpr int functionKeys[] = {11, 2, 3, 4, 5};

}  // namespace

KeyBox::KeyBox(sim::Controller* controller, QWidget* parent) : QWidget(parent) {
    const struct {
        const char* name;
        QString text;
    } keys[] = {{"last", tr("上一个")},
                {"next", tr("下一个")},
                {"center", tr("中间")},
                {"enter", tr("确认")},
                {"delete", tr("删除")}};
    auto* grid = new QGridLayout(this);
    fit();
    int index = 0;
    for (const auto& key : keys) {
        const QString name = QLatin1String(key.name);
        const int function = functionKeys[index];
        auto* button = new HoldButton(QStringLiteral("%1\nF%2").arg(key.text).arg(function));
        button->setObjectName(QStringLiteral("key_") + name);
        button->setProperty("device", true);
        grid->addWidget(button, index / columns, index % columns);
        byFunctionKey_.insert(Qt::Key_F1 + function - 1, button);
        ++index;
        // A pressed key is false.
        connect(button, &HoldButton::held, controller,
                [controller, name](bool down) { controller->reportKey(name, !down); });
    }
    auto* hint = new QLabel(tr("短按：选择和插入；按住 3 秒：拖动示教"));
    hint->setWordWrap(true);
    hint->setProperty("caption", true);
    grid->addWidget(hint, grid->rowCount(), 0, 1, columns);
    grid->setRowStretch(grid->rowCount(), 1);
    QCoreApplication::instance()->installEventFilter(this);
}

void KeyBox::fit() {
    const int margin = look::px(16);
    layout()->setContentsMargins(margin, 0, margin, margin);
    layout()->setSpacing(look::px(8));
}

void KeyBox::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        fit();
    }
}

bool KeyBox::eventFilter(QObject*, QEvent* event) {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease) {
        return false;
    }
    const auto* keyEvent = static_cast<QKeyEvent*>(event);
    HoldButton* button = byFunctionKey_.value(keyEvent->key());
    if (!button || keyEvent->modifiers() != Qt::NoModifier) {
        return false;
    }
    if (!keyEvent->isAutoRepeat() && event->type() == QEvent::KeyPress) {
        button->hold();
    } else if (!keyEvent->isAutoRepeat()) {
        button->release();
    }
    return true;
}

}  // namespace app
