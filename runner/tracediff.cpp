#include "runner/tracediff.h"

#include "workcell/commandline.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <utility>

namespace run {

namespace {

const QString onlyIn = QStringLiteral("only in %1: ");

QString shortJson(const QJsonValue& value) {
    constexpr int longest = 120;
    // An array keeps any value; its brackets are cut off.
    const QString text = QString::fromUtf8(QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact));
    const QString inner = text.mid(1, text.size() - 2);
    return inner.size() > longest ? inner.left(longest - 1) + QChar(0x2026) : inner;
}

/// "register.write LUMO_DO bit 3": what a line is about, without its value.
QString subject(const QJsonObject& line) {
    const QString kind = line.value(QStringLiteral("kind")).toString();
    const QString name = line.value(QStringLiteral("name")).toString();
    if (kind == QLatin1String("command")) {
        const QJsonObject args = line.value(QStringLiteral("args")).toObject();
        const QString target = args.value(QStringLiteral("name")).toString();
        QString text = target.isEmpty() ? name : name + QLatin1Char(' ') + target;
        if (args.value(QStringLiteral("type")).toString() == QLatin1String("bit")) {
            text += QStringLiteral(" bit %1").arg(args.value(QStringLiteral("bias")).toInt());
        }
        return text;
    }
    if (kind == QLatin1String("set")) {
        return QStringLiteral("set ") + line.value(QStringLiteral("path")).toString();
    }
    if (kind == QLatin1String("station")) {
        return QStringLiteral("station %1").arg(line.value(QStringLiteral("row")).toInt() + 1);
    }
    if (kind == QLatin1String("event")) {
        const QJsonObject action = line.value(QStringLiteral("action")).toObject();
        return QStringLiteral("event ") + action.value(QStringLiteral("do")).toString();
    }
    const QString title = line.value(QStringLiteral("title")).toString();
    return (kind + QLatin1Char(' ') + (title.isEmpty() ? name : title)).trimmed();
}

/// What a line says besides its subject.
QJsonObject content(QJsonObject line) {
    for (const char* key : {"t", "kind", "name", "title", "path", "row"}) {
        line.remove(QLatin1String(key));
    }
    QJsonObject action = line.value(QStringLiteral("action")).toObject();
    if (!action.isEmpty()) {
        action.remove(QStringLiteral("at"));
        action.remove(QStringLiteral("do"));
        line.insert(QStringLiteral("action"), action);
    }
    return line;
}

QString described(const QJsonObject& line) {
    QJsonObject rest = content(line);
    const QJsonValue value = rest.size() == 1 ? *rest.begin() : rest.value(QStringLiteral("args"));
    if (value.isUndefined() && rest.isEmpty()) {
        return subject(line);
    }
    const QJsonObject args = value.toObject();
    const QJsonValue shown = args.contains(QStringLiteral("value")) ? args.value(QStringLiteral("value"))
                             : value.isUndefined()                  ? QJsonValue(rest)
                                                                    : value;
    return shown.isNull() || shown == QJsonObject() ? subject(line)
                                                    : subject(line) + QLatin1Char(' ') + shortJson(shown);
}

/// Adds "PATH OLD -> NEW" for each place at which two values differ. The word "value" is not named.
void addChanges(const QString& path, const QJsonValue& a, const QJsonValue& b, QStringList* changes) {
    if (a == b) {
        return;
    }
    const auto below = [&path](const QString& key) {
        return path.isEmpty() ? key : path + QLatin1Char('.') + key;
    };
    if (a.isObject() && b.isObject()) {
        const QJsonObject from = a.toObject(), to = b.toObject();
        QStringList keys = from.keys() + to.keys();
        keys.removeDuplicates();
        for (const QString& key : qAsConst(keys)) {
            const bool isPlain = key == QLatin1String("args") || key == QLatin1String("action") ||
                                 key == QLatin1String("value");
            addChanges(isPlain ? path : below(key), from.value(key), to.value(key), changes);
        }
        return;
    }
    const QJsonArray from = a.toArray(), to = b.toArray();
    if (a.isArray() && b.isArray() && from.size() == to.size() && !from.isEmpty() &&
        from.first().isObject()) {
        for (int i = 0; i < from.size(); ++i) {
            const QString name = from[i].toObject().value(QStringLiteral("name")).toString();
            addChanges(name.isEmpty() ? below(QString::number(i + 1)) : below(name), from[i], to[i], changes);
        }
        return;
    }
    const auto shown = [](const QJsonValue& value) {
        return value.isUndefined() ? QStringLiteral("nothing") : shortJson(value);
    };
    changes->append((path + QLatin1Char(' ') + shown(a) + QStringLiteral(" -> ") + shown(b)).trimmed());
}

QString later(qint64 ms) {
    return QStringLiteral("%1 ms %2")
        .arg(qAbs(ms))
        .arg(ms > 0 ? QStringLiteral("later") : QStringLiteral("earlier"));
}

/// Compares two traces; see compare().
class Comparison {
public:
    Comparison(const TraceSteps& a, const TraceSteps& b) : a_(a), b_(b) {}

    TraceDiff run() {
        for (const auto& [i, j] : alignedSteps()) {
            compareSteps(i, j);
        }
        compareEvents(QStringLiteral("the cell"), a_.world(), b_.world(), std::nullopt);
        QStringList changes;
        addChanges(QString(), endOf(a_), endOf(b_), &changes);
        for (const QString& change : qAsConst(changes)) {
            add(QStringLiteral("the end"), change);
        }
        summarise();
        return diff_;
    }

private:
    /// Statements that did the same are aligned first; between them, those of one line and type.
    Pairs alignedSteps() const {
        Pairs exact = align(keys(a_, &TraceStep::key), keys(b_, &TraceStep::key));
        Pairs pairs;
        for (std::size_t i = 0; i < exact.size();) {
            Pairs gap;
            while (i < exact.size() && (exact[i].first < 0 || exact[i].second < 0)) {
                gap.push_back(exact[i++]);
            }
            alignGap(gap, &pairs);
            if (i < exact.size()) {
                pairs.push_back(exact[i++]);
            }
        }
        return pairs;
    }

    /// The last line as a person reads it.
    static QJsonObject endOf(const TraceSteps& trace) {
        QJsonObject end = trace.done();
        end.remove(QStringLiteral("kind"));
        end.insert(QStringLiteral("statements executed"), end.take(QStringLiteral("lines")));
        end.insert(QStringLiteral("line"), end.value(QStringLiteral("line")).toInt(-1) + 1);
        return end;
    }

    template <class Key>
    static Keys keys(const TraceSteps& trace, Key key) {
        Keys keys;
        for (const TraceStep& step : trace.steps()) {
            keys.push_back((step.*key)());
        }
        return keys;
    }

    /// Two statements of a gap are the same one when line and type agree, else when they have the same place
    /// and type in what is left.
    void alignGap(const Pairs& gap, Pairs* pairs) const {
        std::vector<int> inA, inB;
        Keys placeA, placeB;
        const auto place = [](const TraceStep& step) {
            return (std::uint64_t(step.line + 1) << 32) ^ (qHash(step.type) + (step.number == 0 ? 1u : 0u));
        };
        for (const auto& [i, j] : gap) {
            if (i >= 0) {
                inA.push_back(i);
                placeA.push_back(place(a_.steps()[std::size_t(i)]));
            } else {
                inB.push_back(j);
                placeB.push_back(place(b_.steps()[std::size_t(j)]));
            }
        }
        Pairs alone;
        const auto flush = [&] {
            pairAlone(alone, pairs);
            alone.clear();
        };
        for (const auto& [i, j] : align(placeA, placeB)) {
            const std::pair<int, int> found{i < 0 ? -1 : inA[std::size_t(i)],
                                            j < 0 ? -1 : inB[std::size_t(j)]};
            if (i < 0 || j < 0) {
                alone.push_back(found);
                continue;
            }
            flush();
            pairs->push_back(found);
        }
        flush();
    }

    void pairAlone(const Pairs& alone, Pairs* pairs) const {
        std::vector<int> inA, inB;
        for (const auto& [i, j] : alone) {
            (i >= 0 ? inA : inB).push_back(i >= 0 ? i : j);
        }
        std::size_t a = 0, b = 0;
        while (a < inA.size() && b < inB.size() &&
               a_.steps()[std::size_t(inA[a])].type == b_.steps()[std::size_t(inB[b])].type) {
            pairs->emplace_back(inA[a++], inB[b++]);
        }
        for (; a < inA.size(); ++a) {
            pairs->emplace_back(inA[a], -1);
        }
        for (; b < inB.size(); ++b) {
            pairs->emplace_back(-1, inB[b]);
        }
    }

    void compareSteps(int i, int j) {
        const TraceStep* const a = i < 0 ? nullptr : &a_.steps()[std::size_t(i)];
        const TraceStep* const b = j < 0 ? nullptr : &b_.steps()[std::size_t(j)];
        if (!a || !b) {
            const TraceStep& step = a ? *a : *b;
            const QString side = a ? QStringLiteral("A") : QStringLiteral("B");
            QStringList commands;
            for (const TraceEvent& event : step.commands) {
                commands.append(described((a ? a_ : b_).text(event)));
            }
            constexpr int most = 3;
            QString text = QStringList(commands.mid(0, most)).join(QStringLiteral("; "));
            if (commands.size() > most) {
                text += QStringLiteral("; and %1 more").arg(commands.size() - most);
            }
            add(step.name(), onlyIn.arg(side) + (text.isEmpty() ? QStringLiteral("the statement") : text));
            return;
        }
        isTold_ = false;
        noteShift(a->t, b->t, b->number > 0 ? b->name() : QString());
        QString name = a->name();
        if (a->number > 0 && a->line != b->line) {
            name += QStringLiteral(", in B ") + b->name();
        }
        compareEvents(name, a->commands, b->commands, std::make_pair(a->t, b->t));
    }

    /// `from`: when the statements began; times are compared from there.
    void compareEvents(const QString& name, const std::vector<TraceEvent>& a,
                       const std::vector<TraceEvent>& b, std::optional<std::pair<qint64, qint64>> from) {
        const auto keysOf = [](const std::vector<TraceEvent>& events) {
            Keys keys;
            keys.reserve(events.size());
            for (const TraceEvent& event : events) {
                keys.push_back(event.key);
            }
            return keys;
        };
        std::vector<const TraceEvent*> onlyA, onlyB;
        const auto flush = [&] {
            tellApart(name, onlyA, onlyB);
            onlyA.clear();
            onlyB.clear();
        };
        for (const auto& [i, j] : align(keysOf(a), keysOf(b))) {
            if (i >= 0 && j >= 0) {
                flush();
                const TraceEvent &inA = a[std::size_t(i)], &inB = b[std::size_t(j)];
                compareFates(name, inA, inB);
                if (from && inA.t >= from->first && inB.t >= from->second) {
                    noteShift(inA.t, inB.t, name, &inB);
                }
            } else if (i >= 0) {
                onlyA.push_back(&a[std::size_t(i)]);
            } else {
                onlyB.push_back(&b[std::size_t(j)]);
            }
        }
        flush();
    }

    /// Lines between equal ones: those about the same thing are told together.
    void tellApart(const QString& name, const std::vector<const TraceEvent*>& onlyA,
                   std::vector<const TraceEvent*> onlyB) {
        for (const TraceEvent* event : onlyA) {
            const QJsonObject line = a_.text(*event);
            const QString about = subject(line);
            const auto other = std::find_if(onlyB.begin(), onlyB.end(), [&](const TraceEvent* candidate) {
                return subject(b_.text(*candidate)) == about;
            });
            if (other == onlyB.end()) {
                add(name, onlyIn.arg(QLatin1Char('A')) + described(line));
                continue;
            }
            QStringList changes;
            addChanges(QString(), content(line), content(b_.text(**other)), &changes);
            add(name, about + QLatin1Char(' ') + changes.join(QStringLiteral(", ")));
            compareFates(name, *event, **other);
            onlyB.erase(other);
        }
        for (const TraceEvent* event : onlyB) {
            add(name, onlyIn.arg(QLatin1Char('B')) + described(b_.text(*event)));
        }
    }

    void compareFates(const QString& name, const TraceEvent& inA, const TraceEvent& inB) {
        if (inA.motion < 0 || inB.motion < 0) {
            return;
        }
        const QString &a = a_.fates()[std::size_t(inA.motion)], &b = b_.fates()[std::size_t(inB.motion)];
        if (a != b) {
            const auto shown = [](const QString& fate) {
                return fate.isEmpty() ? QStringLiteral("no end") : fate;
            };
            add(name, QStringLiteral("the motion: %1 -> %2").arg(shown(a), shown(b)));
        }
    }

    void add(const QString& name, const QString& text) {
        diff_.differences.append(name + QStringLiteral(": ") + text);
    }

    /// Tells where the distance of the two traces in time changes; inside a statement only the first time.
    void noteShift(qint64 inA, qint64 inB, const QString& name, const TraceEvent* event = nullptr) {
        const qint64 shift = inB - inA;
        if (shift == shift_ || name.isEmpty() || (event && isTold_)) {
            return;
        }
        isTold_ = event;
        const QString what = event ? QStringLiteral(": ") + subject(b_.text(*event)) : QString();
        diff_.shifts.append(
            QStringLiteral("%1%2: %3")
                .arg(name, what, shift == 0 ? QStringLiteral("at the same time again") : later(shift)));
        shift_ = shift;
    }

    void summarise() {
        const int count = diff_.differences.size();
        const qint64 shift = b_.endMs() - a_.endMs();
        diff_.summary = count == 0 ? QStringLiteral("equal but for the times")
                                   : QStringLiteral("%1 different").arg(count);
        if (count == 0 && diff_.shifts.isEmpty() && shift == 0) {
            diff_.summary = QStringLiteral("equal");
        } else if (!a_.done().isEmpty() && !b_.done().isEmpty()) {
            diff_.summary += shift == 0 ? QStringLiteral("; B ends at the same time")
                                        : QStringLiteral("; B ends ") + later(shift);
        }
    }

    const TraceSteps& a_;
    const TraceSteps& b_;
    TraceDiff diff_;
    qint64 shift_ = 0;
    bool isTold_ = false;  ///< inside the statement
};

}  // namespace

TraceDiff compare(const TraceSteps& a, const TraceSteps& b) {
    return Comparison(a, b).run();
}

int printTraceDiff(const QString& a, const QString& b) {
    constexpr int badInput = 2;
    Problem problem;
    const std::optional<TraceSteps> first = TraceSteps::read(a, &problem);
    const std::optional<TraceSteps> second = first ? TraceSteps::read(b, &problem) : std::nullopt;
    if (!second) {
        printError(problem.text());
        return badInput;
    }
    const TraceDiff diff = compare(*first, *second);
    for (const QString& line : diff.differences + diff.shifts + QStringList(diff.summary)) {
        workcell::print(line + QLatin1Char('\n'));
    }
    return diff.isEqual() ? 0 : 1;
}

}  // namespace run
