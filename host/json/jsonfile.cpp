#include "json/jsonfile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <fcntl.h>
#include <unistd.h>
#include <cerrno>

namespace mendo {

namespace {

using Kind = FileProblem::Kind;

bool fail(FileProblem* problem, const FileProblem::Reason& reason) {
    problem->reasons = {reason};
    return false;
}

/// After a failed operation of QFile or QSaveFile, whose own words are in the panel's language: errno is as
/// the system call left it. It is 0 where QSaveFile made none, because the old file is not writable.
bool failAsErrno(FileProblem* problem) {
    return fail(problem, systemReason(errno ? errno : EACCES));
}

bool readPlainFile(const QString& fileName, QByteArray* content, FileProblem* problem) {
    if (!QFile::exists(fileName) && isMissing(fileName)) {
        return fail(problem, {Kind::NoSuchFile});
    }
    // Before it is opened: opening a pipe waits for its other end.
    const QFileInfo info(fileName);
    if (info.exists() && !info.isFile()) {
        return fail(problem, {info.isDir() ? Kind::IsFolder : Kind::NoPlainFile});
    }
    QFile file(fileName);
    errno = 0;
    if (file.open(QIODevice::ReadOnly)) {
        *content = file.readAll();
        if (file.error() == QFileDevice::NoError) {
            return true;
        }
    }
    return failAsErrno(problem);
}

/// Gives the file a second name that is free. The new content, which is renamed over the first name, leaves
/// it alone. False when it cannot.
bool keepAside(const QString& fileName) {
    constexpr int mostKept = 1000;
    const QString keptName = fileName + QStringLiteral(".damaged");
    const QByteArray source = QFile::encodeName(fileName);
    for (int number = 1; number <= mostKept; ++number) {
        const QString name = number == 1 ? keptName : keptName + QStringLiteral(".%1").arg(number);
        const QByteArray kept = QFile::encodeName(name);
        // Of a link its target, for the link will lead to the new content.
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

/// Whether a file may be replaced without being kept.
bool isReplaceable(const QString& fileName, const std::function<bool(const QJsonValue&)>& isOurs) {
    if (isMissing(fileName)) {
        return true;
    }
    FileProblem ignored;  // the operator was told when the file was opened
    const std::optional<JsonText> text = readJsonFile(fileName, &ignored);
    return text && (!isOurs || isOurs(text->value()));
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

bool isMissing(const QString& fileName) {
    return ::access(QFile::encodeName(fileName).constData(), F_OK) != 0 &&
           (errno == ENOENT || errno == ENOTDIR);
}

std::optional<JsonText> readJsonFile(const QString& fileName, FileProblem* problem,
                                     JsonText::Reading reading) {
    *problem = {fileName, {}, {}};
    QByteArray content;
    return readPlainFile(fileName, &content, problem) ? JsonText::parse(content, problem, reading)
                                                      : std::nullopt;
}

bool writeFile(const QString& fileName, const QByteArray& content,
               const std::function<bool(const QJsonValue&)>& isOurs, FileProblem* problem) {
    *problem = {fileName, {}, {}};
    if (QFileInfo(fileName).isDir()) {
        return fail(problem, {Kind::IsFolder});
    }
    QSaveFile file(fileName);
    errno = 0;
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.flush() ||
        !sync(file.handle())) {
        return failAsErrno(problem);
    }
    if (!isReplaceable(fileName, isOurs) && !keepAside(fileName)) {
        return fail(problem, {Kind::CannotKeep});
    }
    errno = 0;
    if (!file.commit()) {
        return failAsErrno(problem);
    }
    const QFileInfo target(fileName);
    const QString folder =
        QFileInfo(target.isSymLink() ? target.canonicalFilePath() : target.absoluteFilePath()).absolutePath();
    if (!syncFolder(folder)) {
        problem->reasons = {{Kind::FolderNotSynced}, systemReason(errno)};
        return false;
    }
    return true;
}

}  // namespace mendo
