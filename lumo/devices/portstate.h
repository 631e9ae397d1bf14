#pragma once

#include "program/finding.h"
#include "program/ports.h"

#include <QWidget>

class QLabel;

namespace lumo {

/// The cell of a port's row that shows the level of its signal, and in a second line what is wrong with its
/// assignment.
class PortState final : public QWidget {
    Q_OBJECT
public:
    explicit PortState(I_PORT port, QWidget* parent = nullptr);

    /// Reads a signal of the controller; an empty name: none.
    void showLevel(const QString& signal);
    void showFinding(const prog::Finding& finding);
    void clearFinding();

private:
    const I_PORT port_;
    QLabel* level_;
    QLabel* finding_;
};

}  // namespace lumo
