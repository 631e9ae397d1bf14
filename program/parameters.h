#pragma once

#include "program/entryrange.h"
#include "program/record.h"

#include <QLatin1String>

#include <vector>

namespace prog {

/// Values of a parameter set as runs use them: percentages as fractions of full scale, times in ms, negative
/// times as 0 and long ones cut to some days. What is missing is 0. The rows below tell what each is for.
struct LaserParams {
    double power = 0.0, frequency = 0.0, ratio = 0.0, wireSpeed = 0.0;
    int increaseMs = 0, decreaseMs = 0, stayMs = 0, closeDelayMs = 0;
    int openMs = 0, openIntervalMs = 0;
    int preFlowMs = 0, postFlowMs = 0;
    int pullbackEndMs = 0, refeedStartMs = 0, refeedEndMs = 0;

    /// A node of the tree, or an object of the settings file.
    static LaserParams from(const Record& set);
    /// The sets of `lumo.param`, or of the settings file.
    static std::vector<LaserParams> allFrom(const Record& sets);
};

enum class ParameterGroup { Power, Process, Wire };

/// A value of a parameter set: the one place that says what it is.
struct ParameterRow {
    QLatin1String name;
    ParameterGroup group;
    int standard;                    ///< in new sets
    double LaserParams::*fraction;   ///< a percentage, null for a time
    int LaserParams::*milliseconds;  ///< a time, null for a percentage
    const char* meaning;

    [[nodiscard]] bool isPercentage() const { return fraction != nullptr; }
    /// The greatest value that the page of the sets takes, in % or ms; the least is 0.
    [[nodiscard]] int most() const;
    [[nodiscard]] EntryRange range() const;
};

/// The fifteen values, in the order of the page. A set's name stands beside them.
[[nodiscard]] const std::vector<ParameterRow>& parameterRows();
/// The row of a name; null for an unknown name.
[[nodiscard]] const ParameterRow* parameterRow(const QString& name);

}  // namespace prog
