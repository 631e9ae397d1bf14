#pragma once

#include "flight/ringreader.h"

#include <QJsonValue>
#include <QString>

#include <optional>
#include <vector>

namespace flight {

/// A run in a recording: from a start or once trigger, written while nothing ran, to the next one or to the
/// end of the process that recorded.
struct RecordedRun {
    std::size_t first = 0;  ///< position of the trigger's record
    std::size_t end = 0;    ///< behind its last record
    qint64 startMs = 0;     ///< steady clock
    qint64 endMs = 0;       ///< when it became idle, or of the last record
    qint64 wallMs = 0;
    QString project, trigger, version, language;
    int line = 0;    ///< of the trigger, from 0
    int mode = 0;    ///< one of prog::runmode
    int format = 1;  ///< see recordingFormat
    /// "finished", "paused", "power", "error", "refused", "quit", or "cut" where the
    /// recording ends in it.
    QString reason;
    bool isExact = false;      ///< recorded on virtual time
    bool hasState = false;     ///< the whole state at its start is in the recording
    bool isInSession = false;  ///< the same process recorded the run before it
    /// The same process may have recorded runs before the first one that is left of it.
    bool isBeginningLost = false;
};

/// The runs of a recording, oldest first.
std::vector<RecordedRun> runsOf(const Recording& recording);

/// The run from which a run is to be repeated: what the package remembers of a run that was stopped is in no
/// document, so a run that may go on after a stop is repeated from the one that was stopped.
std::size_t firstOfChain(const std::vector<RecordedRun>& runs, std::size_t run);
/// Whether that run may itself go on from one that is no longer in the recording.
bool mayGoOnFromLost(const std::vector<RecordedRun>& runs, std::size_t firstOfChain);

/// A part of the state at the start of a run.
struct SectionContent {
    QString name;  ///< "lumo.program", "kord", "data.register", …
    QJsonValue content;
};
/// All parts; nothing when one is not in the recording any more.
std::optional<std::vector<SectionContent>> stateAt(const Recording& recording, const RecordedRun& run);

}  // namespace flight
