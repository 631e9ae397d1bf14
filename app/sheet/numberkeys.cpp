#include "app/sheet/numberkeys.h"

#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>

namespace app {

namespace {

constexpr int keyWidth = 88, keyHeight = 56;
constexpr int columns = 3;
const QString erase = QStringLiteral("⌫");

}  // namespace

NumberKeys::NumberKeys(QWidget* parent) : QWidget(parent) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(8);
    int place = 0;
    for (const QChar digit : QStringLiteral("7894561230<")) {
        const QString key = digit == QLatin1Char('<') ? erase : QString(digit);
        auto* button = new QPushButton(key);
        button->setObjectName(key == erase ? QStringLiteral("key_erase") : QStringLiteral("key_") + key);
        button->setAccessibleName(key == erase ? tr("删除一位") : key);
        button->setFocusPolicy(Qt::NoFocus);
        button->setMinimumSize(keyWidth, keyHeight);
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
