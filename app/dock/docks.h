#pragma once

#include <QLatin1String>

/// The docks of the panel.
namespace app::docks {

constexpr QLatin1String path("path");
constexpr QLatin1String scope("signals");
constexpr QLatin1String results("results");
constexpr QLatin1String log("log");
constexpr QLatin1String help("help");  ///< the handbook, a HelpPage
constexpr QLatin1String cell("cell");
constexpr QLatin1String jog("jog");
constexpr QLatin1String keys("keys");  ///< of the tool

}  // namespace app::docks
