#include "files/keptfile.h"

#include "module/host.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <filesystem>
#include <string>
#include <system_error>

namespace lumo {

namespace {

/// Whether the file may hold something that `isOurs` refuses; one that cannot be read may. Read without
/// a report: of a damaged file, which the host keeps, the operator heard when it was opened.
bool mayHoldOther(const QString& path, const std::function<bool(const QJsonValue&)>& isOurs) {
    QFile file(path);
    // A pipe or a device may never end: what it holds is not asked.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        return isThere(path);
    }
    const QByteArray text = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        return true;
    }
    const QJsonDocument document = QJsonDocument::fromJson(text);
    if (document.isEmpty()) {
        return false;
    }
    return !isOurs(document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object()));
}

/// Gives the file a second name that is free: NAME.damaged, NAME.damaged.2, … The new content, which is
/// renamed over the first, leaves it alone. False when it cannot.
bool keepAside(const QString& path) {
    constexpr int mostKept = 1000;
    // The file itself: a link would go on to the new content.
    const std::string source = QFile::encodeName(QFileInfo(path).canonicalFilePath()).toStdString();
    for (int number = 1; number <= mostKept; ++number) {
        const QString kept =
            path + (number == 1 ? QStringLiteral(".damaged") : QStringLiteral(".damaged.%1").arg(number));
        std::error_code error;
        std::filesystem::create_hard_link(source, QFile::encodeName(kept).toStdString(), error);
        if (!error) {
            return true;
        }
        if (error != std::errc::file_exists) {
            // A file system without hard links.
            return QFileInfo(path).isFile() && QFile::copy(path, kept);
        }
    }
    return false;
}

/// Whether new content may come in the file's place: what it holds is kept where it is not ours.
bool makeWay(const QString& path, const std::function<bool(const QJsonValue&)>& isOurs) {
    if (mayHoldOther(path, isOurs) && !keepAside(path)) {
        emit m()->fileProblem(
            path, 0, 0, QStringLiteral("the file in its place holds something else and cannot be kept"));
        return false;
    }
    return true;
}

}  // namespace

bool isThere(const QString& path) {
    std::error_code error;
    const auto status = std::filesystem::status(QFile::encodeName(path).toStdString(), error);
    return status.type() != std::filesystem::file_type::not_found;
}

bool writeKeeping(const QString& path, const QJsonValue& content,
                  const std::function<bool(const QJsonValue&)>& isOurs) {
    return makeWay(path, isOurs) && mendo::ModuleManager::writeToJson(path, content, true);
}

bool writeKeeping(const QString& path, const QByteArray& text,
                  const std::function<bool(const QJsonValue&)>& isOurs) {
    return makeWay(path, isOurs) && mendo::ModuleManager::writeText(path, text);
}

}  // namespace lumo
