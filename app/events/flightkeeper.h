#pragma once

#include "flight/recorder.h"
#include "flight/ringfile.h"

#include <QObject>
#include <QString>

#include <memory>

namespace workcell {
class RunningProject;
}

namespace app {

class NoticeBar;

/// Keeps the panel's flight recorder. Make it before the package is loaded: it has to hear that the process
/// quits before the package does.
class FlightKeeper : public QObject {
    Q_OBJECT
public:
    FlightKeeper(NoticeBar* notices, QObject* parent);
    ~FlightKeeper() override;

    /// Records from now on in the default file, of this size in MiB; 0: not at all. `runMode`: the package's.
    /// A file that cannot be written, or that another panel writes to, is left alone, and the operator told.
    void begin(int sizeMb, const int* runMode, const workcell::RunningProject* project);
    /// The one in the user's data folder.
    static QString defaultFile();

private:
    void onAboutToQuit();
    static QString words(const flight::RingProblem& problem);

    NoticeBar* notices_;
    std::unique_ptr<flight::RingFile> ring_;
    std::unique_ptr<flight::Recorder> recorder_;
};

}  // namespace app
