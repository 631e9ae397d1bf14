#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QString>

#include <functional>

namespace lumo {

/// Whether there is such a file, or may be one: where that cannot be told.
[[nodiscard]] bool isThere(const QString& path);

/// Writes `content` whole by the host's file service, which keeps a file in its place that does not
/// parse as NAME.damaged. So is a file that parses but holds something that `isOurs` refuses: somebody
/// typed it. False, after a report of the file service, when nothing was written.
bool writeKeeping(const QString& path, const QJsonValue& content,
                  const std::function<bool(const QJsonValue&)>& isOurs);
/// The same with JSON text that is ready.
bool writeKeeping(const QString& path, const QByteArray& text,
                  const std::function<bool(const QJsonValue&)>& isOurs);

}  // namespace lumo
