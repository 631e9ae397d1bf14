#pragma once

#include "module/host.h"

#include <QJsonObject>
#include <QString>

namespace lumo {

/// A station's run. The station page makes it on its stack for as long as the run lasts. It tells the other
/// pages which station and project run, and keeps the tool set of the project that is open in the editor:
/// when it ends, that tool set is in the tree and with the robot again.
class StationRun {
public:
    StationRun(const QString& station, const QString& project);
    ~StationRun();
    StationRun(const StationRun&) = delete;
    StationRun& operator=(const StationRun&) = delete;

    /// The station's run that is under way; null when no station runs.
    [[nodiscard]] static const StationRun* current() { return current_; }

    [[nodiscard]] const QString& station() const { return station_; }
    [[nodiscard]] const QString& project() const { return project_; }
    /// Tool and work object as they were before.
    [[nodiscard]] const ModuleObject* toolsetBefore() const { return &before_; }

    /// Puts the project's tool set into `lumo.toolset`. An empty one leaves the tree as it is.
    static void useToolset(QObject* sender, const QJsonObject& toolset);

private:
    static const StationRun* current_;

    const QString station_, project_;
    ModuleObject before_;
};

/// The tool set of the project that is open in the editor: `lumo.toolset`, but while a station's is in
/// force the one before.
[[nodiscard]] const ModuleObject* projectToolset();

}  // namespace lumo
