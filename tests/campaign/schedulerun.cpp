#include "campaign/schedulerun.h"

#include "campaign/conductor.h"
#include "campaign/sources.h"
#include "campaign/triggers.h"
#include "module/globals.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdlib>

namespace campaign {

namespace {

constexpr qint64 limitMs = 1000000;

std::function<void(const QString&)> onQtMessage;

void handleMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
    const bool isOffscreen = text.startsWith(QLatin1String("This plugin does not support"));
    if (type != QtDebugMsg && type != QtInfoMsg && !isOffscreen && onQtMessage) {
        onQtMessage(text);
    }
}

Outcome outcomeOf(const Recorder& recorder, const QStringList& broken) {
    return {broken, recorder.events(), recorder.brokenAt(), recorder.nowMs()};
}

}  // namespace

void watchQt() {
    qInstallMessageHandler(handleMessage);
}

Outcome runSchedule(World& world, const Scenario& scenario, const Observers& observers) {
    Checker checker;
    Recorder recorder(checker);
    recorder.setListener(observers.heard);
    onQtMessage = [&recorder](const QString& text) {
        Event event;
        event.kind = Event::Kind::Complaint;
        event.text = QStringLiteral("Qt reports: ") + text;
        recorder.record(event);
    };
    // An instant of its own: virtual time goes on after so many passes of the event loop at one, whoever
    // asked for them.
    world.time.advance(1);
    world.fill(scenario);
    Performer performer(world, recorder, scenario);
    std::unique_ptr<Triggers> triggers;
    if (scenario.stage != Stage::Bare) {
        triggers = std::make_unique<Triggers>(performer);
    }
    Sources first;
    QObject::connect(&first, &Sources::heard, &recorder, [&](const Event& event) {
        const Event kept = recorder.record(event);
        if (kept.action >= 0) {
            performer.notice(kept, true);
        }
        // Nobody comes after these.
        if (kept.action >= 0 && kept.kind == Event::Kind::Activity) {
            performer.notice(kept, false);
        }
    });
    world.makeExecutor();
    first.follow(executor);
    world.makeCell(scenario);
    first.follow(world.controller.get(), world.cell.get());
    world.makePage(scenario);
    Sources last;
    last.hearOnly(executor);
    QObject::connect(&last, &Sources::heard, &performer,
                     [&performer](const Event& event) { performer.notice(event, false); });

    if (triggers) {
        triggers->listenLast();
    }

    Conductor conductor(world, recorder, performer, scenario);
    conductor.setStuckHandler([&](const QString& words) {
        if (observers.stuck) {
            observers.stuck(outcomeOf(recorder, checker.broken() + QStringList(words)));
        }
        std::_Exit(EXIT_FAILURE);
    });
    if (observers.ready) {
        observers.ready(world);
    }
    conductor.begin();
    if (scenario.quits()) {
        QCoreApplication::exec();
    } else {
        world.time.advanceUntil([&conductor] { return conductor.isOver(); }, limitMs);
    }
    const qint64 overMs = recorder.nowMs();
    performer.stop();
    conductor.stop();
    Ending ending = world.takeDown(recorder.resumeLines(), performer.quitMs() >= 0);
    ending.quit = performer.quitMs() >= 0;
    ending.quitTookMs = ending.quit ? overMs - performer.quitMs() : 0;
    checker.end(ending);
    onQtMessage = nullptr;
    return outcomeOf(recorder, checker.broken());
}

QString difference(const Outcome& first, const Outcome& second) {
    const auto textAt = [](const Outcome& outcome, std::size_t at) {
        return at < outcome.events.size() ? outcome.events[at].toText() : QStringLiteral("nothing more");
    };
    const std::size_t count = std::max(first.events.size(), second.events.size());
    for (std::size_t i = 0; i < count; ++i) {
        if (textAt(first, i) != textAt(second, i)) {
            return QStringLiteral(
                       "the same schedule run again differs in event %1 of %2: \"%3\", and then \"%4\"")
                .arg(i)
                .arg(first.events.size())
                .arg(textAt(first, i), textAt(second, i));
        }
    }
    return first.broken == second.broken ? QString()
                                         : QStringLiteral("the same schedule run again breaks other rules");
}

QStringList eventsBefore(const Outcome& outcome, int count) {
    const int end = outcome.brokenAt < 0 ? static_cast<int>(outcome.events.size()) : outcome.brokenAt;
    QStringList lines;
    for (int i = std::max(0, end - count); i < end; ++i) {
        lines << outcome.events[static_cast<std::size_t>(i)].toText();
    }
    return lines;
}

}  // namespace campaign
