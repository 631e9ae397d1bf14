#pragma once

#include "bridge/signalport.h"

namespace sim {

/// The registers, inputs and outputs of the simulated controller. Every write is accepted at once.
class SignalBoard : public bridge::SignalPort {
    Q_OBJECT
public:
    using bridge::SignalPort::SignalPort;

    QVector<bridge::SignalRow> rows() const override;
    void start() override {}
    void write(const QVector<bridge::SignalWrite>& writes, int ticket) override;

    /// `name` is "DI3" or "LUMO_DI.#2"; false when it is no digital input.
    Q_INVOKABLE bool setInput(const QString& name, bool value);
};

}  // namespace sim
