// Lookup, places, paths and typed values of a node.

#include "host/nodesupport.h"
#include "mendo/modulemanager.h"

#include <QRegularExpression>
#include <QTest>

#include <QTimer>
#include <functional>

#include <cmath>
#include <limits>
#include <memory>
#include <random>

using mendo::ModuleObject;

Q_DECLARE_METATYPE(std::function<void(ModuleObject*)>)

class TestModuleObject : public QObject {
    Q_OBJECT
private slots:
    void lookup_findsByNameAndPosition_data();
    void lookup_findsByNameAndPosition();
    void lookup_followsEveryChange_data();
    void lookup_followsEveryChange();
    void lookup_recursiveTakesTheFirstDepthFirst();
    void nullNode_ignoresWritesAndReportsConnections();
    void siblings_knowTheirPlaceAfterEveryChange();
    void longList_keepsPlacesOfAllElements_data();
    void longList_keepsPlacesOfAllElements();
    void conversion_data();
    void conversion();
    void value_holdsPointers();
    void indexOfRname_data();
    void indexOfRname();
    void whatLivesInASubtree_endsWhileTheTreeStands();
};

void TestModuleObject::lookup_findsByNameAndPosition_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("value");  // -1: nothing there
    QTest::newRow("name") << "a" << 1;
    QTest::newRow("below") << "b.c.d" << 2;
    QTest::newRow("element") << "list.#1" << 11;
    QTest::newRow("below an element") << "list.#2.x" << 12;
    QTest::newRow("a map by position") << "b.#0.d" << 2;
    QTest::newRow("past the end") << "list.#3" << -1;
    QTest::newRow("huge position") << "list.#99999999999999999999" << -1;
    QTest::newRow("no number") << "list.#" << -1;
    QTest::newRow("missing") << "b.x.d" << -1;
    QTest::newRow("below a value") << "a.b" << -1;
    QTest::newRow("trailing dot") << "a." << -1;
    QTest::newRow("leading dot") << ".a" << -1;
    QTest::newRow("no name, then a position") << ".#0" << 5;
    QTest::newRow("name ending in #") << "h#.#0" << 6;
    QTest::newRow("positions only") << "#0.#0" << 5;
    QTest::newRow("dots do not name one child") << "dotted.name" << -1;
}

void TestModuleObject::lookup_findsByNameAndPosition() {
    QFETCH(QString, path);
    QFETCH(int, value);
    ModuleObject node;
    node.loadJson(nullptr, json("{'': [5], 'a': 1, 'b': {'c': {'d': 2}}, 'list': [10, 11, {'x': 12}], "
                                "'dotted.name': 3, 'h#': [6]}"));
    QCOMPARE(node.hasRmobj(path), value >= 0);
    QCOMPARE(node.r(path)->isNull(), value < 0);
    QCOMPARE(node.rmobj(path)->getInt(-1), value);
    QCOMPARE(m(path, &node), node.r(path));
    QVERIFY(node.r(QString()) == &node);
    QCOMPARE(node.c(QStringLiteral("dotted.name"))->getInt(), 3);
}

void TestModuleObject::lookup_followsEveryChange_data() {
    QTest::addColumn<std::function<void(ModuleObject*)>>("change");
    using Change = std::function<void(ModuleObject*)>;
    const QString a = QStringLiteral("a");
    const auto row = [](const char* name, const Change& change) { QTest::newRow(name) << change; };
    row("nothing", [](ModuleObject*) {});
    row("write", [](ModuleObject* root) { root->set(nullptr, QStringLiteral("a.b.c"), 5); });
    row("remove", [a](ModuleObject* root) { root->remove(nullptr, a); });
    row("remove and make again", [a](ModuleObject* root) {
        root->remove(nullptr, a);
        root->set(nullptr, QStringLiteral("a.b.c"), 6);
    });
    row("remove, make again, purge", [a](ModuleObject* root) {
        root->remove(nullptr, a);
        mendo::ModuleManager::purgeRemoved();
        root->set(nullptr, QStringLiteral("a.b.c"), 7);
    });
    row("delete", [](ModuleObject* root) { delete root->r(QStringLiteral("a.b")); });
    row("clear", [a](ModuleObject* root) { root->c(a)->clear(nullptr); });
    row("load others", [a](ModuleObject* root) { root->loadJson(nullptr, json("{'x': {'b': {'c': 8}}}")); });
    row("load a value", [a](ModuleObject* root) { root->c(a)->loadJson(nullptr, 9); });
    row("replace", [a](ModuleObject* root) {
        auto* other = new ModuleObject(a);
        other->set(nullptr, QStringLiteral("b.c"), 10);
        root->insert(nullptr, other);
    });
    row("move away", [](ModuleObject* root) {
        root->r(QStringLiteral("other"))->insert(nullptr, root->r(QStringLiteral("a.b")));
    });
    row("reorder", [](ModuleObject* root) { root->reorder(nullptr, 0, 1); });
    row("reorder a list",
        [](ModuleObject* root) { root->r(QStringLiteral("list"))->reorder(nullptr, 0, 1); });
    row("remove an element",
        [](ModuleObject* root) { root->r(QStringLiteral("list"))->remove(nullptr, QStringLiteral("#0")); });
    row("remove a list", [](ModuleObject* root) { root->remove(nullptr, QStringLiteral("list")); });
    row("make a list again", [](ModuleObject* root) {
        root->remove(nullptr, QStringLiteral("list"));
        root->set(nullptr, QStringLiteral("list.#0.x"), 11);
    });
}

/// Also what was looked up before: the way by names, one by one, says what is right.
void TestModuleObject::lookup_followsEveryChange() {
    QFETCH(std::function<void(ModuleObject*)>, change);
    ModuleObject root;
    root.loadJson(nullptr,
                  json("{'a': {'b': {'c': 1}}, 'list': [{'x': 3}, {'x': 4}], 'other': {'b': {'c': 2}}}"));
    const QStringList paths = {QStringLiteral("a"),         QStringLiteral("a.b"),
                               QStringLiteral("a.b.c"),     QStringLiteral("other.b.c"),
                               QStringLiteral("list.#0.x"), QStringLiteral("list.#1.x")};
    for (const QString& path : paths) {
        QVERIFY(!root.r(path)->isNull());
    }
    change(&root);
    for (const QString& path : paths) {
        ModuleObject* node = &root;
        for (const QString& name : path.split(QLatin1Char('.'))) {
            node = node->c(name);
        }
        QCOMPARE(root.r(path), node);
        root.set(nullptr, path, QStringLiteral("written"), false);
        QCOMPARE(node->value().isValid(), !node->isNull());
    }
}

void TestModuleObject::lookup_recursiveTakesTheFirstDepthFirst() {
    ModuleObject node;
    node.loadJson(nullptr, json("{'a': {'b': {'x': 1}, 'x': 2}, 'c': {'x': 3, 'y': 4}}"));
    QVERIFY(node.c(QStringLiteral("x"))->isNull());
    QCOMPARE(node.c(QStringLiteral("x"), true)->getInt(), 1);
    QCOMPARE(node.cmobj(QStringLiteral("y"), true)->path(), QStringLiteral("c.y"));
    QVERIFY(!node.hasCmobj(QStringLiteral("x")));
    QVERIFY(node.hasCmobj(QStringLiteral("x"), true));
    QStringList names;
    for (const ModuleObject* descendant : node.cmobjs(true)) {
        names << descendant->path();
    }
    QCOMPARE(names.join(QLatin1Char(' ')), QStringLiteral("a a.b a.b.x a.x c c.x c.y"));
    QCOMPARE(node.cmobjs().size(), 2);
}

void TestModuleObject::nullNode_ignoresWritesAndReportsConnections() {
    ModuleObject* null = ModuleObject::null();
    null->setValue(this, 5);
    null->set(this, QStringLiteral("a.b"), 5);
    null->loadJson(this, json("{'a': 1}"));
    null->copyFrom(this, null);
    null->clear(this);
    null->reorder(this, 0, 0);
    auto child = std::make_unique<ModuleObject>(QStringLiteral("child"));
    QVERIFY(!null->insert(this, child.get()));
    QVERIFY(!null->remove(this, QStringLiteral("a")));
    QVERIFY(null->append(this, QStringLiteral("a"))->isNull());
    QVERIFY(null->isNull() && !null->value().isValid() && null->size() == 0);
    QVERIFY(!null->hasRmobj(QString()));
    for (ModuleObject* found : {null->c(0), null->c(QStringLiteral("a")), null->r(QStringLiteral("a.#1")),
                                null->pmobj(), null->prevBmobj(), null->nextBmobj(), null->r(QString())}) {
        QVERIFY(found == null);
    }
    QTest::ignoreMessage(QtCriticalMsg, QRegularExpression(QStringLiteral("changed.*null node")));
    connect(null, &ModuleObject::changed, this, [] {});
    null->disconnect(this);
}

void TestModuleObject::siblings_knowTheirPlaceAfterEveryChange() {
    ModuleObject node;
    node.loadJson(nullptr, json("[0, 1, 2, 3, 4, 5]"));
    ModuleObject* three = node.c(3);
    node.remove(nullptr, QStringLiteral("#1"));
    QCOMPARE(three->indexInPmobj(), 2);
    node.insert(nullptr, new ModuleObject, true, 0);
    QCOMPARE(three->indexInPmobj(), 3);
    node.reorder(nullptr, 3, 0);
    QCOMPARE(three->indexInPmobj(), 0);
    QVERIFY(three->prevBmobj()->isNull());
    QCOMPARE(three->nextBmobj()->indexInPmobj(), 1);
    QVERIFY(three->nextBmobj()->prevBmobj() == three);
    QVERIFY(node.c(node.size() - 1)->nextBmobj()->isNull());
    QCOMPARE(three->path(), QStringLiteral("#0"));
}

void TestModuleObject::longList_keepsPlacesOfAllElements_data() {
    QTest::addColumn<bool>("scattered");
    QTest::addColumn<int>("asked");  // elements asked for between two changes
    QTest::newRow("at the front, seldom asked") << false << 0;
    QTest::newRow("at the front") << false << 3;
    QTest::newRow("scattered, seldom asked") << true << 0;
    QTest::newRow("scattered") << true << 20;
}

void TestModuleObject::longList_keepsPlacesOfAllElements() {
    QFETCH(bool, scattered);
    QFETCH(int, asked);
    std::mt19937 random(7);
    const auto below = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    ModuleObject node;
    QList<ModuleObject*> elements;
    QStringList names;
    QString gone;
    for (int i = 0; i < 400; ++i) {
        elements << node.append(nullptr);
        names << elements.last()->name();
    }
    const auto check = [&](int i) {
        return elements[i]->indexInPmobj() == i && node.c(names[i]) == elements[i] &&
               elements[i]->nextBmobj() == elements.value(i + 1, ModuleObject::null());
    };
    for (int change = 0; change < 600; ++change) {
        const int place = scattered ? below(elements.size()) : 0;
        if (scattered && change % 2) {
            auto* newcomer = new ModuleObject(QStringLiteral("n%1").arg(change));
            node.insert(nullptr, newcomer, true, place);
            elements.insert(place, newcomer);
            names.insert(place, newcomer->name());
        } else if (elements.size() > 100) {
            QVERIFY(node.remove(nullptr, change % 4 ? mIndex(place) : names[place]));
            elements.removeAt(place);
            gone = names.takeAt(place);
        }
        for (int i = 0; i < asked; ++i) {
            QVERIFY(check(below(elements.size())));
        }
    }
    // Every second one, so that looking does not put right what the next look relies on.
    for (int i = elements.size() - 1; i >= 0; i -= 2) {
        QVERIFY(check(i));
    }
    QVERIFY(node.c(gone)->isNull());
    mendo::ModuleManager::purgeRemoved();
}

void TestModuleObject::conversion_data() {
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("asInt");        // -7: the default
    QTest::addColumn<double>("asDouble");  // -7.5: the default
    QTest::addColumn<QString>("asBool");   // "default", "true", "false"
    QTest::addColumn<QString>("asText");   // "default": the default
    const QString none = QStringLiteral("default");
    const auto yes = QStringLiteral("true");
    const auto no = QStringLiteral("false");
    QTest::newRow("nothing") << QVariant() << -7 << -7.5 << none << none;
    QTest::newRow("int") << QVariant(5) << 5 << 5.0 << yes << "5";
    QTest::newRow("zero") << QVariant(0) << 0 << 0.0 << no << "0";
    QTest::newRow("fraction") << QVariant(2.7) << 2 << 2.7 << yes << "2.7";
    QTest::newRow("negative fraction") << QVariant(-2.7) << -2 << -2.7 << yes << "-2.7";
    QTest::newRow("shortest") << QVariant(0.1 + 0.2) << 0 << 0.1 + 0.2 << yes << "0.30000000000000004";
    QTest::newRow("whole double") << QVariant(20.0) << 20 << 20.0 << yes << "20";
    QTest::newRow("million") << QVariant(1e6) << 1000000 << 1e6 << yes << "1000000";
    QTest::newRow("bool") << QVariant(true) << 1 << 1.0 << yes << "true";
    QTest::newRow("text number") << QVariant("500") << 500 << 500.0 << yes << "500";
    QTest::newRow("text with fraction") << QVariant("60.0") << 60 << 60.0 << yes << "60.0";
    QTest::newRow("text zero") << QVariant("0") << 0 << 0.0 << no << "0";
    QTest::newRow("text true") << QVariant("true") << -7 << -7.5 << yes << "true";
    QTest::newRow("text False") << QVariant("False") << -7 << -7.5 << no << "False";
    QTest::newRow("words") << QVariant("on") << -7 << -7.5 << none << "on";
    QTest::newRow("empty text") << QVariant("") << -7 << -7.5 << none << "";
    QTest::newRow("text nan") << QVariant("nan") << -7 << -7.5 << none << "nan";
    QTest::newRow("nan") << QVariant(std::nan("")) << -7 << -7.5 << none << none;
    QTest::newRow("infinity") << QVariant(HUGE_VAL) << -7 << -7.5 << none << none;
    QTest::newRow("beyond int") << QVariant(3e9) << -7 << 3e9 << yes << "3000000000";
    QTest::newRow("long") << QVariant(Q_INT64_C(-2147483649)) << -7 << -2147483649.0 << yes << "-2147483649";
    QTest::newRow("smallest int") << QVariant(-2147483648.5) << std::numeric_limits<int>::min()
                                  << -2147483648.5 << yes << "-2147483648.5";
    QTest::newRow("list") << QVariant(QVariantList{1}) << -7 << -7.5 << none << none;
    QTest::newRow("pointer") << QVariant::fromValue<QObject*>(this) << -7 << -7.5 << none << none;
}

void TestModuleObject::conversion() {
    QFETCH(QVariant, value);
    QFETCH(QString, asBool);
    ModuleObject node;
    node.setValue(nullptr, value);
    QTEST(node.getInt(-7), "asInt");
    QTEST(node.getDouble(-7.5), "asDouble");
    QTEST(node.getString(QStringLiteral("default")), "asText");
    QCOMPARE(node.getBool(true), asBool != QLatin1String("false"));
    QCOMPARE(node.getBool(false), asBool == QLatin1String("true"));
}

void TestModuleObject::whatLivesInASubtree_endsWhileTheTreeStands() {
    class Tenant : public QObject {
    public:
        Tenant(ModuleObject* home, QStringList* seen) : QObject(home), home_(home), seen_(seen) {}
        ~Tenant() override { *seen_ << home_->path() << home_->r("port.#1")->getString(); }

    private:
        ModuleObject* home_;
        QStringList* seen_;
    };
    QStringList seen;
    {
        ModuleObject root;
        ModuleObject* const package = root.append(nullptr, "lumo");
        package->set(nullptr, "port.#0", "a")->set(nullptr, "port.#1", "b");
        new Tenant(package, &seen);
        new Tenant(package->c("port"), &seen);
    }
    QCOMPARE(seen, QStringList({"lumo.port", "", "lumo", "b"}));
}

void TestModuleObject::value_holdsPointers() {
    ModuleObject node;
    node.loadJson(nullptr, json("{'clicked': false}"));
    auto* timer = new QTimer(&node);
    node.setValue(this, QVariant::fromValue(timer));
    QVERIFY(node.value().value<QTimer*>() == timer);
    QCOMPARE(text(&node), QStringLiteral("{'clicked':false}"));
    node.loadJson(nullptr, json("{'clicked': true}"), true, false, true);
    QVERIFY(node.value().value<QTimer*>() == timer);
    node.loadJson(nullptr, json("{'clicked': true}"));
    QVERIFY(!node.value().isValid());
}

void TestModuleObject::indexOfRname_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("index");
    QTest::newRow("element") << "#3" << 3;
    QTest::newRow("path") << "LUMO_DO.#12" << 12;
    QTest::newRow("no element") << "DO2_2" << 0;
    QTest::newRow("element in the middle") << "a.#3.b" << 0;
    QTest::newRow("no number") << "a.#3x" << 0;
    QTest::newRow("negative") << "#-1" << 0;
    QTest::newRow("empty") << "" << 0;
}

void TestModuleObject::indexOfRname() {
    QFETCH(QString, name);
    QTEST(ModuleObject::indexOfRname(name), "index");
}

QTEST_GUILESS_MAIN(TestModuleObject)
#include "test_moduleobject.moc"
