#include "widgets/touchfields.h"

PercentBox::PercentBox(QWidget* parent) : QDoubleSpinBox(parent) {
    setLocale(QLocale::c());
    setSuffix(QStringLiteral(" %"));
    setAlignment(Qt::AlignCenter);
    setAccelerated(true);
}

QValidator::State PercentBox::validate(QString& text, int& position) const {
    // A comma that is refused would be skipped, and "1,5" become 15.
    text.replace(QLatin1Char(','), QLatin1Char('.'));
    return QDoubleSpinBox::validate(text, position);
}
