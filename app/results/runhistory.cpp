#include "app/results/runhistory.h"

#include "json/jsonfile.h"
#include "mendo/modulemanager.h"

#include <QCoreApplication>
#include <QDir>
#include <QJsonDocument>
#include <QStandardPaths>

#include <algorithm>

namespace app {

namespace {

const QString prefix = QStringLiteral("run-");
const QString ending = QStringLiteral(".json");

/// "run-000042-1234.json": the 42nd run, by the process 1234. Two panels may run at the same time.
QString nameOf(qint64 number) {
    constexpr int digits = 6;
    return QStringLiteral("%1%2-%3%4")
        .arg(prefix, QString::number(number).rightJustified(digits, QLatin1Char('0')),
             QString::number(QCoreApplication::applicationPid()), ending);
}

qint64 numberOf(const QString& file) {
    return file.mid(prefix.size()).section(QLatin1Char('-'), 0, 0).toLongLong();
}

}  // namespace

RunHistory::RunHistory(const QString& folder, QObject* parent) : QObject(parent), folder_(folder) {
    list();
}

QString RunHistory::defaultFolder() {
    return QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation))
        .filePath(QStringLiteral("runs"));
}

/// Newest first. Results that could not be written keep their place.
void RunHistory::list() {
    QVector<Entry> entries;
    for (const Entry& entry : entries_) {
        if (entry.result) {
            entries.append(entry);
        }
    }
    const QStringList files = QDir(folder_).entryList({prefix + QLatin1Char('*') + ending}, QDir::Files);
    for (const QString& file : files) {
        entries.append({numberOf(file), file, nullptr});
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& a, const Entry& b) { return a.number > b.number; });
    entries_ = entries;
}

void RunHistory::refresh() {
    const int before = count();
    const QString newest = before > 0 ? entries_.first().file : QString();
    list();
    if (count() != before || (before > 0 && entries_.first().file != newest)) {
        emit changed(false);
    }
}

std::optional<RunResult> RunHistory::at(int row) const {
    if (row < 0 || row >= count()) {
        return std::nullopt;
    }
    const Entry& entry = entries_[row];
    if (entry.result) {
        return *entry.result;
    }
    mendo::FileProblem ignored;  // the row tells that the file is damaged
    const auto text = mendo::readJsonFile(QDir(folder_).filePath(entry.file), &ignored);
    return text ? RunResult::from(text->value().toObject()) : std::nullopt;
}

QString RunHistory::fileName(int row) const {
    return entries_.value(row).file;
}

void RunHistory::add(const RunResult& result) {
    list();
    Entry entry{count() > 0 ? entries_.first().number + 1 : 1, {}, std::make_shared<RunResult>(result)};
    entries_.prepend(entry);
    writeUnsaved();
    dropOldest();
    emit changed(true);
}

/// From the oldest on, up to the first one that cannot be written.
void RunHistory::writeUnsaved() {
    for (int i = entries_.size() - 1; i >= 0; --i) {
        if (entries_[i].result && !write(&entries_[i])) {
            return;
        }
    }
}

bool RunHistory::write(Entry* entry) {
    const QString name = nameOf(entry->number);
    QDir().mkpath(folder_);  // writing the file tells what is wrong with it
    const QByteArray text = QJsonDocument(entry->result->json()).toJson(QJsonDocument::Compact);
    if (!mendo::ModuleManager::writeText(QDir(folder_).filePath(name), text)) {
        return false;
    }
    entry->file = name;
    entry->result.reset();
    return true;
}

void RunHistory::dropOldest() {
    while (entries_.size() > mostRuns) {
        QFile::remove(QDir(folder_).filePath(entries_.last().file));
        entries_.removeLast();
    }
    int unsaved = 0;
    for (int i = 0; i < entries_.size(); ++i) {
        if (entries_[i].result && ++unsaved > mostUnsaved) {
            entries_.remove(i--);
        }
    }
}

}  // namespace app
