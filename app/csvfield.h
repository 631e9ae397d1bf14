#pragma once

#include <QByteArray>
#include <QString>

namespace app {

/// A field of a CSV line as UTF-8, in quotation marks where it needs them.
QByteArray csvField(const QString& text);

}  // namespace app
