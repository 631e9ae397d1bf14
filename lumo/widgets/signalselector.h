#pragma once

#include "stations/station.h"

#include <QObject>

class QComboBox;
class QLabel;
class QRadioButton;

namespace lumo {

/// The widgets that choose one signal of a station.
struct SelectorWidgets {
    QRadioButton* io;
    QRadioButton* reg;
    QLabel* ioCaption;
    QComboBox* ioNames;
    QLabel* registerCaption;
    QComboBox* registers;
    QComboBox* bits;  ///< of the chosen register, counted from 1
};

/// Lets the operator choose one signal of a station among the inputs or outputs of the controller and
/// its registers of bits, or none: the empty entry, which comes first. What is stored and not offered any
/// more is offered too.
class SignalSelector : public QObject {
    Q_OBJECT
public:
    SignalSelector(StationSignal which, const SelectorWidgets& widgets, QObject* parent);

    /// Offers what the controller has and selects what is stored.
    void fill(const SignalSource& stored);
    /// Shows the names of the chosen kind alone.
    void refresh();
    [[nodiscard]] SignalSource chosen() const;

private:
    void fillNames(const QString& stored);
    void fillRegisters(const SignalSource& stored);
    void fillBits();
    void offerBits(int count);

    StationSignal which_;
    SelectorWidgets ui_;
};

}  // namespace lumo
