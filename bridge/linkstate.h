#pragma once

#include <QString>

#include <array>

namespace bridge {

/// Whether the controller and the device beside it can be reached. At first neither can.
class LinkState {
public:
    enum End { Robot, Device };

    explicit LinkState(bool hasDevice) { ends_[Device].up = !hasDevice; }

    void set(End end, bool up, const QString& reason) { ends_[end] = {up, reason}; }
    bool isUp(End end) const { return ends_[end].up; }
    bool isUp() const { return isUp(Robot) && isUp(Device); }
    /// Of the first that cannot be reached; empty where all can.
    QString reason() const {
        return !isUp(Robot) ? ends_[Robot].reason : isUp(Device) ? QString() : ends_[Device].reason;
    }

private:
    struct State {
        bool up = false;
        QString reason;
    };
    std::array<State, 2> ends_;
};

}  // namespace bridge
