// The simulated controller keeps every rule, and each of its quirks breaks the one that it is about.

#include "conform/report.h"
#include "conform/session.h"
#include "support/suite.h"

#include <algorithm>

using conform::Outcome;

class TestConform : public QObject {
    Q_OBJECT
private:
    static conform::Options options(const QString& backend, const QString& quirk = {}) {
        conform::Options options;
        options.backend = backend;
        options.quirk = quirk;
        options.loopOutput = "LUMO_DO.#7";
        options.loopInput = "LUMO_DI.#7";
        options.repeats = 3;
        return options;
    }
    static conform::Check checkOf(const QString& id) {
        const std::vector<conform::Check> all = conform::allChecks();
        return *std::find_if(all.begin(), all.end(),
                             [&](const conform::Check& check) { return id == QLatin1String(check.id); });
    }

private slots:
    void simulator_keepsEveryRule() {
        for (const char* backend : {"simulator", "simulator:7"}) {
            conform::Session session(options(backend));
            QString error;
            QVERIFY2(session.prepare(&error), qPrintable(error));
            for (const conform::Check& check : conform::allChecks()) {
                const conform::Judged judged = session.judge(check);
                QVERIFY2(judged.outcome.kind == Outcome::Kind::Pass, qPrintable(conform::judgedText(judged)));
                QVERIFY2(judged.violations.isEmpty(), qPrintable(conform::judgedText(judged)));
            }
            // On virtual time nothing waits for the machine.
            const std::vector<conform::Figure> figures = session.measureTimes();
            QCOMPARE(int(figures.size()), 6);
            for (const conform::Figure& figure : figures) {
                const double worst = *std::max_element(figure.ms.begin(), figure.ms.end());
                QVERIFY2(worst <= (figure.name.startsWith("stop") ? 30 : 20),
                         qPrintable(conform::figureText(figure)));
            }
        }
    }

    /// They would pass by judging nothing.
    void mistypedNames_areRefused() {
        for (const QStringList& arguments :
             {QStringList{"simulator", "--only", "stop,stpo"}, {"simulator", "--quirk", "lat"}}) {
            conform::Options read;
            QVERIFY2(!conform::readOptions(arguments, &read).isEmpty(), qPrintable(arguments.last()));
        }
    }

    void eachQuirk_failsTheRuleThatItBreaks_data() {
        QTest::addColumn<QString>("check");
        QTest::newRow("bunch") << "apart";
        QTest::newRow("sync") << "not-early";
        QTest::newRow("late") << "stop";
        QTest::newRow("double") << "one-result";
        QTest::newRow("wrongKind") << "own-command";
        QTest::newRow("slowState") << "state";
        QTest::newRow("noResult") << "one-result";
        QTest::newRow("failAtEnd") << "target";
    }
    void eachQuirk_failsTheRuleThatItBreaks() {
        QFETCH(QString, check);
        conform::Session session(options("simulator", QTest::currentDataTag()));
        QString error;
        QVERIFY2(session.prepare(&error), qPrintable(error));
        const conform::Judged judged = session.judge(checkOf(check));
        QVERIFY2(judged.outcome.kind == Outcome::Kind::Fail, qPrintable(conform::judgedText(judged)));
        QVERIFY(!judged.outcome.text.isEmpty());
    }
};

LUMO_TEST(TestConform)
#include "test_conform.moc"
