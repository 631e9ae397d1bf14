#pragma once

#include "module/host.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QMap>

namespace lumo {

/// The records of a settings file as they can be used, and what was wrong with them.
struct CheckedRecords {
    QJsonArray records;
    QMap<int, mendo::FileProblem::Reason> faults;  ///< by position; the first fault of each record
};

/// Makes records fit to be loaded. `model` is a record with every field that is read: a text, a
/// number, a boolean or a map of such. A field that cannot be read as the model's kind is left out, so
/// that it counts as missing; a record that is no object becomes the model, so that the others keep
/// their positions. Fields that the model does not have stay.
[[nodiscard]] CheckedRecords checkRecords(const QJsonArray& records, const QJsonObject& model);

}  // namespace lumo
