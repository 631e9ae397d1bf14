// The file service of the module manager.

#include "json/jsonfault.h"
#include "mendo/modulemanager.h"
#include "mendo/plainfile.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMetaMethod>
#include <QSaveFile>

#include <fcntl.h>
#include <unistd.h>
#include <cerrno>
#include <cstring>

namespace mendo {

namespace {

struct Problem {
    int line = 0;
    int column = 0;
    QString reason;
};

void announce(const QString& fileName, const Problem& problem) {
    emit ModuleManager::instance()->fileProblem(fileName, problem.line, problem.column, problem.reason);
}

bool fail(const QString& fileName, const QString& reason) {
    announce(fileName, {0, 0, reason});
    return false;
}

QString systemError() {
    return QString::fromLocal8Bit(std::strerror(errno));
}

/// An undefined value, with the place and the reason, for what is no JSON array or object.
QJsonValue parse(const QByteArray& text, Problem* problem) {
    JsonFault fault;
    if (const std::optional<QJsonDocument> document = parseJson(text, &fault)) {
        return document->isArray() ? QJsonValue(document->array()) : QJsonValue(document->object());
    }
    const TextPlace place = placeOf(text, fault.offset);
    *problem = {place.line, place.column, fault.reason};
    return QJsonValue(QJsonValue::Undefined);
}

/// Gives the file a second name that is free: NAME.damaged, NAME.damaged.2, … False when it cannot.
bool keepDamaged(const QString& fileName) {
    constexpr int mostKept = 1000;
    const QString keptName = fileName + QStringLiteral(".damaged");
    const QByteArray source = QFile::encodeName(fileName);
    for (int number = 1; number <= mostKept; ++number) {
        const QString name = number == 1 ? keptName : keptName + QStringLiteral(".%1").arg(number);
        const QByteArray kept = QFile::encodeName(name);
        if (::linkat(AT_FDCWD, source.constData(), AT_FDCWD, kept.constData(), AT_SYMLINK_FOLLOW) == 0) {
            return true;
        }
        if (errno != EEXIST) {
            // A file system without hard links.
            return QFileInfo(fileName).isFile() && QFile::copy(fileName, name);
        }
    }
    return false;
}

/// Whether there is certainly no such file: where that cannot be told, there may be one.
bool isMissing(const QString& fileName) {
    return ::access(QFile::encodeName(fileName).constData(), F_OK) != 0 &&
           (errno == ENOENT || errno == ENOTDIR);
}

bool parses(const QString& fileName) {
    Problem ignored;
    const std::optional<QByteArray> text = readPlainFile(fileName, &ignored.reason);
    return text && !parse(*text, &ignored).isUndefined();
}

bool sync(int descriptor) {
    int result = 0;
    do {
        result = ::fsync(descriptor);
    } while (result != 0 && errno == EINTR);
    return result == 0;
}

/// Makes the entries of a folder durable; false, with the reason in errno, when that fails.
bool syncFolder(const QString& folder) {
    const int descriptor = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) {
        return false;
    }
    // Some file systems have nothing to sync in a folder and say so.
    const bool synced = sync(descriptor) || errno == EINVAL || errno == ENOTSUP;
    const int reason = errno;
    ::close(descriptor);
    errno = reason;
    return synced;
}

}  // namespace

QJsonValue ModuleManager::readFromJson(const QString& fileName) {
    if (!QFile::exists(fileName) && isMissing(fileName)) {
        return QJsonValue(QJsonValue::Undefined);
    }
    Problem problem;
    if (const std::optional<QByteArray> text = readPlainFile(fileName, &problem.reason)) {
        const QJsonValue value = parse(*text, &problem);
        if (!value.isUndefined()) {
            return value;
        }
    }
    announce(fileName, problem);
    return QJsonValue(QJsonValue::Undefined);
}

bool ModuleManager::writeToJson(const QString& fileName, const QJsonValue& value, bool indented) {
    QJsonDocument document;
    if (value.isArray()) {
        document.setArray(value.toArray());
    } else if (value.isObject()) {
        document.setObject(value.toObject());
    } else {
        return fail(fileName, QStringLiteral("only an array or an object can be written"));
    }
    return writeText(fileName, document.toJson(indented ? QJsonDocument::Indented : QJsonDocument::Compact));
}

bool ModuleManager::writeText(const QString& fileName, const QByteArray& text) {
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) {
        return fail(fileName, file.errorString());
    }
    if (file.write(text) != text.size() || !file.flush()) {
        return fail(fileName, file.errorString());
    }
    if (!sync(file.handle())) {
        return fail(fileName, systemError());
    }
    if (!isMissing(fileName) && !parses(fileName) && !keepDamaged(fileName)) {
        return fail(fileName, QStringLiteral("the file in its place is damaged and cannot be kept"));
    }
    if (!file.commit()) {
        return fail(fileName, file.errorString());
    }
    const QFileInfo target(fileName);
    const QString folder =
        QFileInfo(target.isSymLink() ? target.canonicalFilePath() : target.absoluteFilePath()).absolutePath();
    if (!syncFolder(folder)) {
        return fail(fileName, QStringLiteral("the folder could not be synced: ") + systemError());
    }
    return true;
}

}  // namespace mendo
