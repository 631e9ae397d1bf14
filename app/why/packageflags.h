#pragma once

#include <QString>

class QObject;

namespace app {

/// What the package tells besides the tree: flags in its library, and the executor's activity.
struct PackageFlags {
    enum RunMode { ByHand = 0, ByStation = 1, SingleStep = 2 };

    const int* runMode = nullptr;
    const bool* projectOpen = nullptr;
    QObject* executor = nullptr;  ///< with the properties `waiting`, `pendingSteps`, `depth` and `litByHand`

    /// Of the loaded library whose page has been made; what it does not have stays null.
    static PackageFlags find(const QString& libraryFile);

    /// ByHand, an open project, where the package does not tell.
    int mode() const { return runMode ? *runMode : int(ByHand); }
    bool hasProject() const { return !projectOpen || *projectOpen; }
};

}  // namespace app
