#pragma once

#include <QIntValidator>

class QLineEdit;

/// Speeds of a single move in mm/s: up to the most that its page takes, digits only. Unlike its base it
/// refuses the digit that would exceed the limit.
class SpeedValidator final : public QIntValidator {
    Q_OBJECT
public:
    explicit SpeedValidator(QObject* parent);
    State validate(QString& input, int& position) const override;
};

/// Accepts only digits.
void allowOnlyDigits(QLineEdit* line);

/// Limits the line to a blending zone that the pages take: removes the last character whenever the number
/// becomes larger.
void limitToZone(QLineEdit* line);
