// Loading, copying and exporting whole subtrees.

#include "host/nodesupport.h"

#include <QPointer>
#include <QTest>

#include <cmath>

using mendo::ModuleObject;

class TestNodeContent : public QObject {
    Q_OBJECT
private slots:
    void load_replaces_data();
    void load_replaces();
    void load_ownValue_data();
    void load_ownValue();
    void load_keepsTheObjectsOfAMap();
    void load_announcesOnceOnTheNodeOnly();
    void load_undefinedChangesNothing();
    void roundTrip_isIdentical_data();
    void roundTrip_isIdentical();
    void numbers_areIntegersWhereTheyFit();
    void export_leavesOutWhatJsonCannotHold();
    void copy_isDeepAndIndependent();
    void copy_ofItselfOrADescendant();
    void copy_ofTheNullNodeEmpties();
    void deepContent_isCutOff();
};

void TestNodeContent::load_replaces_data() {
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("loaded");
    QTest::addColumn<QString>("replaced");
    QTest::addColumn<QString>("merged");
    QTest::newRow("map") << QByteArray("{'a':1,'b':{'x':1}}") << QByteArray("{'b':{'y':2},'c':3}")
                         << "{'b':{'y':2},'c':3}"
                         << "{'a':1,'b':{'x':1,'y':2},'c':3}";
    QTest::newRow("list") << QByteArray("[{'n':1,'t':1},2,3]") << QByteArray("[{'n':9},8]") << "[{'n':9},8]"
                          << "[{'n':9,'t':1},8,3]";
    QTest::newRow("longer list") << QByteArray("[1]") << QByteArray("[5,6]") << "[5,6]"
                                 << "[5,6]";
    QTest::newRow("empty map on a list") << QByteArray("[1]") << QByteArray("{}") << "[]"
                                         << "[1]";
    QTest::newRow("empty list on a map") << QByteArray("{'a':1}") << QByteArray("[]") << "[]"
                                         << "[]";
    QTest::newRow("map on a list") << QByteArray("[1]") << QByteArray("{'a':1}") << "{'a':1}"
                                   << "{'a':1}";
    QTest::newRow("nested empty map on a list")
        << QByteArray("{'p':[1,2]}") << QByteArray("{'p':{}}") << "{'p':[]}"
        << "{'p':[1,2]}";
    QTest::newRow("null on a list") << QByteArray("{'p':[1,2]}") << QByteArray("{'p':null}") << "{'p':[]}"
                                    << "{'p':[1,2]}";
    QTest::newRow("value on a map") << QByteArray("{'p':{'x':1}}") << QByteArray("{'p':4}") << "{'p':4}"
                                    << "{'p':{'x':1}}";
    QTest::newRow("null on a value") << QByteArray("{'p':4}") << QByteArray("{'p':null}") << "{'p':null}"
                                     << "{'p':null}";
    QTest::newRow("map on a value") << QByteArray("{'p':4}") << QByteArray("{'p':{'x':1}}") << "{'p':{'x':1}}"
                                    << "{'p':{'x':1}}";
    QTest::newRow("large map") << QByteArray("{'a':1,'b':1,'c':1,'d':1,'e':1,'f':1,'g':1,'h':1,'i':1,'j':1}")
                               << QByteArray("{'a':2,'j':2,'k':2}") << "{'a':2,'j':2,'k':2}"
                               << "{'a':2,'b':1,'c':1,'d':1,'e':1,'f':1,'g':1,'h':1,'i':1,'j':2,'k':2}";
}

void TestNodeContent::load_replaces() {
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, loaded);
    // Whether anybody has asked for the nodes before makes no difference, nor does the way it comes in.
    for (const bool asked : {false, true}) {
        for (const bool copied : {false, true}) {
            for (const bool merge : {false, true}) {
                ModuleObject node;
                node.loadJson(nullptr, json(before.constData()));
                if (asked) {
                    node.cmobjs(true);
                }
                if (copied) {
                    ModuleObject source;
                    source.loadJson(nullptr, json(loaded.constData()));
                    node.copyFrom(nullptr, &source, true, merge);
                } else {
                    node.loadJson(nullptr, json(loaded.constData()), true, merge);
                }
                QTEST(text(&node), merge ? "merged" : "replaced");
            }
        }
    }
}

void TestNodeContent::load_ownValue_data() {
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("loaded");
    QTest::addColumn<int>("replaced");  // -1: no value
    QTest::addColumn<int>("keeping");
    QTest::addColumn<int>("merged");
    QTest::newRow("map") << QByteArray("{'a':1}") << QByteArray("{'a':2}") << -1 << 5 << 5;
    QTest::newRow("list") << QByteArray("[1]") << QByteArray("[2]") << -1 << 5 << 5;
    QTest::newRow("empty map on a list") << QByteArray("[1]") << QByteArray("{}") << -1 << 5 << 5;
    QTest::newRow("value") << QByteArray("{'a':1}") << QByteArray("7") << 7 << 7 << 7;
    QTest::newRow("null") << QByteArray("{'a':1}") << QByteArray("null") << -1 << -1 << 5;
}

void TestNodeContent::load_ownValue() {
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, loaded);
    const auto valueAfter = [&](bool merge, bool keepValue) {
        ModuleObject node;
        node.loadJson(nullptr, json(before.constData()));
        node.setValue(nullptr, 5);
        node.loadJson(nullptr, json('[' + loaded + ']').toArray().first(), true, merge, keepValue);
        return node.getInt(-1);
    };
    QTEST(valueAfter(false, false), "replaced");
    QTEST(valueAfter(false, true), "keeping");
    QTEST(valueAfter(true, false), "merged");
}

void TestNodeContent::load_keepsTheObjectsOfAMap() {
    ModuleObject node;
    node.loadJson(nullptr, json("{'b': 1, 'c': 2, 'z': {'deep': 1}, 'l': [1, 2]}"));
    ModuleObject* kept = node.c(QStringLiteral("c"));
    ModuleObject* deep = node.r(QStringLiteral("z.deep"));
    ModuleObject* element = node.r(QStringLiteral("l.#0"));
    QPointer<ModuleObject> gone(node.c(QStringLiteral("b")));
    Recorder listener(kept);
    node.loadJson(nullptr, json("{'a': 0, 'c': 5, 'z': {'deep': 6, 'more': 7}, 'l': [3]}"));
    QVERIFY(node.c(QStringLiteral("c")) == kept && node.r(QStringLiteral("z.deep")) == deep);
    QCOMPARE(kept->indexInPmobj(), 1);
    QCOMPARE(deep->getInt(), 6);
    QVERIFY(listener.heard.isEmpty());
    kept->setValue(nullptr, 8);
    QCOMPARE(listener.heard, QStringList{"changed 8<5"});
    QVERIFY(node.r(QStringLiteral("l.#0")) != element);
    QVERIFY(element->pmobj()->isNull());
    QVERIFY(gone && gone->pmobj()->isNull());
}

void TestNodeContent::load_announcesOnceOnTheNodeOnly() {
    ModuleObject node;
    node.loadJson(nullptr, json("{'a': {'b': 1}, 'x': 1}"));
    Recorder own(&node), child(node.c(QStringLiteral("a")));
    node.loadJson(this, json("{'a': {'b': 2}}"));
    QCOMPARE(own.take(), QStringList{"changed <"});
    QVERIFY(own.lastSender == this);
    node.loadJson(this, json("{'a': 1}"), false);
    node.copyFrom(this, &node, false);
    QVERIFY(own.heard.isEmpty() && child.heard.isEmpty());
    node.loadJson(this, QJsonValue(5));
    QCOMPARE(own.take(), QStringList{"changed 5<"});
    QCOMPARE(node.size(), 0);
}

void TestNodeContent::load_undefinedChangesNothing() {
    ModuleObject node;
    node.loadJson(nullptr, json("[1]"));
    Recorder own(&node);
    node.loadJson(this, QJsonValue(QJsonValue::Undefined));
    QCOMPARE(text(&node), QStringLiteral("[1]"));
    QVERIFY(own.heard.isEmpty());
}

void TestNodeContent::roundTrip_isIdentical_data() {
    QTest::addColumn<QByteArray>("document");
    QTest::newRow("containers") << QByteArray("{'a':[],'b':{},'c':[[],{}],'d':null}");
    QTest::newRow("numbers") << QByteArray(
        "[0,-1,2147483648,9007199254740992,0.1,1e-300,1.7976931348623157e+308,"
        "0.30000000000000004,-0.001]");
    QTest::newRow("texts") << QByteArray("['','#3','激光焊接','a.b']");
    QTest::newRow("keys") << QByteArray("{'':1,'#0':2,'a.b':3,'激光':4}");
    QTest::newRow("booleans") << QByteArray("[true,false,null]");
}

void TestNodeContent::roundTrip_isIdentical() {
    QFETCH(QByteArray, document);
    ModuleObject first, second, copied;
    first.loadJson(nullptr, json(document.constData()));
    QCOMPARE(text(&first), QString::fromUtf8(document));
    first.cmobjs(true);
    QCOMPARE(text(&first), QString::fromUtf8(document));
    second.loadJson(nullptr, first.exportToJson());
    copied.copyFrom(nullptr, &second);
    QCOMPARE(text(&copied), QString::fromUtf8(document));
}

void TestNodeContent::numbers_areIntegersWhereTheyFit() {
    ModuleObject node;
    node.loadJson(nullptr, json("[5, 5000000000, 0.5]"));
    QCOMPARE(node.c(0)->value(), QVariant(5));
    QCOMPARE(node.c(0)->value().userType(), static_cast<int>(QMetaType::Int));
    QCOMPARE(node.c(1)->value().userType(), static_cast<int>(QMetaType::LongLong));
    QCOMPARE(node.c(2)->value().userType(), static_cast<int>(QMetaType::Double));
}

void TestNodeContent::export_leavesOutWhatJsonCannotHold() {
    ModuleObject node;
    node.set(nullptr, QStringLiteral("nan"), std::nan(""));
    node.set(nullptr, QStringLiteral("object"), QVariant::fromValue<QObject*>(this));
    node.set(nullptr, QStringLiteral("one"), 1);
    QCOMPARE(text(&node), QStringLiteral("{'nan':null,'object':null,'one':1}"));
    QCOMPARE(node.exportToJson(false).toObject().keys(), QStringList{"one"});
    QVERIFY(ModuleObject::null()->exportToJson().isNull());
    node.clear(nullptr);
    node.setValue(nullptr, 3);
    QCOMPARE(node.exportToJson(), QJsonValue(3));
}

void TestNodeContent::copy_isDeepAndIndependent() {
    ModuleObject source, copy;
    source.loadJson(nullptr, json("{'point': {'trans': [1, 2, 3]}, 'name': 'p'}"));
    source.setValue(nullptr, 4);
    copy.copyFrom(this, &source);
    source.set(nullptr, QStringLiteral("point.trans.#0"), 9);
    QCOMPARE(copy.r(QStringLiteral("point.trans.#0"))->getInt(), 1);
    QCOMPARE(copy.getInt(), 4);
    QVERIFY(copy.r(QStringLiteral("point.trans"))->isList());

    // Names of elements belong to their list.
    const QString name =
        source.r(QStringLiteral("point.trans"))->append(nullptr, QStringLiteral("x"))->name();
    copy.copyFrom(this, &source);
    QCOMPARE(copy.r(QStringLiteral("point.trans"))->size(), 4);
    QVERIFY(!copy.r(QStringLiteral("point.trans"))->hasCmobj(name));
}

void TestNodeContent::copy_ofItselfOrADescendant() {
    ModuleObject node;
    node.loadJson(nullptr, json("{'a': {'b': {'x': 1}, 'c': 2}}"));
    node.cmobjs(true);
    node.copyFrom(nullptr, &node);
    QCOMPARE(text(&node), QStringLiteral("{'a':{'b':{'x':1},'c':2}}"));
    node.copyFrom(nullptr, node.r(QStringLiteral("a")));
    QCOMPARE(text(&node), QStringLiteral("{'b':{'x':1},'c':2}"));
    node.r(QStringLiteral("b"))->copyFrom(nullptr, &node);
    QCOMPARE(text(&node), QStringLiteral("{'b':{'b':{'x':1},'c':2},'c':2}"));
}

void TestNodeContent::copy_ofTheNullNodeEmpties() {
    ModuleObject node;
    node.loadJson(nullptr, json("{'list': [1], 'map': {'a': 1}, 'value': 3}"));
    for (ModuleObject* child : node.cmobjs()) {
        child->copyFrom(nullptr, ModuleObject::null(), true, true);
    }
    QCOMPARE(text(&node), QStringLiteral("{'list':[1],'map':{'a':1},'value':3}"));
    for (ModuleObject* child : node.cmobjs()) {
        child->copyFrom(nullptr, ModuleObject::null());
    }
    QCOMPARE(text(&node), QStringLiteral("{'list':[],'map':{},'value':null}"));
}

void TestNodeContent::deepContent_isCutOff() {
    QJsonValue deep = 1;
    for (int i = 0; i < 3000; ++i) {
        deep = QJsonArray{deep};
    }
    ModuleObject node, outer;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("deepest level")));
    node.loadJson(nullptr, deep);
    int levels = 0;
    for (const ModuleObject* inner = &node; inner->size() > 0; inner = inner->c(0)) {
        ++levels;
    }
    QVERIFY(levels > 500 && levels < 3000);
    // Nor can it grow by other ways.
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("refused")));
    QVERIFY(!outer.append(nullptr, QStringLiteral("a"))->insert(nullptr, &node));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("refused")));
    outer.set(nullptr, QStringLiteral("x.").repeated(5000) + QLatin1Char('x'), 1);
    QVERIFY(!outer.hasCmobj(QStringLiteral("x")));
}

QTEST_GUILESS_MAIN(TestNodeContent)
#include "test_nodecontent.moc"
