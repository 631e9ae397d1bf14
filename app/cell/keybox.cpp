#include "app/cell/keybox.h"

#include "simulator/controller.h"

#include <QEvent>
#include <QGridLayout>
#include <QPushButton>

namespace app {

namespace {

constexpr int kColumns = 3;

}  // namespace

KeyBox::KeyBox(sim::Controller* controller, QWidget* parent)
    : QGroupBox(tr("手柄按键"), parent), controller_(controller) {
    const struct {
        const char* name;
        QString text;
    } keys[] = {{"last", tr("上一个")},
                {"next", tr("下一个")},
                {"center", tr("中间")},
                {"enter", tr("确认")},
                {"delete", tr("删除")}};
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(8, 4, 8, 6);
    grid->setSpacing(4);
    int index = 0;
    for (const auto& key : keys) {
        const QString name = QLatin1String(key.name);
        auto* button = new QPushButton(key.text);
        button->setObjectName(QStringLiteral("key_") + name);
        button->setFocusPolicy(Qt::TabFocus);
        button->setMinimumHeight(48);
        grid->addWidget(button, index / kColumns, index % kColumns);
        ++index;
        connect(button, &QPushButton::pressed, this, [this, name] { report(name, true); });
        connect(button, &QPushButton::released, this, [this, name] { report(name, false); });
    }
}

/// The pendant's node is false while a key is down.
void KeyBox::report(const QString& key, bool pressed) {
    if (pressed == pressed_.contains(key))
        return;
    if (pressed)
        pressed_.insert(key);
    else
        pressed_.remove(key);
    controller_->reportKey(key, !pressed);
}

void KeyBox::releaseAll() {
    const QSet<QString> keys = pressed_;
    for (const QString& key : keys)
        report(key, false);
}

void KeyBox::hideEvent(QHideEvent* event) {
    releaseAll();
    QGroupBox::hideEvent(event);
}

void KeyBox::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && !isActiveWindow())
        releaseAll();
    QGroupBox::changeEvent(event);
}

}  // namespace app
