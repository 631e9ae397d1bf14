#pragma once

#include "campaign/scenario.h"

namespace campaign {

// The words of a stored schedule for what is chosen from a few, and back; false for an unknown word.

QString nameOf(Action::Kind kind);
QString nameOf(Moment::Kind kind);
QString nameOf(Event::Kind kind);
QString nameOf(Stage stage);
bool fromName(const QString& name, Action::Kind* kind);
bool fromName(const QString& name, Moment::Kind* kind);
bool fromName(const QString& name, Event::Kind* kind);
bool fromName(const QString& name, Stage* stage);
/// The port whose name nameOfPort() gives; -1 for no such name.
int portFromName(const QString& name);

}  // namespace campaign
