#pragma once

#include "program/finding.h"
#include "program/ports.h"

#include <QWidget>

namespace lumo {

class SignLabel;

/// The cell of a port's row that shows the level of its signal, and in a second line what is wrong with its
/// assignment.
class PortState final : public QWidget {
    Q_OBJECT
public:
    explicit PortState(I_PORT port, QWidget* parent = nullptr);

    /// Reads a signal of the controller; an empty name: nothing is shown.
    void showLevel(const QString& signal);
    void showFinding(const prog::Finding& finding);
    void clearFinding();
    /// What the second line says; empty without a finding.
    [[nodiscard]] QString findingText() const;

private:
    const I_PORT port_;
    SignLabel* const level_;
    SignLabel* const finding_;
};

}  // namespace lumo
