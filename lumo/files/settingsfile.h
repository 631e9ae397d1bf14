#pragma once

#include "program/words.h"

#include <QString>

class QObject;

using namespace prog;

namespace lumo {

/// The lists of the tree that are stored in files of their own in the working directory.
enum class Settings { Ports, Params, Stations };

/// Names of the files, without the ending, in the order of the enumeration.
constexpr QLatin1String settingsNames[] = {"lumo_port"_l1, "lumo_param"_l1, "lumo_signalsConfig"_l1};

[[nodiscard]] QString settingsFile(Settings list);

/// Reads the file into the tree. A missing file, and one that is no JSON or holds no list of records, leaves
/// the tree as it is. An empty list is stored as "{}".
///
/// Parameter sets and stations replace the list. Of a port only assignment and enable are read, by the
/// position of its row: labels, kinds and the number of ports are the package's. A file whose rows differ
/// from the ports in number or kind is not applied: assignments stay, and all ports are disabled.
///
/// Faults are reported by the host's file service with line and column: those of single records in one
/// report, at the first of them.
void loadSettings(QObject* sender, Settings list);

/// Writes the list, ports without their labels. A file in its place that has faults, or could not be read
/// when it was loaded, is kept as NAME.damaged. False, after a report by the host's file service, when
/// nothing was written.
bool saveSettings(Settings list);

}  // namespace lumo
