#include "conform/check.h"

namespace conform {

namespace {

Outcome isGone(Bench* bench) {
    const bool isOff = bench->waitFor([bench] { return bench->power() == QLatin1String("off"); }, 3000);
    const QString text =
        QStringLiteral("power \"%1\", mode \"%2\", reason \"%3\", results %4")
            .arg(bench->power(), bench->mode(), bench->adapter()->linkReason().text(), bench->resultText());
    const bool isTold = !bench->adapter()->isLinked() && !bench->adapter()->linkReason().isEmpty() &&
                        bench->mode() == QLatin1String("unknown");
    return isOff && isTold && bench->results().empty() ? passed(text) : failed(text);
}

Outcome losesLink(const Subject& subject) {
    Bench* const bench = subject.bench;
    if (!subject.cutLink) {
        return skipped(QStringLiteral("its link cannot be cut from here"));
    }
    bench->line(60, 0, 0, 50);
    bench->enough();
    bench->waitFor([bench] { return distanceMm(bench->posture().pose, bench->start().pose) > 5; }, 5000);
    subject.cutLink(true);
    const Outcome gone = isGone(bench);
    bench->wait(bench->tolerance().quietMs);
    subject.cutLink(false);
    if (gone.kind != Outcome::Kind::Pass) {
        return gone;
    }
    if (!bench->waitFor([bench] { return bench->adapter()->isLinked(); }, 10000)) {
        return failed(QStringLiteral("the link does not come back"));
    }
    bench->wait(bench->tolerance().quietMs);
    if (bench->power() != QLatin1String("off") || !bench->results().empty()) {
        return failed(QStringLiteral("with the link back: power \"%1\", results %2")
                          .arg(bench->power(), bench->resultText()));
    }
    bench->adapter()->setPower(true);
    if (!bench->waitFor([bench] { return bench->power() == QLatin1String("on"); }, 10000)) {
        return failed(QStringLiteral("the drives cannot be switched on again"));
    }
    bench->line(0, 0);
    bench->enough();
    bench->awaitResults(1);
    return bench->results().size() == 1 ? gone
                                        : failed(QStringLiteral("afterwards %1").arg(bench->resultText()));
}

}  // namespace

std::vector<Check> linkChecks() {
    return {
        {"link-loss",
         "a lost link is told: power off, mode unknown, no result; the drives stay off until they are "
         "switched on",
         losesLink},
    };
}

std::vector<Check> allChecks() {
    std::vector<Check> all;
    for (const auto& some : {resultChecks(), pathChecks(), stopChecks(), signalChecks(), linkChecks()}) {
        all.insert(all.end(), some.begin(), some.end());
    }
    return all;
}

}  // namespace conform
