#include "campaign/performer.h"

#include "executor/lumoexecutor.h"
#include "module/globals.h"
#include "module/keys.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace campaign {

namespace {

bool isMove(const QJsonValue& line) {
    return line.toObject()["type"].toString().startsWith(QLatin1String("move"));
}

/// Whether a check of the program's content may refuse a run of these lines.
bool mayBeRefused(const QJsonArray& program, int from, int to) {
    for (int i = std::max(0, from); i < to && i < program.size(); ++i) {
        if (program[i].toObject()["type"].toString() == lumo::statement::moveCC) {
            return true;
        }
    }
    return false;
}

}  // namespace

Performer::Performer(World& world, Recorder& recorder, const Scenario& scenario)
    : world_(world),
      recorder_(recorder),
      hand_(world.panel),
      scenario_(scenario),
      timers_(std::make_unique<QObject>()) {
    for (const Action& action : scenario.actions) {
        planned_.append({action});
    }
}

void Performer::arm() {
    for (int i = 0; i < planned_.size(); ++i) {
        const Moment& moment = planned_[i].action.moment;
        if (moment.kind == Moment::Kind::At) {
            later(i, moment.ms);
        }
    }
}

void Performer::stop() {
    planned_.clear();
    timers_ = std::make_unique<QObject>();
}

void Performer::later(int index, qint64 ms, bool behind) {
    lastMs_ = std::max(lastMs_, recorder_.nowMs() + ms);
    if (behind && ms > 1) {
        // Of the timers that are due together the one armed last comes last.
        arm(ms - 1, [this, index] { arm(1, [this, index] { perform(index); }); });
    } else {
        arm(ms, [this, index] { perform(index); });
    }
}

void Performer::arm(qint64 ms, const std::function<void()>& expired) {
    auto* timer = new QTimer(timers_.get());
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    connect(timer, &QTimer::timeout, this, expired);
    timer->start(static_cast<int>(std::max<qint64>(0, ms)));
}

bool Performer::matches(const Moment& moment, const Event& event, bool early) const {
    if (moment.kind == Moment::Kind::InWait) {
        return !early && event.kind == Event::Kind::Activity && event.value != 0 &&
               event.facts.wait == moment.text;
    }
    // A null text begins with no text but a null one.
    const bool isNamed = moment.text.isEmpty() || event.text.startsWith(moment.text);
    return moment.kind == Moment::Kind::Inside && moment.early == early && moment.hook == event.kind &&
           (moment.port < 0 || moment.port == event.port) && isNamed;
}

void Performer::notice(const Event& event, bool early) {
    for (int i = 0; i < planned_.size(); ++i) {
        Planned& planned = planned_[i];
        const Moment& moment = planned.action.moment;
        if (planned.done || !matches(moment, event, early) || planned.matches++ != moment.nth) {
            continue;
        }
        if (moment.kind == Moment::Kind::Inside) {
            perform(i);
        } else {
            const QVariantMap wait = executor->waiting();
            const qint64 due = wait.value(QStringLiteral("due")).toLongLong();
            const qint64 now = world_.time.nowMs();
            later(i, moment.ms + (moment.fromDue && due >= 0 ? due - now : 0), moment.behind);
        }
    }
}

void Performer::perform(int index) {
    if (index >= planned_.size() || planned_[index].done) {
        return;
    }
    planned_[index].done = true;
    const Action action = planned_[index].action;  // what is planned may be forgotten meanwhile
    if (index + 1 < planned_.size()) {
        const Moment& next = planned_[index + 1].action.moment;
        if (next.kind == Moment::Kind::After) {
            later(index + 1, next.ms);
        }
    }
    carryOut(action);
}

void Performer::act(Event event, const std::function<void()>& deed) {
    event.action = ++acts_;
    recorder_.record(event);
    Event done;
    done.kind = Event::Kind::Done;
    done.action = event.action;
    deed();
    recorder_.record(done);
}

template <typename Deed>
void Performer::act(Event::Kind kind, const QString& text, int value, Deed deed) {
    Event event;
    event.kind = kind;
    event.text = text;
    event.value = value;
    act(event, deed);
}

void Performer::carryOut(const Action& action) {
    using Kind = Action::Kind;
    const QString words = action.toText();
    const auto plain = [this, &words](const std::function<void()>& deed) {
        act(Event::Kind::Act, words, 0, deed);
    };
    switch (action.kind) {
        case Kind::Start:
        case Kind::Resume:
            start(action);
            break;
        case Kind::Once:
            once(action);
            break;
        case Kind::Pause:
            pause();
            break;
        case Kind::Power:
            setPower(action.on);
            break;
        case Kind::Mode:
            plain([&] {
                world_.controller->setMode(action.on ? lumo::word::automatic : QLatin1String("manual"));
            });
            break;
        case Kind::Weld:
            plain([&] { m(lumo::key::weldSwitch)->setValue(this, action.on); });
            break;
        case Kind::HandWeld:
            plain([&] { m(lumo::key::handWeldSwitch)->setValue(this, action.on); });
            break;
        case Kind::Input:
            setInput(action.text, action.on);
            break;
        case Kind::Fail:
            plain([&] { world_.controller->failMotion(action.number); });
            break;
        case Kind::Quirk: {
            sim::Quirk quirk = sim::Quirk::Bunch;
            sim::Controller::quirkFromName(action.text, &quirk);
            const bool lies = action.on && (quirk == sim::Quirk::Double || quirk == sim::Quirk::Late);
            mayLoseErrors_ |= action.on && (lies || quirk == sim::Quirk::Sync);
            act(lies ? Event::Kind::Quirk : Event::Kind::Act, words, 0,
                [&] { world_.controller->setQuirk(quirk, action.on); });
            break;
        }
        case Kind::Replace:
            replace(action.on);
            break;
        case Kind::Edit:
            edit(action.number, action.mode);
            break;
        case Kind::Result:
            mayLoseErrors_ = true;
            act(Event::Kind::Quirk, words, 0,
                [&] { kordservice()->commandNode(action.text)->setValue(this, action.number); });
            break;
        case Kind::Param:
            plain([&] { m(lumo::key::param)->c(action.number)->set(this, action.text, action.mode, true); });
            break;
        case Kind::Fault:
            plain([&] { world_.cell->setFault(action.text, action.on); });
            break;
        case Kind::Answer:
            plain([] { closeMessages(); });
            break;
        case Kind::Hand:
        case Kind::Reply:
        case Kind::Port:
        case Kind::Panel:
        case Kind::Quit:
            carryOutAtPage(action);
            break;
    }
}

void Performer::carryOutAtPage(const Action& action) {
    using Kind = Action::Kind;
    if (action.kind == Kind::Quit) {
        quitMs_ = recorder_.nowMs();
    }
    act(action.kind == Kind::Quit ? Event::Kind::Quit : Event::Kind::Act, action.toText(), 0, [&] {
        if (action.kind == Kind::Hand) {
            hand_.doThis(action.text, action.number, action.mode, action.on, *world_.controller);
        } else if (action.kind == Kind::Reply) {
            hand_.reply(action.text, action.number);
        } else if (action.kind == Kind::Panel) {
            world_.panel.end();
            if (action.on) {
                world_.panel.make();
            }
        } else if (action.kind == Kind::Quit) {
            QCoreApplication::quit();
        }
    });
    checkTable();
}

/// The table tells of the program as it is, whatever was done.
void Performer::checkTable() {
    const QString wrong = world_.panel.disagreement();
    if (!wrong.isEmpty()) {
        Event event;
        event.kind = Event::Kind::Complaint;
        event.text = wrong;
        recorder_.record(event);
    }
}

Event Performer::asked(Event::Kind kind, int line, int mode, bool withSender) {
    const bool once = kind == Event::Kind::Once;
    const QJsonArray program =
        m(!once && mode == 1 ? lumo::key::stationProgram : lumo::key::program)->exportToJson().toArray();
    Event event;
    event.kind = kind;
    event.value = line;
    event.mode = mode;
    event.lineExists = line >= 0 && line < program.size();
    event.mayBeRefused = mayBeRefused(program, line, once ? line + 1 : program.size()) ||
                         (once && withSender && !isMove(program.at(line)));
    if (!once) {
        recorder_.setAskedProgram(program);
    }
    return event;
}

void Performer::start(const Action& action) {
    const bool resumes = action.kind == Action::Kind::Resume;
    const int line = resumes ? m(lumo::key::currentLine)->getInt(0) : action.number;
    const int mode = resumes ? 0 : action.mode;
    if (mode == 1) {
        replace(false);  // a station brings its program anew
    }
    act(asked(Event::Kind::Start, line, mode, true), [&] {
        hand_or_signalbing = mode;
        writeTrigger(lumo::key::triggerStart, line, this);
    });
}

void Performer::once(const Action& action) {
    act(asked(Event::Kind::Once, action.number, 2, action.on), [&] {
        hand_or_signalbing = 2;
        writeTrigger(lumo::key::triggerOnce, action.number, action.on ? this : nullptr);
    });
}

void Performer::writeTrigger(QLatin1String path, const QVariant& value, QObject* sender) {
    ownTrigger_ = true;
    m(path)->setValue(sender, value);
}

int Performer::beginForeign(Event::Kind kind, const QVariant& value, const QObject* sender) {
    if (std::exchange(ownTrigger_, false)) {
        return 0;
    }
    bool isNumber = false;
    const int line = value.toInt(&isNumber);
    Event event;
    event.kind = kind;
    if (kind != Event::Kind::Pause) {
        event = asked(kind, isNumber ? line : -1, hand_or_signalbing, sender != nullptr);
    }
    event.action = ++acts_;
    recorder_.record(event);
    return event.action;
}

void Performer::endForeign(int action) {
    if (action == 0) {
        return;
    }
    Event done;
    done.kind = Event::Kind::Done;
    done.action = action;
    recorder_.record(done);
}

void Performer::noteReplacement() {
    act(Event::Kind::Replace, QStringLiteral("another hand program"), 0, [] {});
}

void Performer::replyToAll() {
    act(Event::Kind::Act, QStringLiteral("everything is answered"), 0,
        [&] { hand_.replyToAll(static_cast<int>(scenario_.seed % 1000)); });
}

void Performer::pause() {
    act(Event::Kind::Pause, QString(), 0, [this] {
        ownTrigger_ = true;
        m(lumo::key::triggerPause)->trigger();
    });
}

void Performer::setPower(bool on) {
    act(Event::Kind::Power, QString(), on, [&] { world_.controller->setPower(on); });
}

void Performer::setInput(const QString& name, bool on) {
    act(Event::Kind::Act, QStringLiteral("input %1 %2").arg(name).arg(on), 0,
        [&] { world_.controller->setInput(name, on); });
}

void Performer::endExecutor() {
    // It shuts down like a loss of power.
    act(Event::Kind::Power, QStringLiteral("executor deleted"), 0, [&] { world_.endExecutor(); });
}

void Performer::replace(bool hand) {
    if (!hand) {
        act(Event::Kind::Act, QStringLiteral("station program brought"), 0,
            [&] { m(lumo::key::stationProgram)->loadJson(this, scenario_.otherProgram); });
        return;
    }
    act(Event::Kind::Replace, QStringLiteral("hand program replaced"), 0,
        [&] { m(lumo::key::program)->loadJson(this, scenario_.otherProgram); });
    checkTable();
}

void Performer::edit(int kind, int line) {
    ModuleObject* const program = m(lumo::key::program);
    const bool empties = kind == 4 && line % 4 == 0;
    act(empties ? Event::Kind::Replace : Event::Kind::Act,
        QStringLiteral("edit %1 at line %2").arg(kind).arg(line), 0, [&] {
            ModuleObject* const stmt = program->c(line);
            switch (kind) {
                case 0:
                    stmt->set(this, lumo::field::execute, line % 2 == 0);
                    break;
                case 1:
                    stmt->set(this, lumo::field::speed, 35);
                    break;
                case 2: {
                    auto* const copy = new ModuleObject;
                    copy->copyFrom(this, stmt);
                    program->insert(this, copy, true, std::max(0, line));
                    break;
                }
                case 3:
                    program->remove(this, mIndex(line));
                    break;
                case 4:
                    while (empties && program->cmobjCount() > 0) {
                        program->remove(this, mIndex(0));
                    }
                    break;
                default:
                    program->reorder(this, line, 0);
            }
        });
}

}  // namespace campaign
