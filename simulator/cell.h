#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

namespace sim {

class Controller;

/// The controller output that drives each piece of equipment; an empty name means not wired. Outputs
/// are bits ("LUMO_DO.#0") or analogue registers ("LUMO_AO_1").
struct Wiring {
    QString gas, wireEnable, wirePullback, laserEnable;  ///< bits
    QString laserPower, wireSpeed;                       ///< registers
};

/// The equipment of a weld cell: a laser source that emits while it is enabled and its power is above
/// zero, shielding gas, wire feeder and chiller. It writes the inputs "LUMO_DI.#0" to "#5": laser, head,
/// chiller, gas pressure and temperature are true when ready, welding is true while the laser emits.
class Cell : public QObject {
    Q_OBJECT
public:
    /// `controller` must outlive the cell. All equipment is ready; the constructor writes its inputs.
    Cell(Controller* controller, const Wiring& wiring, QObject* parent = nullptr);
    ~Cell() override;

    const Wiring& wiring() const;
    /// The equipment that can have a fault: laser, head, chiller, gas, temperature.
    static QStringList equipment();
    /// The input of a position in equipment(), true while it is ready.
    static QString inputOf(int equipment);
    /// `name` is one of equipment(). A fault makes its input false; a fault of laser, head or chiller also
    /// switches the source off. False for an unknown name.
    bool setFault(const QString& name, bool faulty);

    bool emitting() const;
    /// Totals since construction, the current period included.
    qint64 laserOnMs() const;
    qint64 gasOnMs() const;
    qint64 wireOnMs() const;
    /// Length of the tool path with the laser on, metres.
    double weldLength() const;

signals:
    void emittingChanged(bool on);

private:
    void update();

    struct Private;
    std::unique_ptr<Private> d_;
};

}  // namespace sim
