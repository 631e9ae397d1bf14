#pragma once

#include <QIntValidator>

class QLineEdit;

/// Speeds of a single move in mm/s: 0 to 199, digits only. Unlike its base it refuses the digit that would
/// exceed the limit.
class SpeedValidator final : public QIntValidator {
    Q_OBJECT
public:
    explicit SpeedValidator(QObject* parent);
    State validate(QString& input, int& position) const override;
};

/// Whether a text is a number above 0, as the speed of a move or weld must be.
[[nodiscard]] bool isSpeed(const QString& text);
[[nodiscard]] bool isSomeText(const QString& text);

/// Accepts only digits.
void allowOnlyDigits(QLineEdit* line);

/// Limits the line to a blending zone of 0 to 5 mm: removes the last character whenever the number becomes
/// larger.
void limitToZone(QLineEdit* line);
