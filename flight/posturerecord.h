#pragma once

#include <QByteArray>

#include <vector>

namespace mendo {
class ModuleObject;
}

namespace flight {

/// The three lists of the robot's posture, as the data node holds them: metres, radians, radians.
struct Posture {
    std::vector<double> trans, rot, near;

    static Posture of(const mendo::ModuleObject* node);
    /// Three bytes with the lengths of the lists, then their numbers as 64-bit floats.
    [[nodiscard]] QByteArray encoded() const;
    /// Empty lists for bytes of another shape.
    static Posture decoded(const QByteArray& bytes);
};

}  // namespace flight
