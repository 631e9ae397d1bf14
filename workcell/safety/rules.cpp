#include "workcell/safety/rules.h"

#include "workcell/safety/rulebook.h"

#include <algorithm>

namespace workcell::safety {

namespace {

struct Rule {
    const char* name;
    void (*check)(const Steps&, Findings&);
};

constexpr Rule rules[] = {
    {"powerLossShutsDown", powerLossShutsDown},
    {"oneRunAtATime", oneRunAtATime},
    {"refusalsAreTold", refusalsAreTold},
    {"noWeldOutlivesItsProgram", noWeldOutlivesItsProgram},
    {"programWaitsForTheRobot", programWaitsForTheRobot},
    {"pauseStopsMotions", pauseStopsMotions},
    {"resultsAreCounted", resultsAreCounted},
    {"gasOutlastsTheLaser", gasOutlastsTheLaser},
    {"linesComeInOrder", linesComeInOrder},
    {"pauseKeepsItsLine", pauseKeepsItsLine},
    {"laserOnlyInAnOpening", laserOnlyInAnOpening},
    {"closingNeverRaisesThePower", closingNeverRaisesThePower},
    {"laserGoesOffInTime", laserGoesOffInTime},
    {"weldEndsAtItsClose", weldEndsAtItsClose},
    {"dryRunStaysDark", dryRunStaysDark},
    {"handLitGoesOff", handLitGoesOff},
    {"handSwitchedStaysOff", handSwitchedStaysOff},
    {"nothingIsLeftOn", nothingIsLeftOn},
    {"nothingComplains", nothingComplains},
};

}  // namespace

std::vector<Breach> judge(const std::vector<Event>& events) {
    const Steps steps = stepsOf(events);
    std::vector<Breach> all;
    for (const Rule& rule : rules) {
        Findings found(rule.name, &all);
        rule.check(steps, found);
    }
    std::stable_sort(all.begin(), all.end(),
                     [](const Breach& a, const Breach& b) { return a.event < b.event; });
    return all;
}

}  // namespace workcell::safety
