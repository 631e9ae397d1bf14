#pragma once

#include "json/jsontext.h"
#include "mendo/moduleobject.h"

#include <QByteArray>
#include <QJsonValue>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

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
    /// plain file or is no JSON gives an undefined value and is announced by `fileProblem`.
    static QJsonValue readFromJson(const QString& fileName);
    /// As readFromJson(), but the result also tells line and column of its elements; empty for no value.
    static std::optional<JsonText> readJsonText(const QString& fileName);
    /// Writes an array or object whole: beside the old file, file and folder synced, renamed over it. An
    /// existing file that is no JSON, or whose content `isOurs` refuses, is kept as NAME.damaged. False
    /// and `fileProblem` when it fails; the old file is then intact. `indented`: for a reader; else compact.
    static bool writeToJson(const QString& fileName, const QJsonValue& value, bool indented,
                            const std::function<bool(const QJsonValue&)>& isOurs = {});
    /// The same with a text that is ready; see JsonWriter.
    static bool writeText(const QString& fileName, const QByteArray& text,
                          const std::function<bool(const QJsonValue&)>& isOurs = {});

    /// How many event loops run when nothing of the host is on the stack: 0 (the default) for
    /// programs that call processEvents themselves, 1 for those inside QCoreApplication::exec().
    /// Removed nodes are deleted when the dispatcher is about to block at that depth or less.
    static void setOutermostLoop(int level);
    /// Deletes the removed nodes now. Only where nothing on the stack can hold one.
    static void purgeRemoved();

signals:
    /// Something is wrong with a file; also emitted by packages, about what they find in a file.
    void fileProblem(const mendo::FileProblem& problem);

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
