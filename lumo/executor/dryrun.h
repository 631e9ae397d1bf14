#pragma once

class QObject;

namespace lumo {

/// What a dry run shows and forbids: the pilot light on where the program welds, and nothing of a weld
/// switched on by anybody.
class DryRun {
public:
    /// `sender` stands behind what is written.
    explicit DryRun(QObject* sender) : sender_(sender) {}

    /// A dry run is accepted, before anything is written for it.
    void begin();
    /// It is over: the pilot light goes off, and the equipment can be used.
    void end();
    [[nodiscard]] bool isUnderWay() const { return isUnderWay_; }
    /// The pilot light. Outside of a dry run nothing.
    void light(bool on);

private:
    QObject* sender_;
    bool isUnderWay_ = false;
    bool isLit_ = false;
};

}  // namespace lumo
