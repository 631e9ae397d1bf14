#include "runner/stress/bench.h"

#include "runner/session.h"

#include <QThread>

#include <algorithm>

namespace run::stress {

namespace {

constexpr int hangMs = 100000;

Verdict verdictOf(const Answer& answer) {
    Verdict verdict = Verdict::from(answer.text);
    if (!answer.death.isEmpty()) {
        verdict.rule = QStringLiteral("process");
        verdict.text = answer.death;
    }
    return verdict;
}

/// In the child.
Verdict tryIt(Session* session, const Trial& trial) {
    Verdict verdict;
    Problem problem;
    if (!session->vary(trial, &problem)) {
        verdict.rule = QStringLiteral("trial");
        verdict.text = problem.text();
        return verdict;
    }
    session->play();
    const std::vector<workcell::safety::Event>& events = session->safety()->events();
    const std::vector<workcell::safety::Breach> breaches = session->safety()->breaches();
    verdict.ms = events.empty() ? 0 : events.back().ms;
    if (breaches.empty()) {
        return verdict;
    }
    const workcell::safety::Breach& first = breaches.front();
    verdict.rule = QLatin1String(first.rule);
    verdict.text = first.text;
    verdict.atMs = events[first.event].ms;
    auto breach = breaches.begin();
    for (std::size_t i = 0; i < events.size(); ++i) {
        verdict.events += events[i].toText() + QLatin1Char('\n');
        for (; breach != breaches.end() && breach->event == i; ++breach) {
            verdict.events += QStringLiteral("!!!! ") + breachText(*breach, events[i]) + QLatin1Char('\n');
        }
    }
    return verdict;
}

/// Removes halves, quarters … single elements of a list while `holds`.
void shrink(QJsonArray* list, const std::function<bool(const QJsonArray&)>& holds) {
    for (int part = list->size(); part > 0; part /= 2) {
        for (int at = 0; at < list->size();) {
            QJsonArray shorter;
            for (int i = 0; i < list->size(); ++i) {
                if (i < at || i >= at + part) {
                    shorter.append(list->at(i));
                }
            }
            if (holds(shorter)) {
                *list = shorter;
            } else {
                at += part;
            }
        }
    }
}

}  // namespace

Bench::Bench(Session* session)
    : session_(session), children_(std::max(1, QThread::idealThreadCount()), hangMs) {}

Verdict Bench::judge(const Trial& trial) const {
    Verdict verdict;
    judgeAll(
        1, [&trial](int) { return trial; }, [&verdict](int, const Verdict& given) { verdict = given; });
    return verdict;
}

void Bench::judgeAll(int count, const std::function<Trial(int)>& trialOf,
                     const std::function<void(int, const Verdict&)>& take) const {
    children_.run(
        count, [this, &trialOf](int number) { return tryIt(session_, trialOf(number)).toJson(); },
        [&take](int number, const Answer& answer) { take(number, verdictOf(answer)); });
}

Trial Bench::shrunk(const Trial& trial, const Verdict& verdict, bool lines) const {
    Trial least = trial;
    const auto shrinkScenario = [&] {
        shrink(&least.scenario, [&](const QJsonArray& shorter) {
            Trial tried = least;
            tried.scenario = shorter;
            return judge(tried).isLike(verdict);
        });
    };
    shrinkScenario();
    if (lines && least.program) {
        QJsonArray program = *least.program;
        shrink(&program, [&](const QJsonArray& shorter) {
            Trial tried = least;
            tried.program = shorter;
            const bool same = !shorter.isEmpty() && judge(tried).isLike(verdict);
            least = same ? tried : least;
            return same;
        });
        shrinkScenario();
    }
    return least;
}

}  // namespace run::stress
