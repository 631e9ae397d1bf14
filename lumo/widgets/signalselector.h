#pragma once

#include "program/signal.h"

#include <QObject>

class QComboBox;
class QLabel;
class QRadioButton;

namespace lumo {

/// The widgets of a form that choose one signal.
struct SelectorWidgets {
    QRadioButton* io;
    QRadioButton* reg;
    QLabel* ioCaption;
    QComboBox* ioNames;
    QLabel* registerCaption;
    QComboBox* registers;
    QComboBox* bits;  ///< of the chosen register, shown from 1
};

/// What a selector offers: the controller's inputs and the registers that can be read, or its outputs and the
/// registers that can be written.
enum class SignalSide { Input, Output };

/// Lets the operator choose a signal: an input or output of the controller, or a bit of a register. A stored
/// signal that the controller does not have is offered too.
class SignalSelector : public QObject {
    Q_OBJECT
public:
    /// `offersNone`: the first entry is empty and means "not connected".
    SignalSelector(SignalSide side, bool offersNone, const SelectorWidgets& widgets, QObject* parent);

    /// Offers what the controller has and selects what is stored.
    void fill(const prog::Signal& stored);
    /// Shows the widgets of the chosen kind and hides the others.
    void refresh();
    [[nodiscard]] prog::Signal chosen() const;

private:
    void fillNames();
    void fillRegisters();
    void fillBits();

    const SignalSide side_;
    const bool offersNone_;
    const SelectorWidgets ui_;
    prog::Signal stored_;
};

}  // namespace lumo
