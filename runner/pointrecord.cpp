#include "runner/pointrecord.h"

#include "json/jsonwriter.h"
#include "kinematics/arm.h"
#include "program/geometry.h"
#include "program/words.h"

#include <QtMath>

#include <cmath>

namespace run {

using mendo::JsonWriter;

namespace {

/// Numbers as fine as the posture's; + 0.0 turns -0 into 0.
template <typename Numbers>
void writeList(JsonWriter& writer, const QString& key, const Numbers& numbers, double perUnit) {
    writer.key(key).beginArray();
    for (const double number : numbers) {
        writer.number(std::round(number * perUnit) / perUnit + 0.0);
    }
    writer.endArray();
}

}  // namespace

std::optional<QByteArray> pointRecord(const std::vector<double>& pose, int axes, Problem* problem) {
    constexpr double perM = 1e9;
    constexpr double perRad = 1e11;
    const kin::Arm arm(axes);
    kin::Pose target;
    for (std::size_t i = 0; i < target.trans.size(); ++i) {
        target.trans[i] = pose[i] / prog::mmPerM;
        target.rot[i] = qDegreesToRadians(pose[i + target.trans.size()]);
    }
    kin::Arm::Fault fault = kin::Arm::Fault::None;
    const std::optional<kin::Joints> joints = arm.inverse(target, arm.home(), &fault);
    if (!joints) {
        problem->reason = fault == kin::Arm::Fault::JointLimit
                              ? QStringLiteral("--point: the arm cannot turn that way")
                              : QStringLiteral("--point: the point is out of the arm's reach");
        return std::nullopt;
    }
    JsonWriter writer;
    writer.beginObject();
    writeList(writer, prog::field::trans, target.trans, perM);
    writeList(writer, prog::field::rot, target.rot, perRad);
    writeList(writer, prog::field::near, *joints, perRad);
    return writer.endObject().take();
}

}  // namespace run
