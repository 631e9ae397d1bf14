#pragma once

/// The one door to the host: what the package uses of it, under the names the package uses.

#include "gantu/panel.h"
#include "json/jsontext.h"
#include "kord/kordservice.h"
#include "mendo/clock.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"
#include "mendo/moduleobject.h"

using mendo::ModuleObject;

namespace lumo {

/// The host's console-and-file loggers (levels S, E, W) and console-only loggers (I, d). Each makes
/// one line: `logW() << "text" << value;`.
mendo::QFLog logS();
mendo::QFLog logE();
mendo::QFLog logW();
mendo::QLog logI();
mendo::QLog logD();

}  // namespace lumo
