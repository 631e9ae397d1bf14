#pragma once

#include "workcell/safety/rules.h"
#include "workcell/safety/step.h"

namespace workcell::safety {

/// Collects what breaks one rule.
class Findings {
public:
    Findings(const char* rule, std::vector<Breach>* all) : rule_(rule), all_(all) {}

    void at(std::size_t event) { event_ = event; }
    void forbid(bool happens, const QString& words) {
        if (happens) {
            all_->push_back({event_, rule_, words});
        }
    }
    void forbid(bool happens, const char* words) { forbid(happens, QString::fromLatin1(words)); }

private:
    const char* rule_;
    std::vector<Breach>* all_;
    std::size_t event_ = 0;
};

/// Calls a part of a rule for each event.
template <typename Part>
void each(const Steps& steps, Findings& found, Part part) {
    for (std::size_t i = 0; i < steps.size(); ++i) {
        found.at(i);
        part(steps[i]);
    }
}

// The rules, as docs/safety.md names them. Each looks at all events by itself.

// Stops (stoprules.cpp).
void powerLossShutsDown(const Steps& steps, Findings& found);
void pauseStopsMotions(const Steps& steps, Findings& found);
void nothingIsLeftOn(const Steps& steps, Findings& found);
void handLitGoesOff(const Steps& steps, Findings& found);
void handSwitchedStaysOff(const Steps& steps, Findings& found);
void nothingComplains(const Steps& steps, Findings& found);

// Runs (runrules.cpp).
void oneRunAtATime(const Steps& steps, Findings& found);
void refusalsAreTold(const Steps& steps, Findings& found);
void noWeldOutlivesItsProgram(const Steps& steps, Findings& found);
void programWaitsForTheRobot(const Steps& steps, Findings& found);
void resultsAreCounted(const Steps& steps, Findings& found);
void linesComeInOrder(const Steps& steps, Findings& found);
void pauseKeepsItsLine(const Steps& steps, Findings& found);

// Laser and gas (laserrules.cpp).
void gasOutlastsTheLaser(const Steps& steps, Findings& found);
void laserOnlyInAnOpening(const Steps& steps, Findings& found);
void closingNeverRaisesThePower(const Steps& steps, Findings& found);
void laserGoesOffInTime(const Steps& steps, Findings& found);
void weldEndsAtItsClose(const Steps& steps, Findings& found);
void dryRunStaysDark(const Steps& steps, Findings& found);

}  // namespace workcell::safety
