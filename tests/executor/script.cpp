#include "executor/script.h"

namespace test {

namespace {

const std::map<QString, QString> nodes{{"inForce", "lumo.cur_param"},
                                       {"weld", "lumo.allWeldBtnstatus.weldbtn"},
                                       {"power", "kord.r.power"},
                                       {"mode", "kord.r.mode"}};

}  // namespace

Script::Script() {
    verbs = {
        {"run", [this](const Words& w) { bench.run(w.value(0).toInt()); }},
        {"station",
         [this](const Words& w) {
             m("lumo")->append(this, "signalbind_program")->copyFrom(this, m("lumo.program"));
             bench.run(w[0].toInt(), 1);
         }},
        {"once", [this](const Words& w) { bench.once(w[0].toInt()); }},
        {"trigger", [](const Words& w) { ExecutorBench::trigger(w[0], w[1].toInt()); }},
        {"begin", [this](const Words&) { bench.begin(); }},  // without a run
        {"pause", [](const Words&) { ExecutorBench::pause(); }},
        {"wait", [this](const Words& w) { bench.time.advance(w[0].toInt()); }},
        {"settle", [this](const Words&) { bench.waitUntilIdle(); }},
        {"set", [this](const Words& w) { bench.setParam(qPrintable(w[0]), w[1].toDouble()); }},
        {"result", [](const Words& w) { ScriptedRobot::answer("move.l", w[0].toInt()); }},
        {"lead", [this](const Words& w) { bench.robot.zoneLeadMs = w[0].toInt(); }},
        {"lose", [this](const Words&) { kordservice()->command(this, "move.stop", QVariant()); }},
        {"input", [this](const Words&) { kordservice()->dataNode("device.io")->set(this, "DI.DI1", true); }},
        {"replace", [this](const Words&) { bench.load("setDO DO9"); }},
        {"enable", [](const Words& w) { m("lumo.program")->c(w[0].toInt())->set(nullptr, "execute", true); }},
        {"quit", [](const Words&) { QMetaObject::invokeMethod(qApp, "aboutToQuit"); }},
        {"exit", [](const Words&) { QCoreApplication::quit(); }},
    };
    connect(kordservice(), &KordService::issued, this, [this](const KordCall& call) {
        stale_ |= call.name.startsWith("move.l") && told_ != executor->pendingSteps();
        hear(bench.robot.log().last());
    });
    connect(executor, &LumoExecutor::activityChanged, this, [this] {
        told_ = executor->pendingSteps();
        hear(QString("0 %1 pending").arg(told_));
    });
    for (const char* path : {"lumo.execute.state", "lumo.current.programtype", "lumo.cur_param"}) {
        connect(m(path), &ModuleObject::changed, this, [this, path] { hear(path); });
    }
}

void Script::act(const QString& what) {
    Words words = what.simplified().split(' ');
    bool isTimed = false;
    const int ms = words[0].toInt(&isTimed);
    const QString verb = words.takeFirst();
    const QString rest = words.join(' ');
    if (isTimed) {
        bench.at(ms, [this, rest] {
            stale_ |= told_ != executor->pendingSteps();
            act(rest);
        });
    } else if (verb == "in") {
        const QString later = rest.section(' ', 1);
        QTimer::singleShot(words[0].toInt(), Qt::PreciseTimer, this, [this, later] { act(later); });
    } else if (verb == "when") {
        cues_.append({rest.section(": ", 0, 0), rest.section(": ", 1)});
    } else if (nodes.count(verb) > 0) {
        m(nodes.at(verb))->setValue(this, rest);
    } else {
        verbs.at(verb)(words);
        if (QStringList{"run", "station", "once"}.contains(verb)) {
            bench.robot.note(QString("over %1").arg(bench.resumeLine()) + (bench.weldFlag() ? " weld" : ""));
        }
    }
}

void Script::hear(const QString& cue) {
    const QStringList names{cue, cue.section(' ', 1), QString("%1th").arg(++heard_)};
    for (int i = 0; i < cues_.size(); ++i) {
        if (names.contains(cues_[i].first)) {
            bench.robot.note("CUE");
            act(cues_.takeAt(i).second);
            return;
        }
    }
}

QStringList Script::play(const QByteArray& program, const QString& script) {
    cues_.clear();
    bench.reset();
    bench.load(program);
    timers_ = bench.armedTimers();
    told_ = executor->pendingSteps();
    stale_ = false;
    heard_ = 0;
    for (const QString& what : script.split(';')) {
        act(what);
    }
    bench.waitUntilIdle();
    QStringList lines;
    for (const QString& entry : bench.robot.log()) {
        const QString ms = entry.section(' ', 0, 0) + ' ';
        if (lines.isEmpty() || !lines.last().startsWith(ms)) {
            lines << entry;
        } else {
            lines.last() += ", " + entry.section(' ', 1);
        }
    }
    return lines + leftBehind() + boxes();
}

QStringList Script::leftBehind() const {
    QStringList left;
    for (const char* output : {"LASER", "GAS", "WIRE", "PULL", "POWER", "DUTY", "FREQ"}) {
        if (bench.robot.output(output) != 0.0) {
            left << QString("%1 is left on").arg(output);
        }
    }
    if (bench.state() != "idle" || executor->depth() != 0 || executor->pendingSteps() != 0) {
        left << "it is not left idle";
    }
    const bool robotStands = m("kord.r.state")->getString() == "idle" && boxes().isEmpty();
    if (robotStands && bench.armedTimers() > timers_) {
        left << "a timer is left armed";
    }
    if (stale_) {
        left << "pending steps are left untold";
    }
    return left;
}

}  // namespace test
