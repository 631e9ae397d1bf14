#pragma once

#include "campaign/childprocess.h"

#include <QString>

namespace campaign {

/// What the campaign was asked for.
struct Options {
    Range seeds{1, 2500};
    int jobs = 1;
    int limitMs = 60000;  ///< of the wall clock, for one schedule
    bool verbose = false;
    bool keepGoing = false;
    bool report = false;
    bool twice = false;   ///< each schedule once more, from its JSON: the same has to happen
    bool worker = false;  ///< for a process that watches: each schedule in lines that it reads
    QString keep;         ///< folder for shrunk cases, empty: none are kept
    QString replay;       ///< a case, or a folder of cases, instead of seeds

    /// Schedules run in processes of their own, and this one watches.
    [[nodiscard]] bool watches() const {
        return replay.isEmpty() && !worker && (seeds.count > 1 || !keep.isEmpty());
    }
};

/// The other way round: what a schedule is called, and how to see it once more.
QString onceMore(quint64 seed);

/// Watches over schedules in processes of their own; the program's exit code.
int watch(const Options& options);

}  // namespace campaign
