#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

namespace lumo {

/// The records of a settings file as they can be used, and what was wrong with them.
struct CheckedRecords {
    QJsonArray records;
    int faults = 0;      ///< how many records were mended
    int firstFault = 0;  ///< position of the first of them
    QString reason;      ///< what was wrong with it, in plain English
};

/// Makes records fit to be loaded. `model` is a record with every field that is read: a text, a
/// number, a boolean or a map of such. A field of a kind that does not convert to the model's is
/// left out, so that it reads as missing; a record that is no object becomes `substitute`, so that the
/// others keep their positions. Fields that the model does not have stay.
[[nodiscard]] CheckedRecords checkRecords(const QJsonArray& records, const QJsonObject& model,
                                          const QJsonObject& substitute);

}  // namespace lumo
