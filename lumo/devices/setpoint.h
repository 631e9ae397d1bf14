#pragma once

#include "program/ports.h"

#include <QWidget>

class QDoubleSpinBox;
class QLabel;

namespace lumo {

class FieldAnswer;
class SignLabel;

/// A set point of a device: its caption, its field in percent, and below what the output is now. While the
/// field's value is not taken, the range that is allowed stands there instead.
class SetPoint final : public QWidget {
    Q_OBJECT
public:
    /// Takes caption and field from the form.
    SetPoint(I_PORT output, QLabel* caption, QDoubleSpinBox* field, QWidget* parent);

    [[nodiscard]] const QDoubleSpinBox* field() const { return field_; }
    [[nodiscard]] bool isTaken() const;
    /// Reads the output.
    void refresh();

private:
    const I_PORT output_;
    QDoubleSpinBox* const field_;
    FieldAnswer* const answer_;  ///< of the field, which owns it
    SignLabel* const note_;
};

}  // namespace lumo
