#pragma once

#include "program/words.h"

#include <QString>

class QObject;

using namespace prog;

namespace lumo {

/// The lists of the tree that have a file of their own in the working directory.
enum class Settings { Ports, Params, Stations };

/// Their files, without the ending; in the order of the enumeration.
constexpr QLatin1String settingsNames[] = {"lumo_port"_l1, "lumo_param"_l1, "lumo_signalsConfig"_l1};

[[nodiscard]] QString settingsFile(Settings list);

/// Takes the file's records over into the tree. Those of the ports go by position into the default
/// rows, assignment and enable only, so that labels, kinds and the number of ports stay the package's
/// own whatever the file holds; the others replace the list. An empty list is stored as "{}". A missing
/// file, and one that does not parse or holds no list of records, leaves the tree as it is.
///
/// A file of the ports whose rows are not the ports' in number and kind is not applied: assignments stay,
/// and no port is in use.
///
/// What is wrong with the file is reported by the host's file service, with line and column: records
/// that could not be read as they are in one report, at the first of them.
void loadSettings(QObject* sender, Settings list);

/// Writes the list, ports without their labels. A file in its place with which something is wrong, or
/// which could not be read before, is kept as NAME.damaged. False, after a report of the host's file service,
/// when nothing was written.
bool saveSettings(Settings list);

}  // namespace lumo
