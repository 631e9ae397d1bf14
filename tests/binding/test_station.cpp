// What a station's record means: edges, kinds, signals; and the queue of projects.

#include "binding/inputwatch.h"
#include "binding/station.h"
#include "binding/stationqueue.h"
#include "editor/language.h"
#include "support/executorbench.h"

#include <QJsonArray>
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

    static void offerInputs() {
        kordservice()
            ->dataNode("device.io")
            ->loadJson(nullptr, QJsonObject{{"DI", QJsonObject{{"ON", true}, {"OFF", false}}}});
        kordservice()
            ->dataNode("register.values")
            ->loadJson(nullptr, QJsonObject{{"R", QJsonArray{false, true}}});
    }

    /// That many stations whose start inputs IN0, IN1 … are low.
    static void listen(int count) {
        QJsonArray stations;
        for (int row = 0; row < count; ++row) {
            stations << QJsonObject{
                {"DI", QStringLiteral("IN%1").arg(row)}, {"DI_type", "IO"}, {"type", "上升沿"}};
            input(row, false);
        }
        m()->regist(nullptr, "lumo")->loadJson(nullptr, QJsonObject{{"signalsConfig", stations}});
    }
    static void input(int row, bool level) {
        kordservice()->dataNode("device.io")->set(nullptr, QStringLiteral("DI.IN%1").arg(row), level);
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

    void stands_atTheLevelOfItsEdge() {
        const SignalSource named = waiting(0).output;
        for (const bool level : {true, false}) {
            QCOMPARE(lumo::stands(Edge::Rising, named, level), level);
            QCOMPARE(lumo::stands(Edge::Falling, named, level), !level);
            QVERIFY(!lumo::stands(Edge::None, named, level));
            QVERIFY(!lumo::stands(Edge::Falling, SignalSource(), level));
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
        QTest::newRow("register's first bit")
            << QByteArray(R"({"DO_type":"Register","DO_reg":{"name":"R","bias":0}})")
            << StationSignal::StartOutput << "Start: Register"
            << "R[1]";
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

    // --- The controller ---------------------------------------------------------------------------

    void level_isThatOfTheInputThatCounts_data() {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<bool>("level");
        const auto row = [](const char* name, const char* json, bool level) {
            QTest::newRow(name) << QByteArray(json) << level;
        };
        row("input on", R"({"DI_type":"IO","DI":"ON","DI_reg":{"name":"R","bias":0}})", true);
        row("input off", R"({"DI_type":"IO","DI":"OFF","DI_reg":{"name":"R","bias":1}})", false);
        row("input that is not there", R"({"DI_type":"IO","DI":"NONE"})", false);
        row("no input", R"({"DI_type":"IO","DI":"","DI_reg":{"name":"R","bias":1}})", false);
        row("bit on", R"({"DI_type":"register","DI":"OFF","DI_reg":{"name":"R","bias":1}})", true);
        row("bit off", R"({"DI_type":"register","DI":"ON","DI_reg":{"name":"R","bias":0}})", false);
        row("bit that is not there", R"({"DI_type":"register","DI_reg":{"name":"R","bias":2}})", false);
        row("no bit said: the first", R"({"DI_type":"register","DI_reg":{"name":"R"}})", false);
        row("register that is not there", R"({"DI_type":"register","DI_reg":{"name":"S","bias":1}})", false);
        row("no register", R"({"DI_type":"register","DI":"ON"})", false);
    }

    void level_isThatOfTheInputThatCounts() {
        QFETCH(QByteArray, json);
        offerInputs();
        QTEST(inputLevel(this, readSource(record(json).get(), StationSignal::StartInput)), "level");
    }

    void output_isSwitchedWhereItIsConnected_data() {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<bool>("on");
        QTest::addColumn<QString>("call");
        const QByteArray reg(
            R"({"DO2_type":"Register","DO2":"DO7","DO2_reg":{"name":"R","type":"bool","bias":3}})");
        QTest::newRow("output") << QByteArray(R"({"DO2_type":"IO","DO2":"DO7","DO2_reg":{"name":"R"}})")
                                << true << "device.io.out.do name=DO7 value=true";
        QTest::newRow("output off") << QByteArray(R"({"DO2_type":"IO","DO2":"DO7"})") << false
                                    << "device.io.out.do name=DO7 value=false";
        QTest::newRow("register") << reg << true << "register.write bias=3 name=R type=bool value=true";
        QTest::newRow("register off") << reg << false << "register.write bias=3 name=R type=bool value=false";
        QTest::newRow("no output") << QByteArray(R"({"DO2_type":"IO","DO2_reg":{"name":"R"}})") << true << "";
        QTest::newRow("no register") << QByteArray(R"({"DO2_type":"Register","DO2":"DO7"})") << true << "";
    }

    void output_isSwitchedWhereItIsConnected() {
        QFETCH(QByteArray, json);
        QFETCH(bool, on);
        QObject scope;
        QStringList calls;
        connect(kordservice(), &KordService::issued, &scope, [&calls](const KordCall& call) {
            QString text = call.name;
            for (const char* argument : {"bias", "name", "type", "value"}) {
                const QVariant value = call.argument(QLatin1String(argument));
                if (value.isValid()) {
                    text += QStringLiteral(" %1=%2").arg(QLatin1String(argument), value.toString());
                }
            }
            calls << text;
        });
        switchOutput(this, readSource(record(json).get(), StationSignal::StopOutput), on);
        QTEST(calls.join(';'), "call");
    }

    void watch_heldInput_triggersOnceItHasLeft() {
        InputWatch watch(StationSignal::StartInput);
        listen(3);
        watch.rearm(this);  // nobody listens yet
        watch.takeBaselines(this);
        for (int row = 0; row < 3; ++row) {
            input(row, true);
        }
        QCOMPARE(watch.look(this), QVector<int>({0, 1, 2}));
        watch.rearm(this, 1);
        QCOMPARE(watch.look(this), QVector<int>({0, 2}));
        watch.rearm(this);
        QCOMPARE(watch.look(this), QVector<int>());
        input(1, false);
        QCOMPARE(watch.look(this), QVector<int>());
        input(1, true);
        QCOMPARE(watch.look(this), QVector<int>({1}));
        watch.takeBaselines(this);  // the switch: held inputs are deaf until it is pressed again
        input(1, false);
        QCOMPARE(watch.look(this), QVector<int>());
        input(1, true);
        QCOMPARE(watch.look(this), QVector<int>());
    }

    void watch_keepsTheBaselinesOfTheOtherRows() {
        InputWatch watch(StationSignal::StartInput);
        listen(3);
        watch.takeBaselines(this);
        for (const int outside : {-1, 3}) {
            watch.removeRow(outside);
            watch.rearm(this, outside);
        }
        m("lumo.signalsConfig")->c(0)->set(this, "stationname", "another name");
        m("lumo.signalsConfig")->c(1)->set(this, "DI", "IN9");
        for (const int signal : {0, 2, 9}) {
            input(signal, true);
        }
        QCOMPARE(watch.look(this), QVector<int>({0, 2}));
        watch.removeRow(1);  // whose baseline is high
        m("lumo.signalsConfig")->remove(this, "#1");
        QCOMPARE(watch.look(this), QVector<int>({0, 1}));
    }

    // --- The queue --------------------------------------------------------------------------------

    void queue_holdsAProjectOnce_withWhoeverAskedForIt() {
        StationQueue queue;
        queue.add("b", waiting(1));
        queue.add("a", waiting(0));
        queue.add("b", waiting(4));
        queue.add("b", waiting(1));
        QCOMPARE(queue.size(), 2);
        const int id = queue.first().id;
        QVERIFY(queue.isFirst(id));
        QCOMPARE(rowsOf(queue.first().stations), QVector<int>({1, 4}));
        QCOMPARE(queue.takeFirst().project, "b");
        QCOMPARE(rowsOf(queue.first().stations), QVector<int>({0}));
        queue.add("b", waiting(2));
        QCOMPARE(rowsOf(queue.takeAll(true)), QVector<int>({2}));
        QCOMPARE(rowsOf(queue.takeAll(false)), QVector<int>({0}));
        queue.add("b", waiting(1));
        QVERIFY(!queue.isFirst(id));  // it was asked for anew
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
