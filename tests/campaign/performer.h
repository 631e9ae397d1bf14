#pragma once

#include "campaign/recorder.h"

#include <QTimer>

namespace campaign {

/// Does what a scenario plans, when it plans it. An action is an object: "do" names the deed, "when" its
/// moment: "wait" (`ms` after the `nth` wait of kind `of` began, with "due" around its due time; "behind"
/// the polls that are due in the same ms, not before them), "inside" (the `nth` event of kind `of`, with
/// `text`, before that write returns; "early": before the executor hears of it), "after" (`ms` after the
/// action before this one), else `ms` after the schedule's beginning.
class Performer : public QObject {
public:
    qint64 lastMs = 0;           ///< when the last action that comes at a time will have been done; grows
    bool mayLoseErrors = false;  ///< results were made up, doubled or given in advance
    qint64 quitMs = -1;          ///< when the application was asked to quit, -1: it was not

    Performer(World& world, Recorder& recorder, const QJsonObject& scenario)
        : world_(world), recorder_(recorder), scenario_(scenario) {
        for (const QJsonValue value : scenario["actions"].toArray()) {
            const QJsonObject action = value.toObject();
            planned_.push_back({action, action["when"].toString(), action["nth"].toInt()});
        }
    }

    /// Arms what comes at a time.
    void begin() {
        for (int i = 0; i < planned_.size(); ++i) {
            if (planned_[i].when.isEmpty()) {
                later(i, planned_[i].action["ms"].toInt());
            }
        }
    }

    /// Forgets what has not come yet.
    void stop() {
        planned_.clear();
        timers_ = std::make_unique<QObject>();
    }

    void arm(qint64 ms, const std::function<void()>& expired) {
        auto* const timer = new QTimer(timers_.get());
        timer->setSingleShot(true);
        timer->setTimerType(Qt::PreciseTimer);
        connect(timer, &QTimer::timeout, this, expired);
        timer->start(int(std::max<qint64>(0, ms)));
    }

    /// An event was recorded; `early`: the executor has not heard of it yet. A copy: more events will follow.
    void notice(Event event, bool early) {
        const bool waits = event.kind == Activity && event.value != 0 && !early;
        for (int i = 0; i < planned_.size(); ++i) {
            Planned& planned = planned_[i];
            const QJsonObject action = planned.action;
            const QString text = action["text"].toString();
            const bool inWait = waits && planned.when == "wait" && action["of"] == event.wait;
            const bool inside = planned.when == "inside" && action["of"] == nameOf(event.kind) &&
                                action["early"].toBool() == early && (text.isEmpty() || text == event.text);
            if (planned.done || !(inside || inWait) || planned.left-- != 0) {
                continue;
            }
            const qint64 due = executor->waiting()["due"].toLongLong();
            if (inside) {
                perform(i);
            } else {
                const bool aroundDue = action["due"].toBool() && due >= 0;
                later(i, action["ms"].toInt() + (aroundDue ? due - world_.time.nowMs() : 0));
            }
        }
    }

    /// One action, now: records its beginning, does it, records that it has returned.
    void carryOut(const QJsonObject& action) {
        const QString deed = action["do"].toString();
        const QString name = action["name"].toString();
        const int number = action["number"].toInt();
        const bool on = action["on"].toBool();
        ModuleObject* const program = m(lumo::key::program);
        auto& controller = *world_.controller;
        if (deed == "start" || deed == "once") {
            start(deed, number, action["mode"].toInt(), on);
        } else if (deed == "resume") {
            start(deed, m(currentLine)->getInt(0), 0, on);
        } else if (deed == "pause") {
            act({Pause}, [] { m(lumo::key::triggerPause)->trigger(); });
        } else if (deed == "power") {
            act({Power, {}, on}, [&] { controller.setPower(on); });
        } else if (deed == "endExecutor") {
            act({Power, deed}, [&] { world_.endExecutor(); });  // it shuts down like a loss of power
        } else if (deed == "quit") {
            quitMs = recorder_.nowMs();
            act({Quit}, [] { QCoreApplication::quit(); });
        } else if (deed == "quirk") {
            sim::Quirk quirk = sim::Quirk::Bunch;
            sim::Controller::quirkFromName(name, &quirk);
            const bool lies = on && (name == "double" || name == "late");
            mayLoseErrors |= lies || (on && name == "sync");
            act({lies ? Quirk : Act, name, on}, [&] { controller.setQuirk(quirk, on); });
        } else if (deed == "result") {
            mayLoseErrors = true;
            act({Quirk, deed, number}, [&] { kordservice()->commandNode(name)->setValue(this, number); });
        } else if (deed == "replace") {
            const auto& key = on ? lumo::key::program : lumo::key::stationProgram;
            act({on ? Replace : Act, deed}, [&] { m(key)->loadJson(this, scenario_["other"].toArray()); });
        } else if (deed == "clear") {
            act({Replace, "edit: clear"}, [&] {
                while (program->cmobjCount() > 0) {
                    program->remove(this, mIndex(0));
                }
            });
        } else if (deed == "edit") {
            act({Act, "edit: " + name, number}, [&] { edit(program, name, number); });
        } else if (deed == "param") {
            ModuleObject* const set = m(lumo::key::param)->c(action["mode"].toInt());
            act({Act, deed + ' ' + name, number}, [&] { set->set(this, name, number, true); });
        } else if (deed == "fail") {
            act({Act, deed, number}, [&] { controller.failMotion(number); });
        } else if (deed == "fault") {
            act({Act, deed + ' ' + name, on}, [&] { world_.cell->setFault(name, on); });
        } else if (deed == "input") {
            act({Act, deed + ' ' + name, on}, [&] { controller.setInput(name, on); });
        } else if (deed == "mode") {
            act({Act, deed, on}, [&] { controller.setMode(on ? "auto" : "manual"); });
        } else if (deed == "weld" || deed == "handWeld") {
            const auto& key = deed == "weld" ? lumo::key::weldSwitch : lumo::key::handWeldSwitch;
            act({Act, deed, on}, [&] { m(key)->setValue(this, on); });
        } else if (deed == "answer") {
            act({Act, deed}, [] { test::closeBoxes(); });
        } else {
            act({Complaint, "no action is called " + deed}, [] {});
        }
    }

private:
    struct Planned {
        QJsonObject action;
        QString when;
        int left;  ///< events that match before it
        bool done = false;
    };

    void later(int index, qint64 ms) {
        lastMs = std::max(lastMs, recorder_.nowMs() + ms);
        if (planned_[index].action["behind"].toBool() && ms > 1) {
            // Of the timers that are due together the one armed last comes last.
            arm(ms - 1, [this, index] { arm(1, [this, index] { perform(index); }); });
        } else {
            arm(ms, [this, index] { perform(index); });
        }
    }

    void perform(int index) {
        if (index >= planned_.size() || planned_[index].done) {
            return;
        }
        planned_[index].done = true;
        if (index + 1 < planned_.size() && planned_[index + 1].when == "after") {
            later(index + 1, planned_[index + 1].action["ms"].toInt());
        }
        const QJsonObject action = planned_[index].action;  // what is planned may be forgotten meanwhile
        carryOut(action);
    }

    void act(Event event, const std::function<void()>& deed) {
        event.action = ++acts_;
        recorder_.record(event);
        deed();
        recorder_.record({Done, {}, 0, -1, event.action});
    }

    void start(const QString& deed, int line, int mode, bool withSender) {
        const bool once = deed == "once";
        if (mode == 1 && !once) {
            carryOut({{"do", "replace"}});  // a station brings its program anew
        }
        const auto& key = mode == 1 && !once ? lumo::key::stationProgram : lumo::key::program;
        const QJsonArray program = m(key)->exportToJson().toArray();
        const auto typeAt = [&](int at) { return program.at(at).toObject()["type"].toString(); };
        Event event{once ? Once : Start, deed, line};
        event.facts[Mode] = once ? 2 : mode;
        event.facts[LineExists] = line >= 0 && line < program.size();
        event.facts[MayBeRefused] = once && withSender && !typeAt(line).startsWith("move");
        for (int i = std::max(0, line); i < (once ? line + 1 : program.size()); ++i) {
            event.facts[MayBeRefused] |= typeAt(i) == "moveCC";  // an impossible circle
        }
        if (!once) {
            recorder_.asked = program;
        }
        act(event, [&] {
            hand_or_signalbing = event[Mode];
            const auto& trigger = once ? lumo::key::triggerOnce : lumo::key::triggerStart;
            m(trigger)->setValue(once && !withSender ? nullptr : this, line);
        });
    }

    void edit(ModuleObject* program, const QString& name, int line) {
        if (name == "skip") {
            program->c(line)->set(this, lumo::field::execute, line % 2 == 0);
        } else if (name == "speed") {
            program->c(line)->set(this, lumo::field::speed, 35);
        } else if (name == "insert") {
            auto* const copy = new ModuleObject;
            copy->copyFrom(this, program->c(line));
            program->insert(this, copy, true, std::max(0, line));
        } else if (name == "remove") {
            program->remove(this, mIndex(line));
        } else {
            program->reorder(this, line, 0);
        }
    }

    World& world_;
    Recorder& recorder_;
    const QJsonObject scenario_;
    QVector<Planned> planned_;
    std::unique_ptr<QObject> timers_ = std::make_unique<QObject>();
    int acts_ = 0;
};

}  // namespace campaign
