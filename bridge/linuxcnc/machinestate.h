#pragma once

#include "bridge/linuxcnc/axes.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>

#include <optional>

namespace bridge::linuxcnc {

/// One line of motion.py's state.
struct MachineState {
    double clock = 0;       ///< s
    Axes joints{}, axes{};  ///< LinuxCNC's
    int batch = 0, line = 0, done = 0;
    bool idle = true, on = false, homed = false, jointMode = false;
    QStringList errors;

    /// Nothing for a line without clock, joints or axes.
    static std::optional<MachineState> read(const QJsonObject& line);
};

inline std::optional<MachineState> MachineState::read(const QJsonObject& object) {
    bool isWhole = object[QLatin1String("t")].isDouble();
    const auto axes = [&object, &isWhole](const char* key) {
        Axes values{};
        for (int i = 0; i < int(values.size()); ++i) {
            const QJsonValue value = object[QLatin1String(key)][i];
            isWhole = isWhole && value.isDouble();
            values[std::size_t(i)] = value.toDouble();
        }
        return values;
    };
    const auto flag = [&object](const char* key) { return object[QLatin1String(key)].toBool(); };
    MachineState state;
    state.clock = object[QLatin1String("t")].toDouble();
    state.joints = axes("j");
    state.axes = axes("p");
    state.batch = object[QLatin1String("b")].toInt();
    state.line = object[QLatin1String("l")].toInt();
    state.done = object[QLatin1String("e")].toInt();
    state.idle = flag("idle");
    state.on = flag("on");
    state.homed = flag("homed");
    state.jointMode = flag("jointMode");
    for (const QJsonValue error : object[QLatin1String("err")].toArray()) {
        state.errors.append(error.toString());
    }
    return isWhole ? std::make_optional(state) : std::nullopt;
}

/// The code of the motion under way when LinuxCNC reports an error.
int errorCode(const QString& text);

}  // namespace bridge::linuxcnc
