#include "runner/safetywatch.h"

#include "mendo/modulemanager.h"
#include "program/words.h"
#include "runner/options.h"

namespace run {

using workcell::safety::Event;
using workcell::safety::Kind;

SafetyWatch::SafetyWatch(workcell::TreeFollower* follower, QObject* parent)
    : QObject(parent), source_(follower) {
    connect(&source_, &workcell::safety::EventSource::happened, this, [this](const Event& event) {
        if (!ended_) {
            recorder_.record(event);
        }
    });
}

void SafetyWatch::setExecutor(QObject* executor) {
    executor_ = executor;
    source_.setExecutor(executor);
}

void SafetyWatch::begin() {
    recorder_.begin(executor_);
}

void SafetyWatch::starts(const Options& options) {
    recorder_.acts(options.once
                       ? workcell::safety::requestOf(Kind::Once, *options.once - 1, prog::runmode::singleStep)
                       : workcell::safety::requestOf(Kind::Start, m(prog::key::currentLine)->getInt(),
                                                     prog::runmode::byHand));
}

void SafetyWatch::returned() {
    if (!ended_) {
        recorder_.returned();
    }
}

void SafetyWatch::onActing(const ScenarioEntry& entry) {
    const Event event = eventOf(entry);
    losesResults_ |= entry.action == Action::Quirk &&
                     entry.keys.value(QStringLiteral("name")) == QLatin1String("noResult");
    if (event.kind == Kind::Quit) {
        quitMs_ = recorder_.nowMs();
    }
    recorder_.acts(event);
}

Event SafetyWatch::eventOf(const ScenarioEntry& entry) const {
    const QJsonObject& keys = entry.keys;
    const int line = keys.value(QStringLiteral("line0")).toInt();
    const QString path = keys.value(QStringLiteral("path")).toString();
    const bool ofStation = keys.value(QStringLiteral("station")).toBool();
    Event event;
    event.text = keys.value(QStringLiteral("do")).toString();
    switch (entry.action) {
        case Action::Start:
            return workcell::safety::requestOf(Kind::Start, line,
                                               ofStation ? prog::runmode::byStation : prog::runmode::byHand);
        case Action::Resume:
            return workcell::safety::requestOf(Kind::Start, m(prog::key::currentLine)->getInt(),
                                               prog::runmode::byHand);
        case Action::Once:
            return workcell::safety::requestOf(Kind::Once, line, prog::runmode::singleStep);
        case Action::Pause:
            event.kind = Kind::Pause;
            break;
        case Action::Power:
            event.kind = Kind::Power;
            event.value = keys.value(QStringLiteral("value")) == QLatin1String("on") ? 1 : 0;
            break;
        case Action::Quit:
            event.kind = Kind::Quit;
            break;
        case Action::Load:
            event.kind = Kind::Replace;
            break;
        case Action::Set:
            event.kind = path == prog::key::program            ? Kind::Replace
                         : path.startsWith(prog::key::program) ? Kind::Edit
                                                               : Kind::Act;
            break;
        case Action::Insert:
        case Action::Remove:
        case Action::Move:
        case Action::Enable:
            event.kind = Kind::Edit;
            break;
        default:
            break;
    }
    return event;
}

void SafetyWatch::onQuit() {
    if (quitMs_ >= 0 && recorder_.nowMs() > quitMs_) {
        recorder_.complain(QStringLiteral("the application did not quit at once"));
    }
}

/// A run that waits for an input, or for a result that the controller was told to withhold, need not end.
bool SafetyWatch::end(const sim::Controller* controller, const QString& reason, bool tell) {
    const QVariantMap waiting = executor_->property("waiting").toMap();
    const bool waits = waiting.value(QStringLiteral("kind")).toString() == prog::waits::input;
    const bool rests = m(prog::key::executeState)->getString() == prog::word::idle &&
                       executor_->property("depth").toInt() == 0 &&
                       executor_->property("pendingSteps").toInt() == 0;
    if (rests) {
        recorder_.end(controller);
    } else if (!waits && !losesResults_) {
        recorder_.complain(QStringLiteral("the run does not end: ") + reason);
    }
    ended_ = true;
    const std::vector<workcell::safety::Breach> all = breaches();
    for (std::size_t i = 0; tell && i < all.size(); ++i) {
        printError(breachText(all[i], events()[all[i].event]));
    }
    return all.empty();
}

QString breachText(const workcell::safety::Breach& breach, const Event& event) {
    return QStringLiteral("%1 ms: %2: %3").arg(event.ms).arg(QLatin1String(breach.rule), breach.text);
}

}  // namespace run
