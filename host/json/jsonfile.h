#pragma once

#include "json/jsontext.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>

namespace mendo {

/// Whether there is certainly no such file: where that cannot be told, there may be one.
[[nodiscard]] bool isMissing(const QString& fileName);

/// Reads a JSON file or compiled resource. Nothing, with what is wrong in `problem`, when it is missing,
/// cannot be read or is no JSON. A pipe or a device is refused: reading it might never end, or never begin.
[[nodiscard]] std::optional<JsonText> readJsonFile(const QString& fileName, FileProblem* problem,
                                                   JsonText::Reading reading = JsonText::Reading::Whole);

/// Writes a file whole: beside the old one, file and folder synced, renamed over it. An existing file that is
/// no JSON, or whose content `isOurs` refuses (when given), is kept as NAME.damaged, NAME.damaged.2, … False,
/// with what is wrong in `problem`, when it fails; the old file is then intact.
[[nodiscard]] bool writeFile(const QString& fileName, const QByteArray& content,
                             const std::function<bool(const QJsonValue&)>& isOurs, FileProblem* problem);

}  // namespace mendo
