#include "runner/recorder.h"

#include "mendo/clock.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"
#include "simulator/cell.h"

#include <QFileInfo>
#include <QMetaEnum>

namespace run {

using sim::Controller;

namespace {

const QString nameKey = QStringLiteral("name");
const QString valueKey = QStringLiteral("value");
const QString pathKey = QStringLiteral("path");
const QString reasonKey = QStringLiteral("reason");
const QString titleKey = QStringLiteral("title");
const QString textKey = QStringLiteral("text");

template <class Numbers>
void writeNumbers(JsonWriter& line, const Numbers& numbers) {
    line.beginArray();
    for (const double number : numbers) {
        line.number(number);
    }
    line.endArray();
}

QString senderWord(const QObject* sender) {
    if (!sender) {
        return QStringLiteral("none");
    }
    return sender->inherits("LumoExecutor") ? QStringLiteral("executor") : QStringLiteral("panel");
}

}  // namespace

Recorder::Recorder(Trace* trace, workcell::TreeFollower* follower, QObject* parent)
    : QObject(parent), trace_(trace) {
    connect(kordservice(), &KordService::issued, this, &Recorder::onIssued);
    connect(kordservice(), &KordService::handed, this, &Recorder::onHanded);
    connect(follower, &workcell::TreeFollower::changed, this, &Recorder::onChanged);
    connect(mendo::LogHub::instance(), &mendo::LogHub::line, this, &Recorder::onLog);
    connect(m(), &mendo::ModuleManager::fileProblem, this, &Recorder::onFileProblem);
}

void Recorder::attach(Controller* controller, bool posture) {
    connect(controller, &Controller::outputChanged, this, &Recorder::onOutput);
    connect(controller, &Controller::rejected, this, &Recorder::onRejected);
    connect(controller, &Controller::inputChanged, this, &Recorder::onInput);
    connect(controller, &Controller::motion, this, &Recorder::onMotion);
    connect(controller, &Controller::result, this, &Recorder::onResult);
    if (!posture) {
        return;
    }
    robot_ = controller;
    connect(controller, &Controller::postureMoved, this, &Recorder::onPosture);
    connect(controller, &Controller::cameToRest, this, &Recorder::onPosture);
}

void Recorder::attachCell(sim::Cell* cell) {
    if (robot_) {
        connect(cell, &sim::Cell::emittingChanged, this, &Recorder::onPosture);
    }
}

void Recorder::onIssued(const KordCall& call) {
    if (!recording_) {
        return;
    }
    JsonWriter& line = trace_->begin("command");
    line.key(nameKey).string(call.name);
    line.key(QStringLiteral("call"))
        .string(call.exec ? QStringLiteral("execCommand") : QStringLiteral("command"));
    line.key(QStringLiteral("sender")).string(senderWord(call.sender));
    line.key(QStringLiteral("args"));
    if (call.node) {
        line.node(call.node);
    } else {
        line.variant(call.value);
    }
    trace_->end();
}

void Recorder::onHanded(const QString& path, const mendo::ModuleObject* node) {
    if (!recording_) {
        return;
    }
    trace_->begin("set").key(pathKey).string(path).key(valueKey).node(node);
    trace_->end();
}

void Recorder::onChanged(const workcell::Change& change) {
    if (!recording_) {
        return;
    }
    JsonWriter& line = trace_->begin("changed");
    line.key(pathKey).string(change.path).key(valueKey);
    if (change.value.isValid()) {
        line.variant(change.value);
    } else {
        line.node(change.node);
    }
    line.key(QStringLiteral("old")).variant(change.oldValue);
    trace_->end();
}

void Recorder::onOutput(const QString& name, const QVariant& value) {
    if (!recording_) {
        return;
    }
    trace_->begin("output").key(nameKey).string(name).key(valueKey).variant(value);
    trace_->end();
}

void Recorder::onRejected(const QString& name, const QString& reason) {
    if (!recording_) {
        return;
    }
    trace_->begin("rejected").key(nameKey).string(name).key(reasonKey).string(reason);
    trace_->end();
}

void Recorder::onInput(const QString& name, bool value) {
    if (!recording_) {
        return;
    }
    trace_->begin("input").key(nameKey).string(name).key(valueKey).boolean(value);
    trace_->end();
}

void Recorder::onMotion(int id, Controller::MotionEvent event) {
    if (!recording_) {
        return;
    }
    const QString word = QLatin1String(QMetaEnum::fromType<Controller::MotionEvent>().valueToKey(int(event)));
    trace_->begin("motion").key(QStringLiteral("id")).integer(id);
    trace_->line().key(QStringLiteral("event")).string(word.toLower());
    trace_->end();
}

void Recorder::onResult(const QString& command, int id, int code) {
    if (!recording_) {
        return;
    }
    if (robot_) {
        onPosture();
    }
    trace_->begin("result").key(nameKey).string(command);
    trace_->line().key(QStringLiteral("id")).integer(id).key(QStringLiteral("code")).integer(code);
    trace_->end();
}

void Recorder::onPosture() {
    if (!recording_) {
        return;
    }
    const sim::MotionPlan::Posture stand = robot_->posture();
    JsonWriter posture;
    posture.beginArray().integer(mendo::Clock::current().elapsedMs());
    writeNumbers(posture, stand.pose.trans);
    writeNumbers(posture, stand.pose.rot);
    writeNumbers(posture, stand.joints);
    const QByteArray text = posture.endArray().take();
    if (text == lastPosture_) {
        return;  // the posture was recorded at this time already
    }
    lastPosture_ = text;
    JsonWriter& line = trace_->begin("posture");
    writeNumbers(line.key(QStringLiteral("trans")), stand.pose.trans);
    writeNumbers(line.key(QStringLiteral("rot")), stand.pose.rot);
    writeNumbers(line.key(QStringLiteral("near")), stand.joints);
    trace_->end();
}

void Recorder::message(const QString& icon, const QString& title, const QString& text) {
    if (!recording_) {
        return;
    }
    trace_->begin("message").key(QStringLiteral("icon")).string(icon);
    trace_->line().key(titleKey).string(title).key(textKey).string(text);
    trace_->end();
}

void Recorder::answer(const QString& title, const QString& answer) {
    if (!recording_) {
        return;
    }
    trace_->begin("answer").key(titleKey).string(title).key(QStringLiteral("answer")).string(answer);
    trace_->end();
}

void Recorder::station(int row, const QString& state) {
    if (!recording_) {
        return;
    }
    trace_->begin("station").key(QStringLiteral("row")).integer(row);
    trace_->line().key(QStringLiteral("state")).string(state);
    trace_->end();
}

void Recorder::scenarioEntry(const QByteArray& entry, bool refused) {
    if (!recording_) {
        return;
    }
    trace_->begin("event").key(QStringLiteral("action")).raw(entry);
    if (refused) {
        trace_->line().key(QStringLiteral("refused")).boolean(true);
    }
    trace_->end();
}

void Recorder::onLog(const QString& level, const QString& text) {
    if (!recording_) {
        return;
    }
    trace_->begin("log").key(QStringLiteral("level")).string(level).key(textKey).string(text);
    trace_->end();
}

void Recorder::onFileProblem(const mendo::FileProblem& problem) {
    if (!recording_) {
        return;
    }
    const auto& [line, column] = problem.place;
    const QString place =
        line > 0 ? QStringLiteral(" (line %1, column %2)").arg(line).arg(column) : QString();
    trace_->begin("file").key(nameKey).string(QFileInfo(problem.file).fileName());
    trace_->line().key(reasonKey).string(problem.text() + place);
    trace_->end();
}

}  // namespace run
