#pragma once

#include "mendo/moduleobject.h"

#include <QByteArray>
#include <QJsonValue>
#include <QObject>
#include <QString>

#include <memory>

namespace mendo {

/// The root of the data tree and the host's file service.
class ModuleManager : public QObject {
    Q_OBJECT
public:
    static ModuleManager* instance();

    ModuleObject* root() const;
    /// Returns the top-level node `name`, made if missing. The tree owns it; it outlives `owner`.
    ModuleObject* regist(QObject* owner, const QString& name);

    /// Reads a JSON file or compiled resource, a UTF-8 byte-order mark allowed. A missing file gives
    /// an undefined value in silence (it is the usual first start); one that cannot be read, is no
    /// plain file or does not parse gives an undefined value and is announced by `fileProblem`.
    static QJsonValue readFromJson(const QString& fileName);
    /// Writes the file whole: beside the old one, file and folder synced, renamed over it. An
    /// existing file that does not parse as JSON is kept as NAME.damaged. False and `fileProblem`
    /// when it fails; the old file is then intact. `indented`: for a reader; else compact.
    static bool writeToJson(const QString& fileName, const QJsonValue& value, bool indented);
    /// The same with a text that is ready (see JsonText), for content that is long.
    static bool writeText(const QString& fileName, const QByteArray& text);

    /// How many event loops run when nothing of the host is on the stack: 0 (the default) for
    /// programs that call processEvents themselves, 1 for those inside QCoreApplication::exec().
    /// Removed nodes are deleted when the dispatcher is about to block at that depth or less.
    static void setOutermostLoop(int level);
    /// Deletes the removed nodes now. Only where nothing on the stack can hold one.
    static void purgeRemoved();

signals:
    /// What went wrong with a file: its name as given, line and column from 1 (0 where they mean
    /// nothing) and the reason in plain English.
    void fileProblem(const QString& fileName, int line, int column, const QString& reason);

private:
    ModuleManager();
    std::unique_ptr<ModuleObject> root_;
};

}  // namespace mendo

/// The host's module manager.
mendo::ModuleManager* m();
/// The node at a dotted path, from `node` or, when that is null, from the tree's root.
mendo::ModuleObject* m(const QString& path, mendo::ModuleObject* node = nullptr);
/// Parts joined by "."; empty parts are left out.
QString mName(const QString& a, const QString& b);
QString mName(const QString& a, const QString& b, const QString& c);
/// The path element of a list position: "#3". `text` is appended after it.
QString mIndex(int index, const QString& text = QString());
