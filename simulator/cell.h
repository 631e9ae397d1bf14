#pragma once

#include <QObject>
#include <QString>

#include <memory>

namespace sim {

class Controller;

/// Which controller signal is which piece of equipment; an empty name is a piece that is not wired.
/// Outputs are bits ("LUMO_DO.#0") or analogue registers ("LUMO_AO_1").
struct Wiring {
    QString gas, wireEnable, wirePullback, laserEnable;  ///< bits
    QString laserPower, wireSpeed;                       ///< registers
};

/// The weld cell behind the outputs: a laser source that emits when enabled with power above zero,
/// shielding gas, wire feeder, chiller; and the equipment signals on the inputs "LUMO_DI.#0" to "#5"
/// (laser, head, chiller, gas pressure, temperature: true when well; welding: true while emitting).
class Cell : public QObject {
    Q_OBJECT
public:
    /// `controller` must outlive the cell. All equipment is well; its signals are written here.
    Cell(Controller* controller, const Wiring& wiring, QObject* parent = nullptr);
    ~Cell() override;

    /// laser, head, chiller, gas, temperature; a fault makes the equipment's signal false and, for
    /// the laser, its head and the chiller, keeps the source from emitting. False for an unknown name.
    bool setFault(const QString& name, bool faulty);

    bool emitting() const;
    /// Totals since construction, the piece under way included.
    qint64 laserOnMs() const;
    qint64 gasOnMs() const;
    qint64 wireOnMs() const;
    /// Tool path while emitting, metres.
    double weldLength() const;

signals:
    void emittingChanged(bool on);

private:
    void follow();

    struct Private;
    std::unique_ptr<Private> d_;
};

}  // namespace sim
