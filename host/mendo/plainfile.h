#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace mendo {

/// The whole content of a plain file or compiled resource; nothing, with the reason in plain English, when
/// it cannot be read. A pipe or a device is refused: it may never end, or never begin.
std::optional<QByteArray> readPlainFile(const QString& fileName, QString* reason);

}  // namespace mendo
