#pragma once

#include <QIntValidator>

class QLineEdit;

/// Speeds in mm/s that a single move may have: 0 to 199, digits only. Unlike its base it refuses the
/// digit that would make more.
class SpeedValidator final : public QIntValidator {
    Q_OBJECT
public:
    explicit SpeedValidator(QObject* parent);
    State validate(QString& input, int& position) const override;
};

/// Whether a text is the speed of a move or a weld: more than 0.
[[nodiscard]] bool isSpeed(const QString& text);
[[nodiscard]] bool isSomeText(const QString& text);

/// Lets only digits be typed.
void allowOnlyDigits(QLineEdit* line);

/// From now on the line takes a blending zone of 0 to 5 mm: whenever its text becomes more, the last
/// character goes.
void limitToZone(QLineEdit* line);
