#pragma once

#include "module/host.h"

#include <QString>

#include <optional>

namespace lumo {

/// The four signals of a station. They differ in a small table: their fields, their side of the
/// controller and their captions.
enum class StationSignal { StartInput, StopInput, StartOutput, StopOutput };

[[nodiscard]] constexpr bool isInput(StationSignal which) {
    return which == StationSignal::StartInput || which == StationSignal::StopInput;
}
[[nodiscard]] constexpr bool isStart(StationSignal which) {
    return which == StationSignal::StartInput || which == StationSignal::StartOutput;
}

/// What one of them is connected to: a digital input or output of the controller, or a bit of a
/// register. A record keeps both, and which of them counts.
struct SignalSource {
    bool isIo = true;
    QString ioName;
    QString registerName;
    QString registerType;
    int bias = 0;  ///< of the bit, 0 the first; negative: none

    /// Of what counts; empty when nothing is connected.
    [[nodiscard]] QString name() const { return isIo ? ioName : registerName; }
    /// Whether both are connected to the same.
    [[nodiscard]] bool isSameAs(const SignalSource& other) const {
        return isIo == other.isIo && name() == other.name() && (isIo || bias == other.bias);
    }
};

/// Which change of an input triggers. `None`: what is stored is no such word; it never triggers.
enum class Edge { None, Rising, Falling };

/// The level of an input when it was looked at; nothing before that.
using Level = std::optional<bool>;

/// Whether an input triggers: it differs from its baseline in the direction of the edge. A level that
/// was not looked at reads as low, but nothing falls to one.
[[nodiscard]] bool triggers(Edge edge, Level baseline, Level latest);
/// Whether an input stands at the level that its edge leads to. One without a name, or without an edge,
/// never does.
[[nodiscard]] bool stands(Edge edge, const SignalSource& input, bool level);

/// The edge that a stored word means, in whichever language of the package it was stored.
[[nodiscard]] Edge edgeFrom(const QString& word);
/// The word for an edge in the operator's language.
[[nodiscard]] QString edgeWord(Edge edge);

// --- The record -----------------------------------------------------------------------------------

/// Any kind but "IO" means a register.
[[nodiscard]] SignalSource readSource(const ModuleObject* station, StationSignal which);
/// Stores the kind in the operator's language and the input's or output's name; the register only
/// where it counts.
void writeSource(QObject* sender, ModuleObject* station, StationSignal which, const SignalSource& source);
[[nodiscard]] Edge readEdge(const ModuleObject* station, StationSignal input);
void writeEdge(QObject* sender, ModuleObject* station, StationSignal input, Edge edge);

// --- The controller -------------------------------------------------------------------------------

/// The level of an input; low when it cannot be read.
[[nodiscard]] bool inputLevel(QObject* sender, const SignalSource& input);
/// Switches an output; nothing when none is connected.
void switchOutput(QObject* sender, const SignalSource& output, bool on);

// --- What the operator reads ----------------------------------------------------------------------

/// "Start: IO", "Stop: Register".
[[nodiscard]] QString kindText(StationSignal which, const SignalSource& source);
/// The name; of a register with the bit, counted from 1, in brackets.
[[nodiscard]] QString sourceText(const SignalSource& source);
/// The edge's word; what is stored where that is none.
[[nodiscard]] QString edgeText(const ModuleObject* station, StationSignal input);

/// How often inputs are looked at; 100 ms for a text that is no number above 0.
[[nodiscard]] int samplePeriodMs(const QString& text);
/// Names that the package gives its own stations, in Chinese and English. They are not changed.
[[nodiscard]] bool isReservedName(const QString& name);

}  // namespace lumo
