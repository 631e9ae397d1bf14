#include "module/keptfile.h"

#include "module/host.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace lumo {

namespace {

/// The file's content, undefined where there is nothing to lose. Read without a report: of a damaged
/// file, which the host keeps, the operator heard when it was opened.
QJsonValue contentOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return QJsonValue(QJsonValue::Undefined);
    }
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    if (document.isEmpty()) {
        return QJsonValue(QJsonValue::Undefined);
    }
    return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
}

/// Copies the file to a name that is free: NAME.damaged, NAME.damaged.2, …
bool keepAside(const QString& path) {
    constexpr int mostKept = 1000;
    QString kept = path + QLatin1String(".damaged");
    for (int number = 2; QFileInfo::exists(kept) && number <= mostKept; ++number) {
        kept = path + QStringLiteral(".damaged.%1").arg(number);
    }
    return QFile::copy(path, kept);
}

}  // namespace

bool writeKeeping(const QString& path, const QJsonValue& content,
                  const std::function<bool(const QJsonValue&)>& isOurs) {
    const QJsonValue old = contentOf(path);
    if (!old.isUndefined() && !isOurs(old) && !keepAside(path)) {
        emit m()->fileProblem(path, 0, 0,
                              QStringLiteral("the file in its place holds something else and cannot be kept"));
        return false;
    }
    return mendo::ModuleManager::writeToJson(path, content, true);
}

}  // namespace lumo
