#include "fuzz/fuzz.h"

#include "mendo/log.h"
#include "mendo/modulemanager.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QVariant>

#include <algorithm>
#include <map>

namespace fuzz {

namespace {

std::map<QString, Target>& all() {
    static std::map<QString, Target> registered;
    return registered;
}

bool savesAll = false;

bool isNumber(const QVariant& value) {
    return value.type() == QVariant::Double || value.type() == QVariant::LongLong;
}

bool isSameVariant(const QVariant& one, const QVariant& other) {
    if (isNumber(one) && isNumber(other))
        return one.toDouble() == other.toDouble();
    if (one.type() != other.type())
        return false;
    const QVariantList ones = one.toList(), others = other.toList();
    const QVariantMap map = one.toMap(), otherMap = other.toMap();
    if (one.type() == QVariant::List)
        return std::equal(ones.begin(), ones.end(), others.begin(), others.end(), isSameVariant);
    if (one.type() == QVariant::Map)
        return map.keys() == otherMap.keys() &&
               std::equal(map.begin(), map.end(), otherMap.begin(), isSameVariant);
    return one == other;
}

bool makeTree() {
    mendo::LogHub::instance()->setConsole(false);
    m()->regist(m(), "lumo")->loadJson(nullptr, mendo::ModuleManager::readFromJson(":/lumo/lumo.json"));
    return true;
}

}  // namespace

Registered::Registered(const char* name, Target target) {
    all()[name] = target;
}

QStringList targets() {
    QStringList names;
    for (const auto& target : all())
        names << target.first;
    return names;
}

void read(const QString& target, const QByteArray& input) {
    static const bool isMade = makeTree();
    require(isMade && all().count(target) == 1, "the target is known");
    all()[target](input);
    mendo::ModuleManager::purgeRemoved();
    QDir folder;
    for (const QString& name : folder.entryList(QDir::Files | QDir::System | QDir::Hidden))
        folder.remove(name);
}

void write(const QString& name, const QByteArray& content) {
    QFile file(name);
    require(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(content) == content.size(),
            "an input file can be written");
}

void require(bool holds, const char* what) {
    if (!holds)
        qFatal("does not hold: %s", what);
}

bool isSame(const QJsonValue& one, const QJsonValue& other) {
    return isSameVariant(one.toVariant(), other.toVariant());
}

bool isSavedToo(const QByteArray& input) {
    return savesAll || qHash(input, 0) % shareSaved == 0;
}

void saveAll() {
    savesAll = true;
}

}  // namespace fuzz
