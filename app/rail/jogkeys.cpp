#include "app/rail/jogkeys.h"

#include "app/rail/holdbutton.h"
#include "look/scale.h"

#include <QEvent>
#include <QGridLayout>
#include <QVariant>

namespace app {

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr int axes = 6;
constexpr int rows = 3;

const char* const names[axes] = {"X", "Y", "Z", "RX", "RY", "RZ"};

}  // namespace

QString jogAxisName(sim::JogFrame frame, int axis) {
    return frame == sim::JogFrame::Joint ? QStringLiteral("J%1").arg(axis + 1) : QLatin1String(names[axis]);
}

double jogUnit(sim::JogFrame frame, int axis) {
    return sim::isTurn({frame, axis, 0, 0}) ? pi / 180 : 0.001;
}

JogKeys::JogKeys(QWidget* parent) : QWidget(parent) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    fit();
    for (int axis = 0; axis < axes; ++axis) {
        for (const int direction : {-1, 1}) {
            auto* key = new HoldButton(QString());
            key->setProperty("device", true);
            key->setObjectName(QStringLiteral("jog%1%2").arg(axis).arg(direction < 0 ? QStringLiteral("-")
                                                                                     : QStringLiteral("+")));
            grid->addWidget(key, axis % rows, (axis < rows ? 0 : 2) + (direction + 1) / 2);
            connect(key, &HoldButton::held, this,
                    [this, axis, direction](bool on) { emit held(axis, direction, on); });
            keys_.append(key);
        }
    }
}

void JogKeys::fit() {
    layout()->setSpacing(look::px(8));
}

void JogKeys::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        fit();
    }
}

void JogKeys::setFrame(sim::JogFrame frame) {
    release();
    for (int i = 0; i < keys_.size(); ++i) {
        keys_[i]->setText(jogAxisName(frame, i / 2) +
                          (i % 2 == 0 ? QStringLiteral("−") : QStringLiteral("+")));
    }
}

void JogKeys::release() {
    for (HoldButton* key : qAsConst(keys_)) {
        key->release();
    }
}

}  // namespace app
