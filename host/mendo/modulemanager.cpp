#include "mendo/modulemanager.h"

#include "json/jsonfile.h"
#include "mendo/deferreddeletion.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace mendo {

ModuleManager::ModuleManager() : root_(std::make_unique<ModuleObject>()) {}

ModuleManager* ModuleManager::instance() {
    // Never destroyed: packages keep nodes of the tree until the process ends.
    static auto* manager = new ModuleManager;
    return manager;
}

ModuleObject* ModuleManager::root() const {
    return root_.get();
}

ModuleObject* ModuleManager::regist(QObject* owner, const QString& name) {
    return root_->hasCmobj(name) ? root_->c(name) : root_->append(owner, name);
}

std::optional<JsonText> ModuleManager::readJsonText(const QString& fileName) {
    FileProblem problem;
    std::optional<JsonText> text = readJsonFile(fileName, &problem);
    if (!text && problem.reasons.first().kind != FileProblem::Kind::NoSuchFile) {
        emit instance()->fileProblem(problem);
    }
    return text;
}

QJsonValue ModuleManager::readFromJson(const QString& fileName) {
    const std::optional<JsonText> text = readJsonText(fileName);
    return text ? text->value() : QJsonValue(QJsonValue::Undefined);
}

bool ModuleManager::writeToJson(const QString& fileName, const QJsonValue& value, bool indented,
                                const std::function<bool(const QJsonValue&)>& isOurs) {
    const QJsonDocument document =
        value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    if (!value.isArray() && !value.isObject()) {
        emit instance()->fileProblem({fileName, {}, {{FileProblem::Kind::NoContainer}}});
        return false;
    }
    return writeText(fileName, document.toJson(indented ? QJsonDocument::Indented : QJsonDocument::Compact),
                     isOurs);
}

bool ModuleManager::writeText(const QString& fileName, const QByteArray& text,
                              const std::function<bool(const QJsonValue&)>& isOurs) {
    FileProblem problem;
    const bool written = writeFile(fileName, text, isOurs, &problem);
    if (!written) {
        emit instance()->fileProblem(problem);
    }
    return written;
}

void ModuleManager::setOutermostLoop(int level) {
    DeferredDeletion::instance().setOutermostLoop(level);
}

void ModuleManager::purgeRemoved() {
    DeferredDeletion::instance().deleteAll();
}

}  // namespace mendo

mendo::ModuleManager* m() {
    return mendo::ModuleManager::instance();
}

mendo::ModuleObject* m(const QString& path, mendo::ModuleObject* node) {
    return (node ? node : m()->root())->r(path);
}

QString mName(const QString& a, const QString& b) {
    return mName(a, b, QString());
}

QString mName(const QString& a, const QString& b, const QString& c) {
    QString joined = a;
    for (const QString& part : {b, c}) {
        if (!part.isEmpty()) {
            joined += joined.isEmpty() ? part : QLatin1Char('.') + part;
        }
    }
    return joined;
}

QString mIndex(int index, const QString& text) {
    constexpr int kept = 64;
    // Never destroyed: lookups go on until the process ends.
    static const QStringList& names = *new QStringList([] {
        QStringList made;
        for (int i = 0; i < kept; ++i) {
            made.append(QLatin1Char('#') + QString::number(i));
        }
        return made;
    }());
    const QString name =
        index >= 0 && index < kept ? names.at(index) : QLatin1Char('#') + QString::number(index);
    return text.isEmpty() ? name : name + text;
}
