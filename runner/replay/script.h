#pragma once

#include "flight/runindex.h"

#include <vector>

namespace run::replay {

/// What happened to the package in a part of a recording, and what it did.
struct Script {
    /// Something that comes from outside: the cell, a page, a hand.
    struct Input {
        const flight::Record* record;
        std::size_t outputsBefore;  ///< how much the package had done by then
        bool isInCommand;           ///< written before the executor's command returned
    };
    std::vector<Input> inputs;
    std::vector<const flight::Record*> outputs;  ///< commands and writes of the executor
    /// Commands of pages, such as the device page's buttons. They are not repeated; what they change is, in
    /// the cell's answers and in what the tree says of hands.
    int handCommands = 0;
    qint64 startMs = 0;  ///< steady clock of the recording
    qint64 endMs = 0;    ///< the recording, or what belongs to the run, ends then
    qint64 stopMs = 0;   ///< nothing that matters comes later
};

/// The script from the beginning of one run to the end of the same or a later one. The recording must outlive
/// it.
Script scriptOf(const flight::Recording& recording, const flight::RecordedRun& first,
                const flight::RecordedRun& last);

/// What a record says, on one line.
QString textOf(const flight::Record& record);

/// Whether the two say the same, numbers within a millionth.
bool isSame(const flight::Record& a, const flight::Record& b);

}  // namespace run::replay
