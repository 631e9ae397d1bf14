#include "app/shots/stops.h"

#include "app/shots/tours.h"

namespace app {

const std::vector<Stop>& stops() {
    static const std::vector<Stop> all = [] {
        std::vector<Stop> collected;
        for (const auto tour : {projectStops, panelStops, editorStops, runStops, statusStops, parameterStops,
                                portStops, stationStops, deviceStops, noticeStops, viewStops, pendantStops}) {
            const std::vector<Stop> part = tour();
            collected.insert(collected.end(), part.begin(), part.end());
        }
        return collected;
    }();
    return all;
}

}  // namespace app
