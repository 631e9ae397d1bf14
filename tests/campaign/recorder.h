#pragma once

#include "campaign/world.h"

#include <cmath>
#include <functional>

namespace campaign {

/// Turns what the tree, the robot service and the cell announce into events (without the facts).
/// Listeners are called in the order in which they connected, so who wants to hear of a write before
/// the executor or the controller does makes its sources before them.
class Sources : public QObject {
public:
    explicit Sources(std::function<void(const Event&)> heard) : heard_(std::move(heard)) {
        listen({lumo::key::executeState}, State);
        listen({lumo::key::robotState}, Robot);
        listen({lumo::key::robotMode, lumo::key::weldSwitch, lumo::key::handWeldSwitch}, Permission);
        listen({currentLine}, Line);
        listen({lumo::key::currentType}, Statement);
        listen({lumo::key::weldOpen}, WeldFlag);
        listen({lumo::key::curParam}, Param);
        listen({lumo::key::currentPausePoint, lumo::key::currentStartPoint, lumo::key::currentMoveType},
               Node);
        for (const char* command : {"move.j", "move.l", "move.c"}) {
            connect(kordservice()->commandNode(command), &ModuleObject::changed, this,
                    [this, command](const QVariant& code) {
                        heard_({Result, command, code.toInt()});
                    });
        }
        connect(kordservice(), &KordService::issued, this, &Sources::onIssued);
        connect(mendo::LogHub::instance(), &mendo::LogHub::line, this,
                [this](const QString&, const QString& text) {
                    if (text.startsWith("enter zone!")) {
                        heard_({Zone});
                    } else if (text.contains(" move result!")) {
                        heard_({Dropped, text});
                    }
                });
    }

private:
    void listen(std::initializer_list<QLatin1String> paths, Kind kind) {
        const bool executorOnly = kind > State && kind <= Node;
        for (const QString path : paths) {
            connect(m(path), &ModuleObject::changed, this,
                    [=](const QVariant& value, const QVariant&, const QObject* sender) {
                        if (!executorOnly || sender == executor) {
                            heard_({kind, kind == Node ? path : value.toString(), value.toInt()});
                        }
                    });
        }
    }

    void onIssued(const KordCall& call) {
        const bool isRegister = call.name == lumo::command::registerWrite;
        if (call.name == lumo::command::outDo ? call.sender != nullptr : call.sender != executor) {
            return;  // a statement's output has no sender
        }
        if (isRegister && call.node) {
            onRegister(*call.node);
        } else if (call.name == lumo::command::registerWriteMulti) {
            for (const ModuleObject* record : call.node->cmobjs()) {
                onRegister(*record);
            }
        } else if (isRegister || call.name == lumo::command::outDo) {
            heard_({Output, call.argument(lumo::field::name).toString()});
        } else {
            heard_({Command, call.name});
        }
    }

    void onRegister(const ModuleObject& record) {
        const QString name = record.c(lumo::field::name)->getString();
        const QString bit = name + '.' + mIndex(record.c(lumo::field::bias)->getInt());
        for (int port = 0; port < portCount; ++port) {
            if (test::kPortNames[port] == bit || test::kPortNames[port] == name) {
                const QString text = nameOf(Port(port));
                heard_({Write, text, record.c(lumo::field::value)->getInt(), port});
            }
        }
    }

    std::function<void(const Event&)> heard_;
};

/// Keeps what happens in a schedule, with the facts.
class Recorder {
public:
    std::vector<Event> events;
    QJsonArray asked;  ///< the program that the last start asks for; it is walked when that is accepted

    /// Whether the event was kept: it says something new.
    bool record(Event event) {
        event.ms = nowMs();
        takeFacts(event);
        if (event.kind == Activity && !isNews(event)) {
            return false;
        }
        if (event.kind == Zone) {
            event.value = outsideZone();
        } else if (event.kind == Done) {
            event.facts[Boxes] = test::boxes().size();
        } else if (event.kind == Activity && event[Depth] > 0 && events.back().kind == Start) {
            walked_ = asked;
            isFresh_ = true;
        } else if (event.kind == Line) {
            lineCount_ = std::max(std::exchange(isFresh_, false) ? 0 : lineCount_, walked_.size());
        }
        if (lineCount_ >= 0) {
            lineCount_ = std::max(lineCount_, m(lumo::key::program)->cmobjCount());  // with lines that came
        }
        event.facts[LineCount] = lineCount_;
        events.push_back(event);
        return true;
    }

    static void takeFacts(Event& event) {
        const bool automatic = m(lumo::key::robotMode)->getString() == lumo::word::automatic;
        const bool mayWeld = automatic || m(lumo::key::handWeldSwitch)->getBool(false);
        const ModuleObject* const set = m(lumo::key::param)->c(m(lumo::key::curParam)->getInt(-1));
        const auto msOf = [set](const char* time) { return qBound(0, set->c(time)->getInt(0), 500000000); };
        auto& facts = event.facts;
        facts[Idle] = m(lumo::key::executeState)->getString() == lumo::word::idle;
        facts[Powered] = m(lumo::key::robotPower)->getString() == lumo::word::on;
        facts[RobotIdle] = m(lumo::key::robotState)->getString() == lumo::word::idle;
        facts[Permitted] = m(lumo::key::weldSwitch)->getBool(true) && mayWeld;
        facts[GasUsed] = portEnabled(DO_GAS);
        facts[ResumeLine] = m(currentLine)->getInt(-1);
        facts[WeldOpen] = m(lumo::key::weldOpen)->getBool(false);
        facts[DecreaseMs] = msOf("decrease_time");
        facts[PostFlowMs] = msOf("delay_after_blow");
        facts[Depth] = executor ? executor->depth() : 0;
        facts[Pending] = executor ? executor->pendingSteps() : 0;
        event.wait = executor ? executor->waiting()["kind"].toString() : QString();
    }

    [[nodiscard]] qint64 nowMs() const { return mendo::Clock::current().elapsedMs() - startMs_; }

private:
    /// An activity counts when the depth, the wait or whether something is pending has changed.
    bool isNews(Event& event) {
        const QVariantMap wait = executor ? executor->waiting() : QVariantMap();
        const std::tuple<int, bool> now{event[Depth], event[Pending] > 0};
        const bool otherWait = wait != wait_;
        const bool news = otherWait || now != activity_;
        event.value = otherWait && !wait.isEmpty();
        wait_ = wait;
        activity_ = now;
        return news;
    }

    /// How far the tool is outside the zone of the move that the current line holds, in µm.
    [[nodiscard]] int outsideZone() const {
        const QJsonObject move = walked_.at(m(currentLine)->getInt(-1)).toObject();
        const QString name = move["type"] == "moveC" ? "point1" : "point";
        const QJsonArray target = move[name].toObject()["trans"].toArray();
        if (target.size() < 3 || move["type"] == "moveCC") {
            return 0;  // a full circle ends where it began
        }
        const ModuleObject* const here = kordservice()->get(nullptr, lumo::key::posture, lumo::field::trans);
        double squares = 0.0;
        for (int i = 0; i < 3; ++i) {
            squares += std::pow(here->c(i)->getDouble() - target[i].toDouble(), 2);
        }
        const double radius = move.contains("zone")
                                  ? move["zone"].toVariant().toDouble() / 1000.0
                                  : kordservice()->get(nullptr, lumo::key::defaultZone)->getDouble();
        return int(std::ceil((std::sqrt(squares) - radius) * 1e6));
    }

    QJsonArray walked_;
    bool isFresh_ = false;  ///< the run has not written the resume line yet
    int lineCount_ = -1;
    qint64 startMs_ = mendo::Clock::current().elapsedMs();
    QVariantMap wait_;
    std::tuple<int, bool> activity_{0, false};
};

}  // namespace campaign
