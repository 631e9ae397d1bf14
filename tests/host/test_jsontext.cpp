// The text of the tree is the one that QJsonDocument writes, byte for byte: files stay what they were.

#include "host/nodesupport.h"
#include "mendo/jsontext.h"

#include <QTest>

#include <cmath>
#include <limits>

using mendo::JsonText;
using mendo::ModuleObject;

namespace {

QByteArray written(const ModuleObject& node, bool indented) {
    JsonText text(indented);
    text.add(&node);
    return text.take();
}

QByteArray writtenByDocument(const QJsonValue& value, bool indented) {
    const QJsonDocument document =
        value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    return document.toJson(indented ? QJsonDocument::Indented : QJsonDocument::Compact);
}

void compare(const ModuleObject& node) {
    for (const bool indented : {true, false}) {
        QCOMPARE(written(node, indented), writtenByDocument(node.exportToJson(), indented));
    }
}

}  // namespace

class TestJsonText : public QObject {
    Q_OBJECT
private slots:
    void value_isWrittenAsByTheDocument_data();
    void value_isWrittenAsByTheDocument();
    void everyUnit_isWrittenAsByTheDocument();
    void containers_areWrittenAsByTheDocument_data();
    void containers_areWrittenAsByTheDocument();
    void keys_areInTheDocumentsOrder();
    void elementsOfSeveralNodes_makeOneArray();
    void longText_isWhole();
};

void TestJsonText::value_isWrittenAsByTheDocument_data() {
    QTest::addColumn<QVariant>("value");
    const auto row = [](const char* name, const QVariant& value) { QTest::newRow(name) << value; };
    using Doubles = std::numeric_limits<double>;
    for (const double number : {0.0,
                                -0.0,
                                0.1,
                                1.0 / 3,
                                1e-5,
                                1e-300,
                                1e15,
                                1e16,
                                1e17,
                                123456789012345680.0,
                                1e300,
                                -2.5,
                                5.0,
                                1e18,
                                9.3e18,
                                2e20,
                                0.5,
                                -1e22,
                                1e21 + 1e5,
                                9223372036854775808.0,
                                4.9e-324,
                                1.7e308,
                                -9223372036854775808.0,
                                -9.3e18,
                                18446744073709551616.0,
                                9007199254740993.0}) {
        row(QByteArray::number(number, 'g', 17).prepend("number ").constData(), number);
    }
    row("not a number", std::nan(""));
    row("infinity", Doubles::infinity());
    row("minus infinity", -Doubles::infinity());
    row("float", 0.1F);
    row("int", -7);
    row("smallest int", std::numeric_limits<int>::min());
    row("beyond a double's ones", (qlonglong(1) << 53) + 1);
    row("smallest long", std::numeric_limits<qlonglong>::min());
    row("largest unsigned", std::numeric_limits<qulonglong>::max());
    row("unsigned", 7U);
    row("null of a type", QVariant(QVariant::Int));
    row("true", true);
    row("false", false);
    row("text", QStringLiteral("say \"a\\b\"/\t\r\n\b\f\x01\x1f\x7f"));
    row("no text", QString());
    row("bytes", QByteArray("bytes"));
    row("wide text", QStringLiteral(u"é激光焊接€\u2028\uffff"));
    row("pair of surrogates", QString::fromUtf8("\xF0\x9F\x94\xA5"));
    row("half pairs", QString(QChar(0xd83d)) + QLatin1Char('x') + QChar(0xdd25) + QChar(0xd83d));
    row("half pair at the end", QLatin1Char('x') + QString(QChar(0xd83d)));
    row("character", QChar('c'));
    row("list", QVariantList{1, QVariantList{}, QVariantMap{{"b", 0.5}, {"a", QStringLiteral("t")}}, true});
    row("nothing", QVariant());
    row("object", QVariant::fromValue<QObject*>(nullptr));
}

void TestJsonText::value_isWrittenAsByTheDocument() {
    QFETCH(QVariant, value);
    ModuleObject node;
    node.set(nullptr, QStringLiteral("list.#0"), value);
    node.set(nullptr, QStringLiteral("list.#1"), value);
    compare(node);
}

void TestJsonText::everyUnit_isWrittenAsByTheDocument() {
    QString all;
    for (int unit = 0; unit <= 0xffff; ++unit) {
        all += QChar(unit);
    }
    ModuleObject node;
    node.set(nullptr, QStringLiteral("text"), all);
    compare(node);
}

void TestJsonText::containers_areWrittenAsByTheDocument_data() {
    QTest::addColumn<QByteArray>("document");
    QTest::newRow("empty list") << QByteArray("[]");
    QTest::newRow("empty map") << QByteArray("{}");
    QTest::newRow("empty inside") << QByteArray("[[],{},[[]],{'a':{}}]");
    QTest::newRow("mixed") << QByteArray("{'a':[1,{'b':null},[true,[false]]],'c':{'d':{'e':'f'}},'g':0.5}");
    QTest::newRow("odd keys") << QByteArray("{'':1,'#0':2,'a.b':3,'激光':4,'\\t':5,'\\\\':6}");
    const QByteArray deep(900, '[');
    QTest::newRow("deep") << deep + QByteArray(900, ']');
}

void TestJsonText::containers_areWrittenAsByTheDocument() {
    QFETCH(QByteArray, document);
    ModuleObject node;
    node.loadJson(nullptr, json(document.constData()));
    compare(node);
    node.cmobjs(true);  // whether somebody has asked for the nodes makes no difference
    compare(node);
}

void TestJsonText::keys_areInTheDocumentsOrder() {
    ModuleObject node;
    for (const char* name : {"b", "Z", "a", "aa", "é", "激", "\xF0\x9F\x94\xA5", "\xEF\xBC\xA1", "10", "9"}) {
        node.set(nullptr, QString::fromUtf8(name), 1);
    }
    compare(node);
}

void TestJsonText::elementsOfSeveralNodes_makeOneArray() {
    ModuleObject list, map;
    list.loadJson(nullptr, json("[{'type':'moveJ'},2]"));
    map.loadJson(nullptr, json("{'end':1}"));
    for (const bool indented : {true, false}) {
        JsonText text(indented);
        text.beginArray();
        text.addElements(&list);
        text.addElements(&map);
        text.add(&map);
        text.endArray();
        QCOMPARE(text.take(), writtenByDocument(json("[{'type':'moveJ'},2,{'end':1}]"), indented));
    }
}

void TestJsonText::longText_isWhole() {
    // Longer than any piece in which it is written, a pair of surrogates across each border.
    for (const int ahead : {0, 1}) {
        const QString pairs = QString::fromUtf8("\xF0\x9F\x94\xA5").repeated(20000);
        ModuleObject node;
        node.set(nullptr, QStringLiteral("text"), QString(ahead, QLatin1Char('x')) + pairs);
        compare(node);
    }
}

QTEST_GUILESS_MAIN(TestJsonText)

#include "test_jsontext.moc"
