#pragma once

#include "module/host.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QMap>

namespace lumo {

/// The records of a settings file, made fit to be loaded, and their faults.
struct CheckedRecords {
    QJsonArray records;
    QMap<int, mendo::FileProblem::Reason> faults;  ///< by position; the first fault of each record
};

/// Checks records against `model`, a record with every field that is read: texts, numbers, booleans, or
/// objects of such. A field that cannot be read as the model's kind is left out and so counts as missing; a
/// record that is no object becomes the model, so that the others keep their positions. Fields that the model
/// lacks stay.
[[nodiscard]] CheckedRecords checkRecords(const QJsonArray& records, const QJsonObject& model);

}  // namespace lumo
