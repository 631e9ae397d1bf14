#include "campaign/scenarioreader.h"
#include "campaign/shrinker.h"
#include "support/executorbench.h"

#include <QTest>

using namespace campaign;

namespace {

bool hasKind(const QJsonObject& scenario, const QString& kind) {
    for (const QJsonValue action : scenario["actions"].toArray()) {
        if (action.toObject()["kind"].toString() == kind) {
            return true;
        }
    }
    return false;
}

}  // namespace

class TestCampaignTools : public QObject {
    Q_OBJECT

private slots:
    void readsBackWhatItWrote() {
        for (quint64 seed = 1; seed <= 50; ++seed) {
            const QJsonObject written = drawScenario(seed).toJson();
            Scenario read;
            QString problem;
            QVERIFY2(scenarioFromJson(written, &read, &problem), qPrintable(problem));
            QCOMPARE(read.toJson(), written);
        }
    }

    void refusesUnknownWords_data() {
        QTest::addColumn<QJsonObject>("scenario");
        QTest::newRow("action") << QJsonObject{{"actions", QJsonArray{QJsonObject{{"kind", "dance"}}}}};
        QTest::newRow("no action") << QJsonObject{{"actions", QJsonArray{QJsonObject()}}};
        QTest::newRow("port") << QJsonObject{{"disabledPorts", QJsonArray{"MUSIC"}}};
        QTest::newRow("stage") << QJsonObject{{"stage", "opera"}};
    }
    void refusesUnknownWords() {
        QFETCH(QJsonObject, scenario);
        Scenario read;
        QString problem;
        QVERIFY(!scenarioFromJson(scenario, &read, &problem));
        QVERIFY(!problem.isEmpty());
    }

    /// Fails while a pause and a loss of power are in it and the program has two welds or more.
    void shrinksToWhatTheFaultNeeds() {
        Scenario scenario = drawScenario(7);
        for (const Action::Kind kind : {Action::Kind::Pause, Action::Kind::Power}) {
            Action action;
            action.kind = kind;
            action.number = 40;
            scenario.actions.insert(scenario.actions.size() / 2, action);
        }
        const QJsonObject open{{"type", "open"}, {"index", 2}};
        scenario.program.append(open);
        scenario.program.prepend(open);
        const auto welds = [](const QJsonObject& object) {
            int count = 0;
            for (const QJsonValue line : object["program"].toArray()) {
                count += line.toObject()["type"].toString() == QLatin1String("open") ? 1 : 0;
            }
            return count;
        };
        Shrinker shrinker(
            [&welds](const QJsonObject& object) {
                return hasKind(object, QStringLiteral("pause")) && hasKind(object, QStringLiteral("power")) &&
                       welds(object) >= 2;
            },
            5000);
        const QJsonObject shrunk = shrinker.shrunk(scenario.toJson());
        QCOMPARE(shrunk["actions"].toArray().size(), 2);
        QCOMPARE(shrunk["actions"].toArray()[0].toObject()["number"].toInt(), 0);
        const QJsonObject bare{{"type", "open"}};
        QCOMPARE(shrunk["program"].toArray(), (QJsonArray{bare, bare}));
        QVERIFY(shrunk["sets"].toArray().isEmpty());
        QCOMPARE(shrunk["seed"].toDouble(), 7.0);
    }

    void asksNoMoreOftenThanAllowed() {
        int asked = 0;
        Shrinker shrinker([&asked](const QJsonObject&) { return ++asked > 0; }, 3);
        QVERIFY(!shrinker.shrunk(drawScenario(3).toJson()).isEmpty());
        QCOMPARE(asked, 3);
    }
};

LUMO_TEST_MAIN(TestCampaignTools)

#include "test_campaign_tools.moc"
