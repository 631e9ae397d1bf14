#include "app/workfolder.h"

#include "app/preferences.h"

#include <QDir>

namespace app {

bool enterWorkFolder(const QString& given, const QString& remembered, QString* lost) {
    if (!given.isEmpty()) {
        return QDir::setCurrent(given);
    }
    if (!remembered.isEmpty()) {
        if (QDir::setCurrent(remembered)) {
            return true;
        }
        *lost = remembered;
    }
    const QString folder = defaultFolder(QDir::currentPath());
    return QDir().mkpath(folder) && QDir::setCurrent(folder);
}

}  // namespace app
