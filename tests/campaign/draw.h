#pragma once

#include "campaign/random.h"
#include "campaign/scenario.h"

namespace campaign {

/// A moment within a wait, or around its end.
Moment drawWait(Random& random);
/// An action that comes `ms` after the one before it.
Action follower(Action::Kind kind, int ms);
/// Gives a scenario the page, the files and the stations, and weaves in what somebody does there.
void addPage(Scenario& scenario, Random& random);
/// Puts values into programs, parameter sets and stations that no dialog would write.
void makeOdd(Scenario& scenario, Random& random);

}  // namespace campaign
