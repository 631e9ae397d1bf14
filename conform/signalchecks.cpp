#include "conform/check.h"

#include "kord/kordservice.h"
#include "mendo/modulemanager.h"

#include <QJsonArray>

namespace conform {

namespace {

constexpr int answerMs = 3000;

QVariant shown(const QString& name, int bias) {
    return kordservice()->dataNode(mName(QStringLiteral("register.values"), name, mIndex(bias)))->value();
}

bool isAnswered(Bench* bench, size_t count) {
    return bench->waitFor([&] { return bench->of(Event::Kind::Answer).size() >= count; }, answerMs);
}

/// 0 and -1 as a text.
QString answers(const Bench* bench) {
    QStringList texts;
    for (const Event& answer : bench->of(Event::Kind::Answer)) {
        texts << answer.value.toString();
    }
    return texts.isEmpty() ? QStringLiteral("none") : texts.join(QStringLiteral(", "));
}

Outcome writesAreAnswered(const Subject& subject) {
    Bench* const bench = subject.bench;
    if (subject.bits.isEmpty()) {
        return skipped(QStringLiteral("it offers no writable register of bits"));
    }
    for (const int value : {1, 0, 1, 0}) {
        bench->write(subject.bits, "bit", 0, value);
        if (shown(subject.bits, 0).toInt() != value) {
            return failed(QStringLiteral("behind the write of %1 the node shows %2")
                              .arg(value)
                              .arg(shown(subject.bits, 0).toString()));
        }
    }
    const bool isEach = isAnswered(bench, 4);
    bench->wait(bench->tolerance().quietMs / 2);
    const QString text = QStringLiteral("answers %1").arg(answers(bench));
    const bool isDark = shown(subject.bits, 0).toInt() == 0;
    return isEach && isDark && answers(bench) == QLatin1String("0, 0, 0, 0") ? passed() : failed(text);
}

Outcome numbersAreKept(const Subject& subject) {
    Bench* const bench = subject.bench;
    if (subject.number.isEmpty()) {
        return skipped(QStringLiteral("it offers no writable register of 16 bits"));
    }
    for (const int value : {32767, -32768, -1, 1638, 0}) {
        bench->forget();
        bench->write(subject.number, "int16", 0, value);
        if (!isAnswered(bench, 1) || answers(bench) != QLatin1String("0")) {
            return failed(QStringLiteral("%1: answer %2").arg(value).arg(answers(bench)));
        }
        bench->wait(bench->tolerance().slackMs);  // for a value that is read back
        if (shown(subject.number, 0).toInt() != value) {
            return failed(
                QStringLiteral("%1 is shown as %2").arg(value).arg(shown(subject.number, 0).toString()));
        }
    }
    return passed();
}

Outcome wrongWritesAreRefused(const Subject& subject) {
    Bench* const bench = subject.bench;
    bench->write(QStringLiteral("NO_SUCH_REGISTER"), "bit", 0, 1);
    if (!isAnswered(bench, 1) || answers(bench) != QLatin1String("-1") ||
        bench->of(Event::Kind::Rejected).size() != 1) {
        return failed(QStringLiteral("a register that does not exist: answer %1").arg(answers(bench)));
    }
    if (subject.bits.isEmpty()) {
        return passed();
    }
    bench->forget();
    bench->write(subject.bits, "int16", 0, 1);
    bench->write(subject.bits, "bit", 1000, 1);
    const bool isEach = isAnswered(bench, 2);
    return isEach && answers(bench) == QLatin1String("-1, -1") && bench->of(Event::Kind::Output).empty()
               ? passed()
               : failed(
                     QStringLiteral("a wrong type and an element too many: answers %1").arg(answers(bench)));
}

Outcome batchIsWrittenWhole(const Subject& subject) {
    Bench* const bench = subject.bench;
    if (subject.bits.isEmpty()) {
        return skipped(QStringLiteral("it offers no writable register of bits"));
    }
    if (!kordservice()->commandNode(QString())->hasCmobj(QStringLiteral("register.write_multi"))) {
        return skipped(QStringLiteral("register.write_multi is not offered"));
    }
    QJsonArray records;
    for (const int value : {1, 0}) {
        for (const int bit : {0, 1}) {
            records.append(
                QJsonObject{{"name", subject.bits}, {"type", "bit"}, {"bias", bit}, {"value", value}});
        }
    }
    bench->writeTogether(records);
    const bool isOne = isAnswered(bench, 1);
    bench->wait(bench->tolerance().quietMs / 2);
    QStringList changes;
    for (const Event& output : bench->of(Event::Kind::Output)) {
        changes << QStringLiteral("%1=%2").arg(output.name.section(QLatin1Char('.'), 1),
                                               output.value.toString());
    }
    const QString text =
        QStringLiteral("answers %1; %2").arg(answers(bench), changes.join(QStringLiteral(", ")));
    return isOne && text == QLatin1String("answers 0; #0=true, #1=true, #0=false, #1=false") ? passed()
                                                                                             : failed(text);
}

Outcome outputsDoNotWait(const Subject& subject) {
    Bench* const bench = subject.bench;
    if (subject.bits.isEmpty()) {
        return skipped(QStringLiteral("it offers no writable register of bits"));
    }
    bench->line(60, 0, 0, 50);
    bench->enough();
    bench->waitFor([bench] { return distanceMm(bench->posture().pose, bench->start().pose) > 5; }, 5000);
    const double began = bench->nowMs();
    bench->write(subject.bits, "bit", 0, 1);
    bench->write(subject.bits, "bit", 0, 0);
    const bool isEach = isAnswered(bench, 2);
    const double took = bench->nowMs() - began;
    const bool isEarly = isEach && bench->results().empty();
    bench->awaitResults(1);
    const QString text = QStringLiteral("answered after %1 ms, results before it %2")
                             .arg(took, 0, 'f', 1)
                             .arg(isEarly ? 0 : 1);
    return isEarly && bench->results().size() == 1 ? passed(text) : failed(text);
}

/// An output that is wired to an input: every edge comes back, in order.
Outcome edgesComeBack(const Subject& subject) {
    Bench* const bench = subject.bench;
    if (subject.loopOutput.isEmpty()) {
        return skipped(QStringLiteral("no output is wired to an input (--loop)"));
    }
    constexpr int edges = 20;
    for (int i = 0; i < edges; ++i) {
        const bool on = i % 2 == 0;
        const QString name = subject.loopOutput.section(QLatin1Char('.'), 0, 0);
        const size_t before = bench->of(Event::Kind::Input).size();
        if (name == subject.loopOutput) {
            kordservice()->command(bench, QStringLiteral("device.io.out.do"),
                                   QVariantHash{{"name", name}, {"value", on ? 1 : 0}});
        } else {
            bench->write(name, "bit", subject.loopOutput.section(QLatin1Char('#'), 1).toInt(), on ? 1 : 0);
        }
        if (!bench->waitFor([&] { return bench->of(Event::Kind::Input).size() > before; }, answerMs)) {
            return failed(QStringLiteral("edge %1 of %2 did not come").arg(i + 1).arg(edges));
        }
        const Event input = bench->of(Event::Kind::Input).back();
        if (input.name != subject.loopInput || input.value.toBool() != on) {
            return failed(QStringLiteral("%1 = %2 came").arg(input.name, input.value.toString()));
        }
    }
    return passed();
}

}  // namespace

std::vector<Check> signalChecks() {
    return {
        {"writes", "a write is shown at once, answered once, in order", writesAreAnswered, false},
        {"numbers", "16-bit values go through unchanged, negative ones too", numbersAreKept, false},
        {"wrong-writes", "a write of an unknown name, element or type is refused and told",
         wrongWritesAreRefused, false},
        {"write-multi", "register.write_multi writes all in order, with one answer", batchIsWrittenWhole,
         false},
        {"edges", "every edge of an input is told, in order", edgesComeBack, false},
        {"outputs-in-motion", "a write does not wait for motions", outputsDoNotWait},
    };
}

}  // namespace conform
