#pragma once

#include "campaign/scenario.h"

namespace campaign {

/// The schedule that Scenario::toJson wrote. What is left out has the value of a new Scenario, but an
/// action and its moment have to say their kind. False, and why, when a value is none of those known.
bool scenarioFromJson(const QJsonObject& object, Scenario* scenario, QString* problem);

}  // namespace campaign
