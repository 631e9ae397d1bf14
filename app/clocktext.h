#pragma once

#include <QString>

namespace app {

/// A length of time as a clock shows it, in whole seconds: "0:12", "1:02:03".
QString clockText(qint64 ms);

}  // namespace app
