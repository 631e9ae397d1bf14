#include "app/sheet/numberkeys.h"

#include "look/icon.h"
#include "look/scale.h"

#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>

namespace app {

namespace {

constexpr int keyWidth = 72;
constexpr int columns = 3;
const QString erase = QStringLiteral("erase");

}  // namespace

NumberKeys::NumberKeys(QWidget* parent) : QWidget(parent) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(look::px(8));
    int place = 0;
    for (const QChar digit : QStringLiteral("7894561230<")) {
        const QString key = digit == QLatin1Char('<') ? erase : QString(digit);
        auto* button = new QPushButton(key == erase ? QString() : key);
        button->setProperty("digit", true);
        button->setObjectName(key == erase ? QStringLiteral("key_erase") : QStringLiteral("key_") + key);
        button->setAccessibleName(key == erase ? tr("删除一位") : key);
        button->setFocusPolicy(Qt::NoFocus);
        button->setFixedWidth(look::px(keyWidth));
        if (key == erase) {
            button->setIcon(look::icon(QStringLiteral("backspace")));
            button->setIconSize(QSize(look::px(24), look::px(24)));
        }
        grid->addWidget(button, place / columns, place % columns);
        connect(button, &QPushButton::clicked, this, [this, key] { press(key); });
        ++place;
    }
}

void NumberKeys::press(const QString& key) {
    if (!field_ || !field_->isEnabled()) {
        return;
    }
    if (key == erase) {
        field_->backspace();
    } else {
        field_->insert(key);
    }
}

}  // namespace app
