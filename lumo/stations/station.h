#pragma once

#include "module/host.h"
#include "program/signal.h"

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

/// Which change of an input triggers. `None`: what is stored is no such word; it never triggers.
enum class Edge { None, Rising, Falling };

/// The level of an input when it was looked at; nothing before that.
using Level = std::optional<bool>;

/// Whether an input triggers: it differs from its baseline in the direction of the edge. A level that
/// was not looked at reads as low, but nothing falls to one.
[[nodiscard]] bool triggers(Edge edge, Level baseline, Level latest);
/// Whether an input stands at the level that its edge leads to. One without a name, or without an edge,
/// never does.
[[nodiscard]] bool stands(Edge edge, const prog::Signal& input, bool level);

/// The edge that a stored word means, in whichever language of the package it was stored.
[[nodiscard]] Edge edgeFrom(const QString& word);
/// The word for an edge in the operator's language.
[[nodiscard]] QString edgeWord(Edge edge);

// --- The record -----------------------------------------------------------------------------------

/// Any kind but "IO" means a register.
[[nodiscard]] prog::Signal readSignal(const ModuleObject* station, StationSignal which);
/// Stores the kind in the operator's language and the input's or output's name; the register only
/// where it counts.
void storeSignal(QObject* sender, ModuleObject* station, StationSignal which, const prog::Signal& signal);
[[nodiscard]] Edge readEdge(const ModuleObject* station, StationSignal input);
void writeEdge(QObject* sender, ModuleObject* station, StationSignal input, Edge edge);

// --- The controller -------------------------------------------------------------------------------

/// Switches an output; nothing when none is connected.
void switchOutput(QObject* sender, const prog::Signal& output, bool on);

// --- What the operator reads ----------------------------------------------------------------------

/// "Start: IO", "Stop: Register".
[[nodiscard]] QString kindText(StationSignal which, const prog::Signal& signal);
/// The name; of a register with the bit, counted from 1, in brackets.
[[nodiscard]] QString signalText(const prog::Signal& signal);
/// The edge's word; what is stored where that is none.
[[nodiscard]] QString edgeText(const ModuleObject* station, StationSignal input);

/// How often inputs are looked at; 100 ms for a text that is no number above 0.
[[nodiscard]] int samplePeriodMs(const QString& text);
/// Names that the package gives its own stations, in Chinese and English. They are not changed.
[[nodiscard]] bool isReservedName(const QString& name);

}  // namespace lumo
