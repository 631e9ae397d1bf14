#include "widgets/fieldlimits.h"

#include "program/statement.h"
#include "program/words.h"

#include <QLineEdit>
#include <QRegularExpressionValidator>

using namespace prog;

namespace {

/// As many as an int can hold; a longer number would read as 0.
constexpr int maxDigits = EntryRange::mostDigits;

double most(QLatin1String field) {
    return entryRange(statement::moveL, field).most;
}

}  // namespace

SpeedValidator::SpeedValidator(QObject* parent)
    : QIntValidator(0, static_cast<int>(most(field::speed)), parent) {}

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

void allowOnlyDigits(QLineEdit* line) {
    line->setMaxLength(maxDigits);
    line->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]+$")), line));
}

void limitToZone(QLineEdit* line) {
    QObject::connect(line, &QLineEdit::textChanged, line, [line](const QString& text) {
        if (text.toDouble() > most(field::zone)) {
            line->setText(text.chopped(1));
        }
    });
}
