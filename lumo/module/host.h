#pragma once

// What the package uses of the host, under the names that the package uses.

#include "gantu/panel.h"
#include "json/jsonfile.h"
#include "json/jsonwriter.h"
#include "kord/kordservice.h"
#include "mendo/clock.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"
#include "mendo/moduleobject.h"

using mendo::ModuleObject;

namespace lumo {

/// The host's loggers to console and file (levels S, E, W) and to the console alone (I, d). Each statement
/// writes one line: `logW() << "text" << value;`.
mendo::QFLog logS();
mendo::QFLog logE();
mendo::QFLog logW();
mendo::QLog logI();
mendo::QLog logD();

}  // namespace lumo
