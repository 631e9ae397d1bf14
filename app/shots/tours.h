#pragma once

#include "app/shots/stops.h"

#include <vector>

namespace app {

// The stops by what they show, in the order in which they are visited.
std::vector<Stop> panelStops();
std::vector<Stop> projectStops();
std::vector<Stop> editorStops();
std::vector<Stop> runStops();
std::vector<Stop> statusStops();
std::vector<Stop> parameterStops();
std::vector<Stop> portStops();
std::vector<Stop> stationStops();
std::vector<Stop> deviceStops();
std::vector<Stop> noticeStops();
std::vector<Stop> viewStops();
std::vector<Stop> pendantStops();

}  // namespace app
