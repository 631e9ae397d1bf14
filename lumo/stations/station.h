#pragma once

#include "module/host.h"
#include "program/signal.h"

#include <QString>

#include <optional>

namespace lumo {

/// The four signals of a station.
enum class StationSignal { StartInput, StopInput, StartOutput, StopOutput };

[[nodiscard]] constexpr bool isInput(StationSignal which) {
    return which == StationSignal::StartInput || which == StationSignal::StopInput;
}
[[nodiscard]] constexpr bool isStart(StationSignal which) {
    return which == StationSignal::StartInput || which == StationSignal::StartOutput;
}

/// Which change of an input triggers. `None`: the stored word names no edge; it never triggers.
enum class Edge { None, Rising, Falling };

/// The level of an input when it was sampled; empty before that.
using Level = std::optional<bool>;

/// Whether an input triggers: it differs from its baseline in the direction of the edge. An empty level
/// counts as low for a rising edge; a falling edge needs a sampled low level.
[[nodiscard]] bool triggers(Edge edge, Level baseline, Level latest);
/// Whether an input is at the level that its edge leads to. Never for an input without a name or edge.
[[nodiscard]] bool isAtTriggerLevel(Edge edge, const prog::Signal& input, bool level);

/// The edge that a stored word means, in any language of the package.
[[nodiscard]] Edge edgeFrom(const QString& word);
/// The word for an edge in the operator's language.
[[nodiscard]] QString edgeWord(Edge edge);

// --- The record -----------------------------------------------------------------------------------

[[nodiscard]] prog::Signal readSignal(const ModuleObject* station, StationSignal which);
/// Stores the kind in the operator's language and the input's or output's name; the register only if it was
/// chosen.
void storeSignal(QObject* sender, ModuleObject* station, StationSignal which, const prog::Signal& signal);
[[nodiscard]] Edge readEdge(const ModuleObject* station, StationSignal input);
void writeEdge(QObject* sender, ModuleObject* station, StationSignal input, Edge edge);

// --- The controller -------------------------------------------------------------------------------

/// Switches an output; does nothing when none is connected.
void switchOutput(QObject* sender, const prog::Signal& output, bool on);

// --- What the operator reads ----------------------------------------------------------------------

/// "Start: IO", "Stop: Register".
[[nodiscard]] QString kindText(StationSignal which, const prog::Signal& signal);
/// The name; for a register with the bit, counted from 1, in brackets.
[[nodiscard]] QString signalText(const prog::Signal& signal);
/// The edge's word; the stored text when it names no edge.
[[nodiscard]] QString edgeText(const ModuleObject* station, StationSignal input);

/// The sampling period of the inputs; 100 ms for a text that is no number above 0.
[[nodiscard]] int samplePeriodMs(const QString& text);
/// Whether it is a name of the package's own stations, in Chinese or English. Operators cannot change these.
[[nodiscard]] bool isReservedName(const QString& name);

}  // namespace lumo
