#include "mendo/plainfile.h"

#include <QFile>
#include <QFileInfo>

namespace mendo {

std::optional<QByteArray> readPlainFile(const QString& fileName, QString* reason) {
    // Before it is opened: opening a pipe waits for its other end.
    const QFileInfo info(fileName);
    if (info.exists() && !info.isFile() && !info.isDir()) {
        *reason = QStringLiteral("this is no plain file");
        return std::nullopt;
    }
    QFile file(fileName);
    if (file.open(QIODevice::ReadOnly)) {
        QByteArray content = file.readAll();
        if (file.error() == QFileDevice::NoError) {
            return content;
        }
    }
    *reason = file.errorString();
    return std::nullopt;
}

}  // namespace mendo
