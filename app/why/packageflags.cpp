#include "app/why/packageflags.h"

#include "mendo/modulemanager.h"

#include <QLibrary>

namespace app {

PackageFlags PackageFlags::find(const QString& libraryFile) {
    PackageFlags flags;
    QLibrary library(libraryFile);
    flags.runMode = reinterpret_cast<const int*>(library.resolve("hand_or_signalbing"));
    flags.projectOpen = reinterpret_cast<const bool*>(library.resolve("isEnable_moveorder"));
    const QObjectList children = m(QStringLiteral("lumo"))->children();
    for (QObject* child : children) {
        if (child->inherits("LumoExecutor")) {
            flags.executor = child;
        }
    }
    return flags;
}

}  // namespace app
