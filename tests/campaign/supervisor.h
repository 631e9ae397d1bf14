#pragma once

#include "campaign/childprocess.h"
#include "campaign/statistics.h"

#include <QList>
#include <QMap>
#include <QObject>

namespace campaign {

/// A schedule that broke an invariant, or its process.
struct Finding {
    quint64 seed = 0;
    QStringList broken;
};

/// Runs seeds in processes beside each other and gathers what they say. A process that dies does not
/// end the campaign: its seed is a finding and the ones behind it go to the next process. One that ends
/// badly after its last schedule (a leak) has its seeds run again in halves until one is left.
class Supervisor : public QObject {
    Q_OBJECT
public:
    struct Options {
        int jobs = 1;
        int limitMs = 60000;     ///< of the wall clock, for one schedule
        bool keepGoing = false;  ///< else the first finding ends it
        bool twice = false;      ///< each schedule is run again and compared
    };

    Supervisor(const Range& seeds, const Options& options);

    /// Returns when all is done, or at the first finding.
    void run();
    /// In the order of their seeds.
    [[nodiscard]] QList<Finding> findings() const { return findings_.values(); }
    [[nodiscard]] const Statistics& statistics() const { return statistics_; }
    [[nodiscard]] int done() const { return done_; }

signals:
    void found(quint64 seed, const QString& words);

private:
    struct Chunk {
        Range seeds;
        bool counted = false;  ///< they have all ended once, so only the end of the process is news
    };

    void startNext();
    void onOver(ChildProcess* child, const Chunk& chunk);
    void add(const Finding& finding);

    Options options_;
    QList<Chunk> waiting_;
    QList<ChildProcess*> running_;
    QMap<quint64, Finding> findings_;
    Statistics statistics_;
    int done_ = 0;
};

}  // namespace campaign
