#include "flight/runindex.h"

#include "program/words.h"

#include <QJsonObject>

#include <algorithm>

namespace flight {

using By = Record::By;
using Kind = Record::Kind;
using Tree = Record::Tree;

namespace {

const QString finished = QStringLiteral("finished");

QString pathOf(const QJsonObject& body) {
    return body.value(QStringLiteral("p")).toString();
}

/// The record with a number; null when it was replaced.
const Record* find(const Recording& recording, quint64 number) {
    const auto found =
        std::lower_bound(recording.records.begin(), recording.records.end(), number,
                         [](const Record& record, quint64 wanted) { return record.number < wanted; });
    return found != recording.records.end() && found->number == number ? &*found : nullptr;
}

/// How a run ends, from its records in their order; workcell::RunWatch says the same of a run under way.
class Ending {
public:
    void take(const Record& record) {
        if (record.kind == Kind::Posture || record.kind == Kind::Section) {
            return;
        }
        if (record.kind == Kind::Quitting) {
            end(QStringLiteral("quit"));
        }
        const QJsonObject body = record.object();
        const QString path = pathOf(body);
        const QString text = body.value(QStringLiteral("v")).toString();
        if (record.tree == Tree::Results) {
            onRobot(record, body, path);
        } else if (path == prog::key::executeState) {
            onState(record, text);
        } else if (path == prog::key::triggerPause) {
            end(QStringLiteral("paused"));
        } else if (path == prog::key::robotPower && text != prog::word::on) {
            end(QStringLiteral("power"));
        } else if (path == prog::key::currentPausePoint && record.by == By::Executor) {
            end(QStringLiteral("error"));
        }
    }
    QString reason() const { return isRunning_ && reason_ == finished ? QStringLiteral("cut") : reason_; }
    qint64 idleMs() const { return idleMs_; }

private:
    void end(const QString& reason) {
        if (isRunning_ && reason_ == finished) {
            reason_ = reason;
        }
    }
    void onRobot(const Record& record, const QJsonObject& body, const QString& path) {
        const bool isStop = record.kind == Kind::Command &&
                            body.value(QStringLiteral("name")).toString() == prog::command::stop;
        const bool isFailure = record.kind == Kind::Value && path.startsWith(QLatin1String("move.")) &&
                               body.value(QStringLiteral("v")).toInt() < 0;
        if (isStop || isFailure) {
            end(QStringLiteral("error"));
        }
    }
    void onState(const Record& record, const QString& state) {
        const bool isBusy = state == prog::word::busy;
        if (record.by == By::Executor && isBusy) {
            isRunning_ = true;
            reason_ = finished;
        } else if (record.by == By::Executor) {
            isRunning_ = false;
            idleMs_ = record.ms;
        } else if (!isBusy) {
            end(QStringLiteral("error"));
        }
    }

    bool isRunning_ = false;
    QString reason_ = QStringLiteral("refused");
    qint64 idleMs_ = -1;
};

RecordedRun begunBy(const Recording& recording, std::size_t position) {
    const Record& record = recording.records[position];
    const QJsonObject body = record.object();
    RecordedRun run;
    run.first = position;
    run.startMs = record.ms;
    run.wallMs = record.wallMs;
    run.project = body.value(QStringLiteral("project")).toString();
    run.trigger = body.value(QStringLiteral("trigger")).toString();
    run.version = body.value(QStringLiteral("version")).toString();
    run.language = body.value(QStringLiteral("language")).toString();
    run.line = body.value(QStringLiteral("v")).toInt();
    run.mode = body.value(QStringLiteral("mode")).toInt();
    run.isExact = body.value(QStringLiteral("exact")).toBool();
    run.format = body.value(QStringLiteral("format")).toInt(1);
    const QJsonObject sections = body.value(QStringLiteral("sections")).toObject();
    run.hasState = std::all_of(sections.begin(), sections.end(), [&recording](const QJsonValue& number) {
        return find(recording, quint64(number.toDouble()));
    });
    run.hasState = run.hasState && sections.contains(prog::key::program);
    return run;
}

bool beginsRun(const Record& record) {
    return record.kind == Kind::Run && record.object().value(QStringLiteral("idle")).toBool();
}

/// Reads the run's records up to the next run or process.
void complete(const Recording& recording, RecordedRun* run) {
    Ending ending;
    std::size_t at = run->first + 1;
    for (; at < recording.records.size(); ++at) {
        const Record& record = recording.records[at];
        if (record.kind == Kind::Opened || beginsRun(record)) {
            break;
        }
        ending.take(record);
    }
    run->end = at;
    run->reason = ending.reason();
    run->endMs = ending.idleMs() >= 0 ? ending.idleMs() : recording.records[at - 1].ms;
}

/// Whether a run may go on from the one before it. A step between a stop and the run that goes on changes
/// nothing about the stop.
bool mayGoOn(const std::vector<RecordedRun>& runs, std::size_t run) {
    return run > 0 && runs[run].isInSession &&
           (runs[run - 1].reason != finished || runs[run - 1].trigger == QLatin1String("once"));
}

}  // namespace

std::vector<RecordedRun> runsOf(const Recording& recording) {
    std::vector<RecordedRun> runs;
    bool isInSession = false;
    bool isBeginningLost = true;
    for (std::size_t at = 0; at < recording.records.size();) {
        const Record& record = recording.records[at];
        if (beginsRun(record)) {
            runs.push_back(begunBy(recording, at));
            runs.back().isInSession = isInSession;
            runs.back().isBeginningLost = isBeginningLost;
            complete(recording, &runs.back());
            isInSession = true;
            at = runs.back().end;
            continue;
        }
        isInSession = isInSession && record.kind != Kind::Opened;
        isBeginningLost = isBeginningLost && record.kind != Kind::Opened;
        ++at;
    }
    return runs;
}

std::size_t firstOfChain(const std::vector<RecordedRun>& runs, std::size_t run) {
    while (mayGoOn(runs, run) && runs[run - 1].hasState) {
        --run;
    }
    return run;
}

bool mayGoOnFromLost(const std::vector<RecordedRun>& runs, std::size_t firstOfChain) {
    return mayGoOn(runs, firstOfChain) ||
           (!runs[firstOfChain].isInSession && runs[firstOfChain].isBeginningLost);
}

std::optional<std::vector<SectionContent>> stateAt(const Recording& recording, const RecordedRun& run) {
    const QJsonObject sections =
        recording.records[run.first].object().value(QStringLiteral("sections")).toObject();
    std::vector<SectionContent> state;
    for (auto section = sections.begin(); section != sections.end(); ++section) {
        const Record* const record = find(recording, quint64(section.value().toDouble()));
        if (!record) {
            return std::nullopt;
        }
        state.push_back({section.key(), record->object().value(QStringLiteral("content"))});
    }
    return state.empty() ? std::nullopt : std::make_optional(state);
}

}  // namespace flight
