#pragma once

#include "telemetry/linkstatus.h"
#include "telemetry/settings.h"

#include <QString>

namespace app {

// In the panel's language.

/// "Connected", "Not reachable: the broker does not answer".
QString linkText(const telemetry::LinkStatus& status);
/// What keeps settings from being used, as a sentence without a full stop.
QString flawText(const telemetry::Flaw& flaw);

}  // namespace app
