#include "widgets/percentbox.h"

PercentBox::PercentBox(QWidget* parent) : QDoubleSpinBox(parent) {
    setLocale(QLocale::c());
    setSuffix(QStringLiteral(" %"));
    setAlignment(Qt::AlignCenter);
    setAccelerated(true);
}

QValidator::State PercentBox::validate(QString& text, int& position) const {
    // Refused, the comma would be passed over and "1,5" become 15.
    text.replace(QLatin1Char(','), QLatin1Char('.'));
    return QDoubleSpinBox::validate(text, position);
}
