#include "look/scale.h"

#include <QSize>
#include <QVariant>
#include <QWidget>
#include <QtMath>

namespace look {

namespace {

double current = 1;

}  // namespace

double factorFor(const QSize& window) {
    if (window.width() >= 2240 && window.height() >= 1300) {
        return 1.5;
    }
    return window.width() >= 1600 && window.height() >= 1000 ? 1.125 : 1;
}

double factorFor(const QWidget& widget) {
    const QWidget* const window = widget.window();
    const double chosen = window->property(scaleProperty).toDouble();
    return chosen > 0 ? chosen : factorFor(window->size());
}

double factor() {
    return current;
}

void setFactor(double factor) {
    current = factor;
}

int px(int length) {
    return qRound(length * current);
}

}  // namespace look
