#pragma once

#include "bridge/linkreason.h"

#include <array>

namespace bridge {

/// Whether the controller and the device beside it can be reached. At first neither can.
class LinkState {
public:
    explicit LinkState(bool hasDevice) { of(LinkEnd::Device).up = !hasDevice; }

    void set(LinkEnd end, bool up, const LinkReason& reason) { of(end) = {up, up ? LinkReason() : reason}; }
    bool isUp(LinkEnd end) const { return ends_[std::size_t(end)].up; }
    bool isUp() const { return isUp(LinkEnd::Robot) && isUp(LinkEnd::Device); }
    /// Empty where it can be reached, and before anything was told.
    const LinkReason& reason(LinkEnd end) const { return ends_[std::size_t(end)].reason; }

private:
    struct State {
        bool up = false;
        LinkReason reason;
    };
    State& of(LinkEnd end) { return ends_[std::size_t(end)]; }

    std::array<State, 2> ends_;
};

}  // namespace bridge
