#include "editor/storedstate.h"

#include "equipment/handlit.h"
#include "files/projectfile.h"
#include "module/host.h"
#include "program/words.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

using namespace prog;

namespace lumo {

namespace {

/// The program is compared when it has not changed for this time: comparing a long one is slow.
constexpr int restMs = 300;
constexpr char byteOrderMark[] = "\xEF\xBB\xBF";

QByteArray digestOf(const QJsonDocument& document) {
    return QCryptographicHash::hash(document.toJson(QJsonDocument::Compact), QCryptographicHash::Sha1);
}

}  // namespace

StoredState::StoredState(QObject* parent) : QObject(parent) {
    rest_.setSingleShot(true);
    rest_.setInterval(restMs);
    connect(&rest_, &QTimer::timeout, this, &StoredState::checkAtRest);
    ModuleObject* const toolset = m(key::toolset);
    for (const ModuleObject* node : {toolset, toolset->c(field::end), toolset->c(field::ref)}) {
        connect(node, &ModuleObject::changed, this, &StoredState::touch);
    }
}

void StoredState::setProjectPath(const QString& path) {
    path_ = path;
    base_ = Digest();
    fileTime_ = QDateTime();
    touch();
}

void StoredState::touch() {
    rest_.start();
    emit touched();
}

void StoredState::checkAtRest() {
    if (mustStopAtOnce()) {
        rest_.start();  // comparing a long program takes long
    } else {
        check();
    }
}

void StoredState::check() {
    rest_.stop();
    bool stored = true;
    isEdited_ = false;
    if (!path_.isEmpty()) {
        readFile();
        const Digest tree = digest(projectDocument());
        stored =
            tree.statements == file_.statements && (file_.toolset.isEmpty() || tree.toolset == file_.toolset);
        base_ = stored ? tree : base_;
        isEdited_ = !stored && !(tree == base_);
    }
    setStored(stored);
}

void StoredState::saved() {
    rest_.stop();
    fileTime_ = QDateTime();
    base_ = Digest();  // the next comparison finds it
    isEdited_ = false;
    setStored(true);
}

void StoredState::setStored(bool stored) {
    if (stored != isStored_) {
        isStored_ = stored;
        emit changed();
    }
}

/// Reports no faults: opening the file has reported them.
void StoredState::readFile() {
    const QFileInfo info(path_);
    if (info.lastModified() == fileTime_ && info.size() == fileSize_) {
        return;
    }
    fileTime_ = info.lastModified();
    fileSize_ = info.size();
    file_ = Digest();
    QFile file(path_);
    // Reading a pipe or a device may never end.
    if (info.isFile() && file.open(QIODevice::ReadOnly)) {
        QByteArray content = file.readAll();
        if (content.startsWith(byteOrderMark)) {
            content.remove(0, int(sizeof byteOrderMark) - 1);
        }
        const QJsonDocument document = QJsonDocument::fromJson(content);
        if (document.isArray()) {
            file_ = digest(document.array());
        }
    }
}

StoredState::Digest StoredState::digest(const QJsonValue& document) {
    const std::optional<Project> project = projectFrom(document);
    if (!project) {
        return {};
    }
    return {digestOf(QJsonDocument(project->statements)),
            project->toolset.isEmpty() ? QByteArray() : digestOf(QJsonDocument(project->toolset))};
}

}  // namespace lumo
