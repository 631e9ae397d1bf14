#include "app/parts/partcounter.h"

#include "mendo/clock.h"
#include "mendo/modulemanager.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QStandardPaths>

#include <algorithm>

namespace app {

namespace {

const QString madeKey = QStringLiteral("made");
const QString targetKey = QStringLiteral("target");
const QString lastKey = QStringLiteral("last_ms");
const QString totalKey = QStringLiteral("total_ms");
const QString carriedKey = QStringLiteral("carried_ms");
const QString usedKey = QStringLiteral("used");

/// Numbers that no panel has written count as 0.
qint64 positive(const QJsonValue& value) {
    constexpr double most = 1e15;
    const double number = value.toDouble();
    return number > 0 && number < most ? qint64(number) : 0;
}

PartCount countFrom(const QJsonObject& json) {
    constexpr qint64 most = 1000000000;
    PartCount count;
    count.made = int(std::min(most, positive(json[madeKey])));
    count.target = int(std::min<qint64>(PartCounter::mostTarget, positive(json[targetKey])));
    count.lastMs = positive(json[lastKey]);
    count.totalMs = positive(json[totalKey]);
    count.carriedMs = positive(json[carriedKey]);
    count.used = QDateTime::fromString(json[usedKey].toString(), Qt::ISODate);
    return count;
}

QJsonObject jsonOf(const PartCount& count) {
    return {{madeKey, count.made},         {targetKey, count.target},
            {lastKey, count.lastMs},       {totalKey, count.totalMs},
            {carriedKey, count.carriedMs}, {usedKey, count.used.toString(Qt::ISODate)}};
}

}  // namespace

QString PartCount::figure() const {
    return target > 0 ? QStringLiteral("%1 / %2").arg(made).arg(target) : QString::number(made);
}

PartCounter::PartCounter(const QString& file, QObject* parent) : QObject(parent), file_(file) {}

QString PartCounter::defaultFile() {
    return QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation))
        .filePath(QStringLiteral("parts.json"));
}

PartCount PartCounter::of(const QString& project) const {
    if (!isRead_) {
        read();
    }
    return counts_.value(project);
}

void PartCounter::read() const {
    isRead_ = true;
    const QJsonValue value = mendo::ModuleManager::readFromJson(file_);
    if (!value.isObject()) {
        return;  // a damaged file is told, and kept when it is written
    }
    counts_.clear();
    const QJsonObject projects = value.toObject();
    for (auto project = projects.begin(); project != projects.end(); ++project) {
        counts_.insert(project.key(), countFrom(project.value().toObject()));
    }
}

PartCount& PartCounter::entry(const QString& project) {
    read();
    PartCount& count = counts_[project];
    count.used = mendo::Clock::current().now();
    return count;
}

/// Without the projects that were not used for the longest time.
void PartCounter::write() {
    while (counts_.size() > mostProjects) {
        const auto oldest = std::min_element(counts_.begin(), counts_.end(),
                                             [](const auto& a, const auto& b) { return a.used < b.used; });
        counts_.erase(oldest);
    }
    QJsonObject projects;
    for (auto count = counts_.constBegin(); count != counts_.constEnd(); ++count) {
        projects.insert(count.key(), jsonOf(*count));
    }
    QDir().mkpath(QFileInfo(file_).absolutePath());  // writing the file tells what is wrong with it
    mendo::ModuleManager::writeText(file_, QJsonDocument(projects).toJson());
    emit changed();
}

void PartCounter::addRun(const QString& project, qint64 ms, bool begins, bool finishes) {
    PartCount& count = entry(project);
    count.carriedMs = (begins ? 0 : count.carriedMs) + ms;
    if (finishes) {
        ++count.made;
        count.lastMs = count.carriedMs;
        count.totalMs += count.carriedMs;
        count.carriedMs = 0;
    }
    const bool isReached = finishes && count.target > 0 && count.made == count.target;
    const int target = count.target;
    write();
    if (isReached) {
        emit targetReached(project, target);
    }
}

void PartCounter::setTarget(const QString& project, int target) {
    entry(project).target = qBound(0, target, mostTarget);
    write();
}

void PartCounter::reset(const QString& project) {
    PartCount& count = entry(project);
    const int target = count.target;
    count = PartCount();
    count.target = target;
    count.used = mendo::Clock::current().now();
    write();
}

}  // namespace app
