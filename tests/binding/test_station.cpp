// What a station's record means: edges, kinds, signals; and the queue of projects.

#include "binding/station.h"
#include "binding/stationqueue.h"
#include "editor/language.h"
#include "support/executorbench.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace lumo;

Q_DECLARE_METATYPE(lumo::Edge)
Q_DECLARE_METATYPE(lumo::StationSignal)

class TestStation : public QObject {
    Q_OBJECT

    static std::unique_ptr<ModuleObject> record(const QByteArray& json) {
        auto node = std::make_unique<ModuleObject>();
        node->loadJson(nullptr, QJsonDocument::fromJson(json).object());
        return node;
    }

    static Level level(char seen) { return seen == '-' ? Level() : Level(seen == '1'); }

    static WaitingStation waiting(int row, const char* output = "DO1") {
        SignalSource source;
        source.ioName = QString::fromLatin1(output);
        return {row, source};
    }

    static QVector<int> rowsOf(const QVector<WaitingStation>& stations) {
        QVector<int> rows;
        for (const WaitingStation& one : stations) {
            rows << one.row;
        }
        return rows;
    }

    static void languages() {
        QTest::addColumn<QString>("language");
        for (const char* language : {"cn", "en", "ru"}) {
            QTest::newRow(language) << QString(language);
        }
    }

private slots:
    // Of baseline and latest look, each '1', '0', or '-' where there was none.
    void triggers_inTheDirectionOfTheEdge() {
        const QStringList rising{"01", "-1"};
        const QStringList falling{"10"};
        for (const char baseline : {'0', '1', '-'}) {
            for (const char latest : {'0', '1', '-'}) {
                const QString pair = QString(QLatin1Char(baseline)) + QLatin1Char(latest);
                const Level from = level(baseline);
                const Level to = level(latest);
                QVERIFY2(lumo::triggers(Edge::Rising, from, to) == rising.contains(pair), qPrintable(pair));
                QVERIFY2(lumo::triggers(Edge::Falling, from, to) == falling.contains(pair), qPrintable(pair));
                QVERIFY2(!lumo::triggers(Edge::None, from, to), qPrintable(pair));
            }
        }
    }

    void edgeWords_areKnownInEveryLanguage_data() { languages(); }

    void edgeWords_areKnownInEveryLanguage() {
        QFETCH(QString, language);
        QMap<Edge, QString> words;
        {
            const Language stored(language);
            for (const Edge edge : {Edge::Rising, Edge::Falling}) {
                words[edge] = edgeWord(edge);
                QVERIFY(!words[edge].isEmpty());
            }
        }
        for (const char* now : {"cn", "en", "ru"}) {
            const Language installed(now);
            for (const Edge edge : {Edge::Rising, Edge::Falling}) {
                QCOMPARE(edgeFrom(words[edge]), edge);
                const auto station = record("{}");
                station->set(nullptr, "type2", words[edge]);
                QCOMPARE(edgeText(station.get(), StationSignal::StopInput), edgeWord(edge));
            }
        }
    }

    void otherWords_areNoEdge_data() {
        QTest::addColumn<QString>("word");
        QTest::newRow("nothing") << "";
        QTest::newRow("another word") << "rising";
    }

    void otherWords_areNoEdge() {
        QFETCH(QString, word);
        QCOMPARE(edgeFrom(word), Edge::None);
        const auto station = record("{}");
        station->set(nullptr, "type", word);
        QCOMPARE(edgeText(station.get(), StationSignal::StartInput), word);
    }

    void texts_data() {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<StationSignal>("which");
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("text");
        QTest::newRow("input") << QByteArray(R"({"DI":"DI3","DI_type":"IO"})") << StationSignal::StartInput
                               << "Start: IO"
                               << "DI3";
        QTest::newRow("register, another language's word")
            << QByteArray(R"({"DI":"DI3","DI2_type":"寄存器","DI2_reg":{"name":"R","bias":2}})")
            << StationSignal::StopInput << "Stop: Register"
            << "R[3]";
        QTest::newRow("register without a bit")
            << QByteArray(R"({"DO_type":"Register","DO_reg":{"name":"R","bias":-1}})")
            << StationSignal::StartOutput << "Start: Register"
            << "R";
        QTest::newRow("last bit of all")
            << QByteArray(R"({"DI_type":"","DI_reg":{"name":"R","bias":2147483647}})")
            << StationSignal::StartInput << "Start: Register"
            << "R[2147483648]";
        QTest::newRow("nothing chosen") << QByteArray(R"({"DO2_type":"Register","DO2":"DO1"})")
                                        << StationSignal::StopOutput << "Stop: Register"
                                        << "";
    }

    void texts() {
        QFETCH(QByteArray, json);
        QFETCH(StationSignal, which);
        const Language english("en");
        const auto station = record(json);
        QTEST(kindText(which, readSource(station.get(), which)), "kind");
        QTEST(sourceText(readSource(station.get(), which)), "text");
    }

    void samplePeriod_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("ms");
        QTest::newRow("as it stands") << "250" << 250;
        QTest::newRow("empty") << "" << 100;
        QTest::newRow("zero would never rest") << "0" << 100;
        QTest::newRow("negative") << "-5" << 100;
        QTest::newRow("no number") << "fast" << 100;
    }

    void samplePeriod() {
        QFETCH(QString, text);
        QTEST(samplePeriodMs(text), "ms");
    }

    // --- The queue --------------------------------------------------------------------------------

    void queue_holdsAProjectOnce_withWhoeverAskedForIt() {
        StationQueue queue;
        queue.add("b", waiting(1));
        queue.add("a", waiting(0));
        queue.add("b", waiting(4));
        queue.add("b", waiting(1));
        QCOMPARE(queue.size(), 2);
        QCOMPARE(rowsOf(queue.first().stations), QVector<int>({1, 4}));
        QCOMPARE(queue.takeFirst().project, "b");
        QCOMPARE(rowsOf(queue.first().stations), QVector<int>({0}));
    }

    void queue_keepsEveryOutputThatWasSwitchedOn() {
        StationQueue queue;
        queue.add("a", waiting(1, "DO1"));
        queue.add("a", waiting(1, "DO2"));  // the station was given another output
        QCOMPARE(queue.first().stations.size(), 2);
    }

    void queue_followsTheRows() {
        StationQueue queue;
        queue.add("a", waiting(5));
        queue.add("b", waiting(4));
        queue.add("b", waiting(6));
        queue.removeRow(5);
        QCOMPARE(rowsOf(queue.takeFirst().stations), QVector<int>({-1}));
        QCOMPARE(rowsOf(queue.takeFirst().stations), QVector<int>({4, 5}));
    }

    void queue_withdraw_data() {
        QTest::addColumn<bool>("firstRuns");
        QTest::addColumn<int>("projects");
        QTest::addColumn<int>("outputs");
        QTest::newRow("nothing runs") << false << 1 << 3;
        QTest::newRow("the first runs") << true << 2 << 2;
    }

    void queue_withdraw() {
        QFETCH(bool, firstRuns);
        StationQueue queue;
        queue.add("a", waiting(1));
        queue.add("b", waiting(1));
        queue.add("c", waiting(2));
        queue.add("c", waiting(1));
        QTEST(queue.withdraw(1, firstRuns).size(), "outputs");
        QTEST(queue.size(), "projects");
    }
};

LUMO_TEST_MAIN(TestStation)
#include "test_station.moc"
