#include "campaign/statistics.h"

#include "campaign/pageworld.h"
#include "executor/lumoexecutor.h"
#include "mendo/clock.h"
#include "module/globals.h"

#include <QSet>

#include <algorithm>

namespace campaign {

namespace {

using Kind = Event::Kind;

constexpr char separator = '|';
constexpr double msPerHour = 3600000.0;

const QString totals = QStringLiteral("totals");
const QString schedules = QStringLiteral("schedules");
const QString actions = QStringLiteral("actions");
const QString inWaits = QStringLiteral("inWaits");
const QString waitEnds = QStringLiteral("waitEnds");
const QString latencies = QStringLiteral("latencies");

bool isAction(const Event& event) {
    return event.action > 0 && event.kind != Kind::Done;
}

/// What kind of action it is, without its particulars.
QString nameOf(const Event& event) {
    switch (event.kind) {
        case Kind::Start:
            return event.mode == 1 ? QStringLiteral("start by a station") : QStringLiteral("start by hand");
        case Kind::Once:
            return QStringLiteral("single step");
        case Kind::Pause:
            return QStringLiteral("pause");
        case Kind::Power:
            return !event.text.isEmpty() ? event.text
                   : event.value != 0    ? QStringLiteral("power on")
                                         : QStringLiteral("power off");
        default:
            break;
    }
    for (const char* words : {"weld switch", "hand weld switch", "motion error", "hand program replaced",
                              "station program brought", "messages are answered"}) {
        if (event.text.startsWith(QLatin1String(words))) {
            return QString::fromLatin1(words);
        }
    }
    const QString first = event.text.section(QLatin1Char(' '), 0, 0);
    if (first == QLatin1String("input")) {
        return QStringLiteral("input, also those given in the end");
    }
    return first == QLatin1String("quirk") ? event.text.section(QLatin1Char(' '), 0, 1) : first;
}

/// What may end any wait, under the name that it has there; empty for what ends none.
QString stopBy(const Event& event) {
    const QString name = nameOf(event);
    if (event.kind == Kind::Pause) {
        return QStringLiteral("a pause");
    }
    if (event.kind == Kind::Power && event.value == 0) {
        return event.text.isEmpty() ? QStringLiteral("a loss of power") : event.text;
    }
    return event.kind == Kind::Act && name == QLatin1String("quit") ? name : QString();
}

QString pair(const QString& row, const QString& column) {
    return row + QLatin1Char(separator) + column;
}

QString markdownRow(const QStringList& cells) {
    return QStringLiteral("| %1 |\n").arg(cells.join(QStringLiteral(" | ")));
}

QString markdownHead(const QStringList& cells) {
    QStringList rules{QStringLiteral("---")};
    while (rules.size() < cells.size()) {
        rules << QStringLiteral("---:");
    }
    return markdownRow(cells) + QStringLiteral("|%1|\n").arg(rules.join(QLatin1Char('|')));
}

}  // namespace

void Statistics::begin(const Scenario& scenario) {
    waits_.clear();
    onStack_.clear();
    recent_.clear();
    latency_.begin();
    actions_ = 0;
    countUp(totals, QStringLiteral("schedules"));
    for (const QString& trait : traitsOf(scenario)) {
        countUp(schedules, trait);
    }
}

void Statistics::on(const Event& event) {
    if (!recent_.isEmpty() && recent_.last().ms != event.ms) {
        recent_.clear();
    }
    recent_.append(event);
    latency_.on(event, situation(event));
    if (event.kind == Kind::Activity) {
        onActivity();
    } else if (event.kind == Kind::Done) {
        const auto isIt = [&event](const Event& action) { return action.action == event.action; };
        onStack_.erase(std::remove_if(onStack_.begin(), onStack_.end(), isIt), onStack_.end());
    } else if (isAction(event)) {
        actions_ = event.action;
        onStack_.append(event);
        countUp(totals, QStringLiteral("actions"));
        countUp(actions, nameOf(event));
        if (!event.facts.wait.isEmpty()) {
            countUp(totals, QStringLiteral("actions inside waits"));
            countUp(inWaits, pair(nameOf(event), event.facts.wait));
        }
    }
}

/// The innermost wait is known only; the ones around it are those that have not been seen to end.
void Statistics::onActivity() {
    const QVariantMap now = executor ? executor->waiting() : QVariantMap();
    const Wait innermost{now.value(QStringLiteral("kind")).toString(),
                         now.value(QStringLiteral("since")).toLongLong(),
                         now.value(QStringLiteral("due"), -1).toLongLong(), actions_};
    const auto same = std::find_if(waits_.begin(), waits_.end(), [&innermost](const Wait& wait) {
        return wait.kind == innermost.kind && wait.sinceMs == innermost.sinceMs;
    });
    const bool goesDeeper = same == waits_.end() && !innermost.kind.isEmpty();
    const int left = innermost.kind.isEmpty() ? 0 : int(same - waits_.begin()) + (goesDeeper ? 0 : 1);
    while (waits_.size() > left) {
        const Wait ended = waits_.takeLast();
        countUp(totals, QStringLiteral("waits"));
        countUp(waitEnds, pair(ended.kind, causeOf(ended)));
    }
    if (goesDeeper) {
        waits_.append(innermost);
    }
}

QString Statistics::causeOf(const Wait& wait) const {
    const auto stops = [&wait](const Event& event) {
        return event.action > wait.actionsBefore ? stopBy(event) : QString();
    };
    // What ended the wait is still on the stack, or has returned before the wait's own loop did.
    for (const QVector<Event>& events : {onStack_, recent_}) {
        for (auto event = events.rbegin(); event != events.rend(); ++event) {
            if (!stops(*event).isEmpty()) {
                return stops(*event);
            }
        }
    }
    const bool forRobot = wait.kind == QLatin1String("move") || wait.kind == QLatin1String("zone");
    const bool needsPermission = wait.kind == QLatin1String("preflow");
    for (auto event = recent_.rbegin(); event != recent_.rend(); ++event) {
        if (forRobot && (event->kind == Kind::Result || event->kind == Kind::Zone)) {
            return event->kind == Kind::Zone ? QStringLiteral("the zone") : QStringLiteral("a result");
        }
        if (needsPermission && event->kind == Kind::Permission && !event->facts.permitted) {
            return QStringLiteral("the permission lost");
        }
    }
    if (wait.dueMs >= 0 && wait.dueMs <= mendo::Clock::current().elapsedMs()) {
        return QStringLiteral("its time");
    }
    return wait.kind == QLatin1String("input") ? QStringLiteral("the input")
                                               : QStringLiteral("something else");
}

/// Where a stop finds the executor: the wait, or what it is doing, and what is on the screen.
QString Statistics::situation(const Event& event) const {
    const bool isStop = event.kind == Kind::Pause || event.kind == Kind::Power || event.kind == Kind::Quit ||
                        event.kind == Kind::Permission;
    if (!isStop) {
        return QString();
    }
    const bool inDeed = std::any_of(onStack_.begin(), onStack_.end(), [](const Event& action) {
        return action.text.startsWith(QLatin1String("hand: "));
    });
    const QString where = event.facts.wait.isEmpty() ? QStringLiteral("no wait") : event.facts.wait;
    return inDeed                     ? where + QStringLiteral(", inside a click on the page")
           : PageWorld::dialogs() > 0 ? where + QStringLiteral(", a dialog open")
                                      : where;
}

void Statistics::countLatency() {
    const auto& counts = latency_.counts();
    for (auto stop = counts.begin(); stop != counts.end(); ++stop) {
        for (auto where = stop->begin(); where != stop->end(); ++where) {
            const QString row = stop.key() + QStringLiteral(" in ") + where.key();
            countUp(latencies, pair(row, QStringLiteral("in the same ms")), where->atOnce);
            countUp(latencies, pair(row, QStringLiteral("within its ramp")), where->inItsRamp);
            countUp(latencies, pair(row, QStringLiteral("later")), where->later);
        }
    }
}

void Statistics::end(const Outcome& outcome) {
    countLatency();
    countUp(totals, QStringLiteral("virtual ms"), outcome.virtualMs);
    countUp(totals, QStringLiteral("events"), static_cast<qint64>(outcome.events.size()));
    uint diary = 0;
    for (const Event& event : outcome.events) {
        diary = qHash(event.toText(), diary);
    }
    countUp(totals, QStringLiteral("diary"), diary);
    countUp(totals, QStringLiteral("findings"), outcome.broken.isEmpty() ? 0 : 1);
}

void Statistics::countUp(const QString& table, const QString& row, qint64 by) {
    tables_[table][row] += by;
}

qint64 Statistics::count(const QString& table, const QString& row) const {
    return tables_.value(table).value(row);
}

QJsonObject Statistics::toJson() const {
    QJsonObject sums;
    for (auto table = tables_.begin(); table != tables_.end(); ++table) {
        QJsonObject rows;
        for (auto row = table->begin(); row != table->end(); ++row) {
            rows[row.key()] = static_cast<double>(*row);
        }
        sums[table.key()] = rows;
    }
    return sums;
}

void Statistics::add(const QJsonObject& sums) {
    for (auto table = sums.begin(); table != sums.end(); ++table) {
        const QJsonObject rows = table->toObject();
        for (auto row = rows.begin(); row != rows.end(); ++row) {
            countUp(table.key(), row.key(), static_cast<qint64>(row->toDouble()));
        }
    }
}

// --- Markdown ---------------------------------------------------------------------------------------

QString Statistics::toMarkdown() const {
    const auto total = [this](const char* row) { return count(totals, QString::fromLatin1(row)); };
    QString text = markdownHead({QStringLiteral("all together"), QString()});
    for (const char* row : {"schedules", "findings", "events", "actions", "actions inside waits", "waits"}) {
        text += markdownRow({QString::fromLatin1(row), QString::number(total(row))});
    }
    text += markdownRow({QStringLiteral("virtual hours"),
                         QString::number(static_cast<double>(total("virtual ms")) / msPerHour, 'f', 1)});
    // A sum, whatever the order in which the schedules ended: equal for equal events.
    text += markdownRow({QStringLiteral("checksum of the events"), QString::number(total("diary"), 16)});
    return text + table(QStringLiteral("Schedules by what is in them"), schedules, QStringLiteral("kind")) +
           table(QStringLiteral("Actions carried out"), actions, QStringLiteral("action")) +
           crossTable(QStringLiteral("Actions inside waits"), inWaits, QStringLiteral("action")) +
           crossTable(QStringLiteral("What ended the waits"), waitEnds, QStringLiteral("wait")) +
           crossTable(QStringLiteral("Stops that met an enabled laser, and when it was disabled"), latencies,
                      QStringLiteral("stop"));
}

QString Statistics::table(const QString& title, const QString& name, const QString& heading) const {
    QString text = QStringLiteral("\n%1:\n\n").arg(title);
    text += markdownHead({heading, QStringLiteral("count")});
    const QMap<QString, qint64> rows = tables_.value(name);
    for (auto row = rows.begin(); row != rows.end(); ++row) {
        text += markdownRow({row.key(), QString::number(*row)});
    }
    return text;
}

QString Statistics::crossTable(const QString& title, const QString& name, const QString& corner) const {
    const QMap<QString, qint64> cells = tables_.value(name);
    QMap<QString, QMap<QString, qint64>> rows;
    QSet<QString> found;
    for (auto cell = cells.begin(); cell != cells.end(); ++cell) {
        const QString column = cell.key().section(QLatin1Char(separator), 1);
        rows[cell.key().section(QLatin1Char(separator), 0, 0)][column] = *cell;
        found.insert(column);
    }
    QStringList columns(found.begin(), found.end());
    columns.sort();
    QString text = QStringLiteral("\n%1:\n\n").arg(title) + markdownHead(QStringList(corner) + columns);
    for (auto row = rows.begin(); row != rows.end(); ++row) {
        QStringList line(row.key());
        for (const QString& column : columns) {
            line << QString::number(row->value(column));
        }
        text += markdownRow(line);
    }
    return text;
}

}  // namespace campaign
