#pragma once

#include "program/words.h"

using namespace prog;

namespace lumo {

/// The package's name in the host's registries.
constexpr QLatin1String packageName = "lumo"_l1;
/// The factory key of the page's module.
constexpr QLatin1String pageModuleKey = "rova.robot.pack.lumo"_l1;

}  // namespace lumo
