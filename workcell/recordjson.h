#pragma once

#include "workcell/runrecord.h"

#include <QJsonObject>

#include <vector>

namespace workcell {

/// A number of a seam that is always there, and its name in files.
struct SeamNumber {
    const char* name;
    double SeamRecord::*value;
};
[[nodiscard]] const std::vector<SeamNumber>& seamNumbers();

/// The record of a run, with the names of the runner's summary.
[[nodiscard]] QJsonObject jsonOfRecord(const RunRecord& record);
/// What is missing is 0, empty or none. All parts belong to the project of the run.
[[nodiscard]] RunRecord recordFrom(const QJsonObject& json);

}  // namespace workcell
