#pragma once

#include "module/host.h"

#include <QJsonObject>
#include <QString>

namespace lumo {

/// A station's run. The station page keeps one on its stack while the run lasts. It tells the other pages
/// which station and project run. It also keeps the tool set of the project that is open in the editor: the
/// destructor puts that tool set back into the tree and sends it to the robot.
class StationRun {
public:
    StationRun(const QString& station, const QString& project);
    ~StationRun();
    StationRun(const StationRun&) = delete;
    StationRun& operator=(const StationRun&) = delete;

    /// The run under way; null when no station runs.
    [[nodiscard]] static const StationRun* current() { return current_; }

    [[nodiscard]] const QString& station() const { return station_; }
    [[nodiscard]] const QString& project() const { return project_; }
    /// Tool and work object as they were before the run.
    [[nodiscard]] const ModuleObject* toolsetBefore() const { return &before_; }

    /// Puts the tool set of the station's project into `lumo.toolset`. An empty one changes nothing.
    static void useToolset(QObject* sender, const QJsonObject& toolset);

private:
    static const StationRun* current_;

    const QString station_, project_;
    ModuleObject before_;
};

/// The tool set of the project that is open in the editor: `lumo.toolset`; during a station's run the one
/// before it.
[[nodiscard]] const ModuleObject* projectToolset();
/// Sends `lumo.toolset` to the robot.
void sendToolset(QObject* sender);

}  // namespace lumo
