#include "widgets/fieldlimits.h"

#include <QLineEdit>
#include <QRegularExpressionValidator>

namespace {

constexpr int maxSpeedMmPerS = 199;
constexpr int maxZoneMm = 5;
/// As many as an int can hold; a longer number would read as 0.
constexpr int maxDigits = 9;

}  // namespace

SpeedValidator::SpeedValidator(QObject* parent) : QIntValidator(0, maxSpeedMmPerS, parent) {}

QValidator::State SpeedValidator::validate(QString& input, int&) const {
    if (input.isEmpty()) {
        return Intermediate;
    }
    for (const QChar character : qAsConst(input)) {
        if (character < QLatin1Char('0') || character > QLatin1Char('9')) {
            return Invalid;
        }
    }
    return input.size() <= maxDigits && input.toInt() <= top() ? Acceptable : Invalid;
}

bool isSpeed(const QString& text) {
    return text.toDouble() > 0;
}

bool isSomeText(const QString& text) {
    return !text.isEmpty();
}

void allowOnlyDigits(QLineEdit* line) {
    line->setMaxLength(maxDigits);
    line->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]+$")), line));
}

void limitToZone(QLineEdit* line) {
    QObject::connect(line, &QLineEdit::textChanged, line, [line](const QString& text) {
        if (text.toDouble() > maxZoneMm) {
            line->setText(text.chopped(1));
        }
    });
}
