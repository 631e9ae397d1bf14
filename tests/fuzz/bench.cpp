#include "fuzz/bench.h"

#include "fuzz/memorymeter.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QVariant>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace fuzz {

namespace {

int argumentCount = 1;
char programName[] = "fuzz";
char* arguments[] = {programName, nullptr};

bool allChosen = false;

void swallow(QtMsgType, const QMessageLogContext&, const QString&) {}

/// In memory where the system has such a folder: every input is written.
QString folderTemplate() {
    const QDir memory(QStringLiteral("/dev/shm"));
    return (memory.exists() ? memory : QDir::temp()).filePath(QStringLiteral("fuzz-XXXXXX"));
}

std::int64_t threadNs() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::int64_t(time.tv_sec) * 1000000000 + time.tv_nsec;
}

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

}  // namespace

Bench::Bench() : folder_(folderTemplate()), application_(argumentCount, arguments) {
    qInstallMessageHandler(swallow);
    mendo::LogHub::instance()->setConsole(false);
    require(folder_.isValid() && QDir::setCurrent(folder_.path()), "a folder to work in");
    renewTree();
}

void Bench::write(const QString& name, const QByteArray& content) const {
    files_.put(name, content);
}

void Bench::renewTree() const {
    mendo::ModuleObject* const root = m()->regist(m(), QStringLiteral("lumo"));
    root->loadJson(nullptr, mendo::ModuleManager::readFromJson(QStringLiteral(":/lumo/lumo.json")));
    mendo::ModuleManager::purgeRemoved();
}

void Bench::moveToDisk() const {
    const QHash<QString, QByteArray> files = files_.takeAll();
    for (auto file = files.begin(); file != files.end(); ++file) {
        QFile out(file.key());
        require(out.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && out.write(*file) == file->size(),
                "an input file can be written");
    }
}

void Bench::clearDisk() const {
    QDir folder;
    for (const QString& name : folder.entryList(QDir::Files | QDir::System | QDir::Hidden))
        folder.remove(name);
}

Budget::Budget(std::size_t inputBytes) : inputBytes_(inputBytes), beganNs_(threadNs()) {
    constexpr std::size_t baseBytes = 1024 * 1024;
    constexpr std::size_t timesInput = 200;
    MemoryMeter::begin(baseBytes + timesInput * inputBytes);
}

Budget::~Budget() {
    constexpr std::int64_t mostNs = 1000000000;
    MemoryMeter::end(inputBytes_);
    require(threadNs() - beganNs_ < mostNs, "an input is read within a second");
}

void require(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", what);
        std::abort();
    }
}

bool isSame(const QJsonValue& one, const QJsonValue& other) {
    return isSameVariant(one.toVariant(), other.toVariant());
}

void chooseAll() {
    allChosen = true;
}

bool isChosen(const QByteArray& input, unsigned share) {
    return allChosen || qHash(input, 0) % share == 0;
}

}  // namespace fuzz
