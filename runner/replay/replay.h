#pragma once

#include "flight/recorder.h"
#include "flight/runindex.h"
#include "gantu/package.h"
#include "runner/messagewatch.h"
#include "runner/options.h"
#include "runner/replay/comparison.h"
#include "runner/replay/recordedcell.h"
#include "runner/replay/script.h"

#include <QObject>
#include <QStackedWidget>
#include <QTemporaryDir>

#include <memory>

namespace run::replay {

/// Runs the package against a recorded run and says where it decides otherwise. Needs virtual time to be
/// installed.
class Replay : public QObject {
    Q_OBJECT
public:
    explicit Replay(const Options& options);

    /// Returns the exit status: 0 equal, 1 different, 2 nothing to replay.
    int run();

private:
    bool read();
    bool choose();
    int list() const;
    bool openPackage();
    void begin();
    void finish();
    [[nodiscard]] QString heading() const;
    [[nodiscard]] QString notes() const;
    [[nodiscard]] QString resultText() const;
    void restoreState(bool ofPackage);

    Options options_;
    flight::Recording recording_;
    std::vector<flight::RecordedRun> runs_;
    std::size_t first_ = 0, last_ = 0;  ///< positions of the runs that are repeated
    Script script_;
    std::vector<flight::SectionContent> state_;
    QTemporaryDir folder_;
    QStackedWidget stack_;
    std::unique_ptr<gantu::Package> package_;
    int* runMode_ = nullptr;
    std::unique_ptr<MessageWatch> messages_;
    std::unique_ptr<Comparison> comparison_;
    std::unique_ptr<RecordedCell> cell_;
    std::unique_ptr<flight::Recorder> recorder_;
    QTimer stop_;
    qint64 toleranceMs_ = 1;
    int status_ = 0;
    bool isFinished_ = false;
};

}  // namespace run::replay
