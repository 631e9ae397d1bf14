// Single writes to a node: values, new children, insertion, removal, order.

#include "host/nodesupport.h"
#include "mendo/modulemanager.h"

#include <QPointer>
#include <QSet>
#include <QTest>

#include <memory>

using mendo::ModuleObject;

class TestNodeWriting : public QObject {
    Q_OBJECT
private slots:
    void write_announcesEveryTimeOnTheNodeOnly();
    void set_creates_data();
    void set_creates();
    void set_announcesAddedThenChanged();
    void append_data();
    void append();
    void names_ofAListAreUniqueAndNeverComeAgain();
    void insert_movesBetweenParents();
    void insert_replacesInAMapRenamesInAList();
    void insert_refuses_data();
    void insert_refuses();
    void remove_tellsThePositionThenDetaches();
    void reorder_moves_data();
    void reorder_moves();
    void clear_keepsTheKind();
    void destroyedChild_leavesItsParent();
};

void TestNodeWriting::write_announcesEveryTimeOnTheNodeOnly() {
    ModuleObject node;
    node.loadJson(nullptr, json("{'a': {'b': 1}}"));
    Recorder root(&node), middle(node.r(QStringLiteral("a"))), leaf(node.r(QStringLiteral("a.b")));
    node.set(this, QStringLiteral("a.b"), 2);
    QVERIFY(leaf.lastSender == this);
    node.r(QStringLiteral("a.b"))->setValue(nullptr, 2);
    QVERIFY(leaf.lastSender == nullptr);
    node.r(QStringLiteral("a.b"))->trigger();
    QCOMPARE(leaf.heard, (QStringList{"changed 2<1", "changed 2<2", "changed 2<2"}));
    QVERIFY(root.heard.isEmpty() && middle.heard.isEmpty());
}

void TestNodeWriting::set_creates_data() {
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("after");
    QTest::newRow("map") << QByteArray("{}") << "a.b.c"
                         << "{'a':{'b':{'c':9}}}";
    QTest::newRow("list on the way") << QByteArray("{}") << "trans.#0"
                                     << "{'trans':[9]}";
    QTest::newRow("map in a list") << QByteArray("{'l':[1]}") << "l.#1.x"
                                   << "{'l':[1,{'x':9}]}";
    QTest::newRow("next element") << QByteArray("[1]") << "#1"
                                  << "[1,9]";
    QTest::newRow("empty map becomes a list") << QByteArray("{'p':{}}") << "p.#0"
                                              << "{'p':[9]}";
    QTest::newRow("not beyond the next") << QByteArray("{'l':[1]}") << "l.#2"
                                         << "{'l':[1]}";
    QTest::newRow("not beyond the next below") << QByteArray("{}") << "a.b.#1"
                                               << "{}";
    QTest::newRow("no position in a map") << QByteArray("{'a':1}") << "#1"
                                          << "{'a':1}";
    QTest::newRow("existing") << QByteArray("{'a':{'b':1}}") << "a.b"
                              << "{'a':{'b':9}}";
    QTest::newRow("map beside a value") << QByteArray("{'a':1}") << "a.b"
                                        << "{'a':{'b':9}}";
    QTest::newRow("empty element") << QByteArray("{}") << "a..b"
                                   << "{}";
    QTest::newRow("named element of a list") << QByteArray("[1]") << "x"
                                             << "[1,9]";
}

void TestNodeWriting::set_creates() {
    QFETCH(QByteArray, before);
    QFETCH(QString, path);
    QFETCH(QString, after);
    const bool exists = QTest::currentDataTag() == QByteArray("existing");
    for (const bool asked : {false, true}) {
        ModuleObject node;
        node.loadJson(nullptr, json(before.constData()));
        if (asked) {
            node.cmobjs(true);
        }
        QVERIFY(node.set(nullptr, path, 9) == &node);
        QCOMPARE(text(&node), after);
        ModuleObject untouched;
        untouched.loadJson(nullptr, json(before.constData()));
        untouched.set(nullptr, path, 9, false);
        QCOMPARE(text(&untouched), exists ? after : QString::fromUtf8(before));
    }
}

void TestNodeWriting::set_announcesAddedThenChanged() {
    ModuleObject node;
    QStringList heard;
    connect(&node, &ModuleObject::added, this, [&](const QString& name, QObject* sender) {
        heard << name;
        QVERIFY(sender == this);
        connect(node.r(QStringLiteral("a.b")), &ModuleObject::changed, this,
                [&heard](const QVariant& value) { heard << value.toString(); });
    });
    node.set(this, QStringLiteral("a.b"), 7);
    QCOMPARE(heard, (QStringList{"a", "7"}));
}

void TestNodeWriting::append_data() {
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("after");
    QTest::newRow("map") << QByteArray("{'a':1}") << "b"
                         << "{'a':1,'b':null}";
    QTest::newRow("existing in a map") << QByteArray("{'a':1}") << "a"
                                       << "{'a':1}";
    QTest::newRow("dotted name") << QByteArray("{}") << "move.j"
                                 << "{'move.j':null}";
    QTest::newRow("unnamed makes a list") << QByteArray("{}") << ""
                                          << "[null]";
    QTest::newRow("first position makes a list") << QByteArray("{}") << "#0"
                                                 << "[null]";
    QTest::newRow("existing position") << QByteArray("[1]") << "#0"
                                       << "[1]";
    QTest::newRow("named in a list") << QByteArray("[1]") << "x"
                                     << "[1,null]";
    QTest::newRow("unnamed in a map gets a name") << QByteArray("{'a':1}") << ""
                                                  << "{'a':1,'id1':null}";
}

void TestNodeWriting::append() {
    QFETCH(QByteArray, before);
    QFETCH(QString, name);
    QFETCH(QString, after);
    ModuleObject node;
    node.loadJson(nullptr, json(before.constData()));
    const int sizeBefore = node.size();
    Recorder recorder(&node);
    const ModuleObject* child = node.append(this, name);
    QCOMPARE(text(&node), after);
    QVERIFY(child->pmobj() == &node);
    QVERIFY(!child->name().isEmpty() && !child->name().startsWith(QLatin1Char('#')));
    QVERIFY(node.c(child->name()) == child);
    QCOMPARE(recorder.heard.size(), node.size() - sizeBefore);
}

void TestNodeWriting::names_ofAListAreUniqueAndNeverComeAgain() {
    ModuleObject list;
    list.loadJson(nullptr, QJsonArray());
    QSet<QString> seen;
    for (int i = 0; i < 30; ++i) {
        const QString name = i % 3 == 0 ? ModuleObject::generateId(&list) : QString();
        const QString actual = list.append(nullptr, i == 10 ? QStringLiteral("id15") : name)->name();
        QVERIFY2(!seen.contains(actual), qPrintable(actual));
        seen.insert(actual);
        if (i % 2 == 0) {
            list.remove(nullptr, actual);
        }
        QVERIFY(i % 2 == 0 || list.c(actual) != ModuleObject::null());
    }
    QVERIFY(!seen.contains(ModuleObject::generateId(&list)));
    const QString first = list.c(0)->name();
    QVERIFY(list.append(nullptr, first)->name() != first);
    QVERIFY(list.append(nullptr, QStringLiteral("#1x"))->name() != QLatin1String("#1x"));
    QCOMPARE(list.append(nullptr, QStringLiteral("mine"))->name(), QStringLiteral("mine"));
    QVERIFY(ModuleObject::generateId(nullptr) != ModuleObject::generateId(ModuleObject::null()));
}

void TestNodeWriting::insert_movesBetweenParents() {
    ModuleObject from, to;
    from.loadJson(nullptr, json("{'a': {'x': 1}, 'b': 2}"));
    to.loadJson(nullptr, json("[10, 20]"));
    Recorder leaving(&from), arriving(&to);
    ModuleObject* node = from.c(QStringLiteral("a"));
    QVERIFY(to.insert(this, node, true, 1));
    QCOMPARE(leaving.heard, QStringList{"removed a@0"});
    QCOMPARE(arriving.heard, QStringList{"added a@1"});
    QCOMPARE(text(&from), QStringLiteral("{'b':2}"));
    QCOMPARE(text(&to), QStringLiteral("[10,{'x':1},20]"));
    QVERIFY(node->pmobj() == &to);

    // A removed node can be put in again; it is then no longer disposed of.
    QPointer<ModuleObject> guard(node);
    to.remove(nullptr, QStringLiteral("a"));
    QVERIFY(to.insert(nullptr, node, true, 99));
    mendo::ModuleManager::purgeRemoved();
    QVERIFY(guard);
    QCOMPARE(node->indexInPmobj(), 2);
}

void TestNodeWriting::insert_replacesInAMapRenamesInAList() {
    ModuleObject map, list;
    map.loadJson(nullptr, json("{'a': 1, 'b': 2}"));
    Recorder recorder(&map);
    auto* newcomer = new ModuleObject(QStringLiteral("a"));
    QVERIFY(map.insert(nullptr, newcomer));
    QVERIFY(map.c(QStringLiteral("a")) == newcomer);
    QCOMPARE(map.size(), 2);
    QCOMPARE(recorder.heard, (QStringList{"removed a@0", "added a@1"}));

    list.append(nullptr)->setValue(nullptr, 1);
    list.append(nullptr, QStringLiteral("a"));
    auto* second = new ModuleObject(QStringLiteral("a"), &list);
    QCOMPARE(list.size(), 3);
    QVERIFY(second->name() != QLatin1String("a"));
    QVERIFY(list.c(second->name()) == second);
}

void TestNodeWriting::insert_refuses_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("node");
    QTest::newRow("itself") << "a"
                            << "a";
    QTest::newRow("own child") << "a.b"
                               << "a";
    QTest::newRow("own grandchild") << "a.b.c"
                                    << "a";
    QTest::newRow("null node") << "a"
                               << "missing";
}

void TestNodeWriting::insert_refuses() {
    QFETCH(QString, target);
    QFETCH(QString, node);
    ModuleObject tree;
    tree.loadJson(nullptr, json("{'a': {'b': {'c': {}}}}"));
    QVERIFY(!tree.r(target)->insert(nullptr, tree.r(node)));
    QVERIFY(!tree.insert(nullptr, nullptr));
    QCOMPARE(text(&tree), QStringLiteral("{'a':{'b':{'c':{}}}}"));
}

void TestNodeWriting::remove_tellsThePositionThenDetaches() {
    ModuleObject list;
    list.loadJson(nullptr, json("[1, 2, 3]"));
    ModuleObject* second = list.c(1);
    Recorder recorder(&list);
    QVERIFY(list.remove(this, mIndex(1)));
    QCOMPARE(recorder.heard, QStringList{QStringLiteral("removed %1@1").arg(second->name())});
    QCOMPARE(second->indexInPmobj(), -1);
    QVERIFY(second->pmobj()->isNull() && second->nextBmobj()->isNull());
    QCOMPARE(second->getInt(), 2);
    QVERIFY(!list.remove(this, QStringLiteral("#2")));
    QVERIFY(list.remove(this, QStringLiteral("#0"), false));
    QCOMPARE(recorder.heard.size(), 1);
    QCOMPARE(text(&list), QStringLiteral("[3]"));
}

void TestNodeWriting::reorder_moves_data() {
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QString>("after");
    QTest::newRow("up") << 3 << 1 << "[0,3,1,2,4]";
    QTest::newRow("down") << 0 << 4 << "[1,2,3,4,0]";
    QTest::newRow("stay") << 2 << 2 << "[0,1,2,3,4]";
    QTest::newRow("from outside") << 5 << 0 << "";
    QTest::newRow("to outside") << 0 << 5 << "";
    QTest::newRow("negative") << -1 << 0 << "";
}

void TestNodeWriting::reorder_moves() {
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(QString, after);
    ModuleObject list;
    list.loadJson(nullptr, json("[0, 1, 2, 3, 4]"));
    const QList<ModuleObject*> elements = list.cmobjs();
    Recorder recorder(&list);
    list.reorder(this, from, to);
    QCOMPARE(recorder.heard.size(), after.isEmpty() ? 0 : 1);
    QCOMPARE(text(&list), after.isEmpty() ? QStringLiteral("[0,1,2,3,4]") : after);
    for (const ModuleObject* element : elements) {
        QVERIFY(list.c(element->indexInPmobj()) == element);
    }
}

void TestNodeWriting::clear_keepsTheKind() {
    ModuleObject list, map;
    list.loadJson(nullptr, json("[1]"));
    map.loadJson(nullptr, json("{'a': 1}"));
    map.setValue(nullptr, 3);
    Recorder recorder(&map);
    list.clear(nullptr);
    QVERIFY(list.isList());
    map.clear(this, false);
    QCOMPARE(map.getInt(), 3);
    map.clear(this, true, true);
    QCOMPARE(recorder.heard, QStringList{"changed <3"});
    QCOMPARE(text(&list) + text(&map), QStringLiteral("[]{}"));
}

void TestNodeWriting::destroyedChild_leavesItsParent() {
    ModuleObject list;
    list.loadJson(nullptr, json("[1, 2, 3]"));
    Recorder recorder(&list);
    delete list.c(1);
    QCOMPARE(text(&list), QStringLiteral("[1,3]"));
    QCOMPARE(recorder.heard.size(), 1);

    // Removed ones that somebody ends or uses again before they are disposed of.
    list.loadJson(nullptr, json("[0, 1, 2]"));
    const QList<ModuleObject*> elements = list.cmobjs();
    const QPointer<ModuleObject> disposed(elements[1]);
    list.clear(nullptr);
    list.insert(nullptr, elements[0]);
    delete elements[2];
    mendo::ModuleManager::purgeRemoved();
    QVERIFY(!disposed);
    QVERIFY(list.size() == 1 && list.c(0) == elements[0]);
}

QTEST_GUILESS_MAIN(TestNodeWriting)
#include "test_nodewriting.moc"
