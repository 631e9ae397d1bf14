#include "mendo/moduleobject.h"
#include "runner/jsontext.h"
#include "runner/jsonwriter.h"

#include <QtTest>

#include <limits>

using run::JsonText;
using run::JsonWriter;
using run::Problem;

class RunnerJson : public QObject {
    Q_OBJECT
private slots:
    void numberText_data();
    void numberText();
    void strings_data();
    void strings();
    void mapsAreSorted_listsAreNot();
    void nodesKeepTheirOrder();
    void compactKeepsKeyOrder();
    void placesOfEntries_data();
    void placesOfEntries();
};

void RunnerJson::numberText_data() {
    QTest::addColumn<double>("number");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("zero") << 0.0 << QByteArray("0");
    QTest::newRow("whole") << 16384.0 << QByteArray("16384");
    QTest::newRow("million") << 1e6 << QByteArray("1000000");
    QTest::newRow("negative") << -42.0 << QByteArray("-42");
    QTest::newRow("tenth") << 0.1 << QByteArray("0.1");
    QTest::newRow("pi") << 3.141592653589793 << QByteArray("3.141592653589793");
    QTest::newRow("sum") << 0.1 + 0.2 << QByteArray("0.30000000000000004");
    QTest::newRow("single precision") << double(0.1f) << QByteArray("0.10000000149011612");
    QTest::newRow("tiny") << 1e-9 << QByteArray("1e-09");
    QTest::newRow("huge") << 1e300 << QByteArray("1e+300");
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << QByteArray("null");
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << QByteArray("null");
}

void RunnerJson::numberText() {
    QFETCH(double, number);
    QTEST(run::numberText(number), "text");
    if (std::isfinite(number))
        QCOMPARE(run::numberText(number).toDouble(), number);
}

void RunnerJson::strings_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("quotes") << QStringLiteral("a \"b\" \\ c");
    QTest::newRow("controls") << QStringLiteral(
        "a\tb\nc\rd\x01"
        "e");
    QTest::newRow("chinese") << QStringLiteral("未选中启动行");
    QTest::newRow("outside the basic plane") << QString::fromUtf8("\xF0\x9F\x94\xA5");
}

void RunnerJson::strings() {
    QFETCH(QString, text);
    const QByteArray line = JsonWriter().beginArray().string(text).endArray().take();
    QVERIFY(!line.contains('\n'));
    QCOMPARE(QJsonDocument::fromJson(line).array().first().toString(), text);
}

void RunnerJson::mapsAreSorted_listsAreNot() {
    QVariantHash hash;
    for (const char* key : {"value", "name", "bias", "type"})
        hash[QLatin1String(key)] = QVariantList{QStringLiteral("b"), 2, 1.5, true, QVariant()};
    const QByteArray list = "[\"b\",2,1.5,true,null]";
    QCOMPARE(JsonWriter().variant(hash).take(),
             "{\"bias\":" + list + ",\"name\":" + list + ",\"type\":" + list + ",\"value\":" + list + '}');
    QObject object;
    QCOMPARE(JsonWriter().variant(QVariant::fromValue(&object)).take(), QByteArray("null"));
}

void RunnerJson::nodesKeepTheirOrder() {
    mendo::ModuleObject node;
    node.set(nullptr, QStringLiteral("traj.speed"), 0.02)
        ->set(nullptr, QStringLiteral("point.#0"), 1)
        ->set(nullptr, QStringLiteral("point.#1"), QStringLiteral("x"))
        ->set(nullptr, QStringLiteral("name"), false);
    QCOMPARE(JsonWriter().node(&node).take(),
             QByteArray("{\"traj\":{\"speed\":0.02},\"point\":[1,\"x\"],\"name\":false}"));
    QCOMPARE(JsonWriter().node(nullptr).take(), QByteArray("null"));
    QCOMPARE(JsonWriter().node(node.c(QStringLiteral("none"))).take(), QByteArray("null"));
    node.c(QStringLiteral("point"))->clear(nullptr);
    QCOMPARE(JsonWriter().node(node.c(QStringLiteral("point"))).take(), QByteArray("[]"));
}

void RunnerJson::compactKeepsKeyOrder() {
    const QByteArray file =
        "\xEF\xBB\xBF[ {\"at\" : 1.50 ,\n \"do\": \"a, [ b\" , \"value\":\t[ true , 1E2, -0.0 ]}, { } ]";
    Problem problem;
    const auto text = JsonText::parse(file, QStringLiteral("f"), &problem);
    QVERIFY2(text, qPrintable(problem.text()));
    QCOMPARE(text->compact(0), QByteArray("{\"at\":1.5,\"do\":\"a, [ b\",\"value\":[true,100,-0]}"));
    QCOMPARE(text->compact(1), QByteArray("{}"));
}

void RunnerJson::placesOfEntries_data() {
    QTest::addColumn<int>("element");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("place");
    QTest::newRow("element") << 1 << QString() << QStringLiteral("f:4:2: x");
    QTest::newRow("entry") << 0 << QStringLiteral("b") << QStringLiteral("f:2:8: x");
    QTest::newRow("entry of an entry") << 1 << QStringLiteral("p.q") << QStringLiteral("f:4:28: x");
    QTest::newRow("escaped key") << 1 << QStringLiteral("a]") << QStringLiteral("f:4:14: x");
    QTest::newRow("entry that is not there") << 1 << QStringLiteral("p.r.s") << QStringLiteral("f:4:23: x");
    QTest::newRow("second of the same name") << 2 << QStringLiteral("a") << QStringLiteral("f:5:15: x");
}

void RunnerJson::placesOfEntries() {
    const QByteArray file =
        "[{\"a\": \"}]\\\"\",\n \"b\" : [{}, 1]},\n\n {\"\\u0061]\": \"ö\",\"p\": {\"q\":1}},\n"
        "{\"a\":\"\xF0\x9F\x94\xA5\", \"a\":2}]";
    Problem problem;
    const auto text = JsonText::parse(file, QStringLiteral("f"), &problem);
    QVERIFY2(text, qPrintable(problem.text()));
    QFETCH(int, element);
    QFETCH(QString, path);
    const QString reason = QStringLiteral("x");
    QTEST((path.isEmpty() ? text->problemAt(element, reason) : text->problemAt(element, path, reason)).text(),
          "place");
}

QTEST_GUILESS_MAIN(RunnerJson)
#include "tst_json.moc"
