// Handlers that change the tree while it tells of a change, and how long removed nodes live.

#include "host/nodesupport.h"
#include "mendo/modulemanager.h"

#include <QEventLoop>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <functional>

using mendo::ModuleManager;
using mendo::ModuleObject;

using Action = std::function<void(ModuleObject* list)>;
Q_DECLARE_METATYPE(Action)

class TestNodeReentrancy : public QObject {
    Q_OBJECT
private slots:
    void cleanup() {
        ModuleManager::setOutermostLoop(0);
        ModuleManager::purgeRemoved();
    }
    void handler_mayDoAnythingDuring_data();
    void handler_mayDoAnythingDuring();
    void insert_givesWayToHandlers_data();
    void insert_givesWayToHandlers();
    void handler_mayDeleteTheNodeWritten();
    void listenersConnectedDuringAnEmissionAreNotCalledInIt();
    void nestedWrites_areToldInnermostFirst();
    void removedDuringRemoval_isToldOnce();
    void nodeDestroyedByItsOwner_mayTakeItsParentAlong();
    void removedNode_livesUntilTheOutermostLoopWaits();
    void removedNode_survivesNestedLoops();
    void removedNode_takesItsObjectsAlong();
};

void TestNodeReentrancy::handler_mayDoAnythingDuring_data() {
    QTest::addColumn<Action>("write");
    QTest::addColumn<Action>("reaction");
    using Row = QPair<const char*, Action>;
    const QList<Row> writes = {
        {"append", [](ModuleObject* list) { list->append(nullptr, QStringLiteral("new")); }},
        {"insert", [](ModuleObject* list) { list->insert(nullptr, new ModuleObject, true, 1); }},
        {"move", [](ModuleObject* list) { list->insert(nullptr, list->c(2), true, 0); }},
        {"remove", [](ModuleObject* list) { list->remove(nullptr, QStringLiteral("#1")); }},
        {"set", [](ModuleObject* list) { list->set(nullptr, QStringLiteral("#1.x"), 1); }},
        {"create",
         [](ModuleObject* list) { list->set(nullptr, mIndex(list->size(), QStringLiteral(".x.y")), 1); }},
        {"load", [](ModuleObject* list) { list->loadJson(nullptr, json("[1, 2]")); }},
        {"clear", [](ModuleObject* list) { list->clear(nullptr); }},
        {"reorder", [](ModuleObject* list) { list->reorder(nullptr, 0, 2); }},
        {"destroy", [](ModuleObject* list) { delete list->c(1); }},
    };
    const QList<Row> reactions = {
        {"append", [](ModuleObject* list) { list->append(nullptr); }},
        {"remove first", [](ModuleObject* list) { list->remove(nullptr, QStringLiteral("#0")); }},
        {"remove all one by one",
         [](ModuleObject* list) {
             while (list->remove(nullptr, QStringLiteral("#0"))) {
             }
         }},
        {"insert first", [](ModuleObject* list) { list->insert(nullptr, new ModuleObject, true, 0); }},
        {"load", [](ModuleObject* list) { list->loadJson(nullptr, json("{'a': [1, 2, 3]}")); }},
        {"copy", [](ModuleObject* list) { list->copyFrom(nullptr, list->c(0)); }},
        {"delete first and last",
         [](ModuleObject* list) {
             if (list->size() > 0) {
                 delete list->c(0);
             }
             if (list->size() > 0) {
                 delete list->c(list->size() - 1);
             }
         }},
        {"delete list", [](ModuleObject* list) { delete list; }},
    };
    for (const Row& write : writes) {
        for (const Row& reaction : reactions) {
            QTest::addRow("%s / %s", write.first, reaction.first) << write.second << reaction.second;
        }
    }
}

void TestNodeReentrancy::handler_mayDoAnythingDuring() {
    QFETCH(Action, write);
    QFETCH(Action, reaction);
    ModuleObject root;
    QPointer<ModuleObject> list(root.append(nullptr, QStringLiteral("list")));
    list->loadJson(nullptr, json("[{'x': 0}, {'x': 1}, {'x': 2}]"));
    int calls = 0;
    const auto react = [&] {
        if (++calls == 1 && list) {
            reaction(list);
        }
    };
    for (ModuleObject* node : {list.data(), list->r(QStringLiteral("#1.x"))}) {
        connect(node, &ModuleObject::changed, this, react);
        connect(node, &ModuleObject::added, this, react);
        connect(node, &ModuleObject::removed, this, react);
    }
    write(list);
    QVERIFY(calls > 0);
    // The tree is whole: every child is where it says and says where it is.
    for (const ModuleObject* node : root.cmobjs(true)) {
        QVERIFY(node->pmobj()->c(node->indexInPmobj()) == node);
        QVERIFY(node->pmobj()->c(node->name()) == node);
    }
}

void TestNodeReentrancy::insert_givesWayToHandlers_data() {
    QTest::addColumn<QString>("action");
    QTest::addColumn<bool>(
        "inTarget");  // heard when the target drops a namesake, not when the source lets go
    for (const bool inTarget : {false, true}) {
        for (const char* action :
             {"delete target", "delete node", "take node elsewhere", "put target into node", "nothing"}) {
            QTest::addRow("%s (%s)", action, inTarget ? "target" : "source") << action << inTarget;
        }
    }
    QTest::newRow("take the name again") << "take the name again" << true;
}

void TestNodeReentrancy::insert_givesWayToHandlers() {
    QFETCH(QString, action);
    QFETCH(bool, inTarget);
    ModuleObject root;
    root.loadJson(nullptr,
                  json(inTarget ? "{'source': {'node': {'x': 1}}, 'target': {'node': 2}, 'other': {}}"
                                : "{'source': {'node': {'x': 1}}, 'target': {}, 'other': {}}"));
    QPointer<ModuleObject> node(root.r(QStringLiteral("source.node"))),
        target(root.c(QStringLiteral("target")));
    ModuleObject* other = root.c(QStringLiteral("other"));
    bool acted = false;
    connect(inTarget ? target.data() : root.c(QStringLiteral("source")), &ModuleObject::removed, this, [&] {
        if (std::exchange(acted, true)) {
            return;
        }
        if (action == QLatin1String("delete target")) {
            delete target;
        } else if (action == QLatin1String("delete node")) {
            delete node;
        } else if (action == QLatin1String("take node elsewhere")) {
            other->insert(nullptr, node);
        } else if (action == QLatin1String("put target into node")) {
            node->insert(nullptr, target);
        } else if (action == QLatin1String("take the name again")) {
            target->insert(nullptr, new ModuleObject(QStringLiteral("node")));
        }
    });
    QPointer<ModuleObject> kept(target);
    const bool inserted = target->insert(this, node);
    QVERIFY(acted);
    QCOMPARE(inserted, action == QLatin1String("nothing"));
    QCOMPARE(inserted, kept && node && node->pmobj() == kept.data());
    if (action == QLatin1String("take node elsewhere")) {
        QVERIFY(node->pmobj() == other);
    }
    ModuleManager::purgeRemoved();
    QVERIFY(!node || !node->pmobj()->isNull());  // none is left that nobody owns
}

void TestNodeReentrancy::handler_mayDeleteTheNodeWritten() {
    auto* node = new ModuleObject;
    QPointer<ModuleObject> guard(node);
    int later = 0;
    connect(node, &ModuleObject::changed, this, [node] { delete node; });
    connect(node, &ModuleObject::changed, this, [&later] { ++later; });
    node->setValue(nullptr, 1);
    QVERIFY(!guard);
    QCOMPARE(later, 0);
}

void TestNodeReentrancy::listenersConnectedDuringAnEmissionAreNotCalledInIt() {
    ModuleObject node;
    int calls = 0;
    QMetaObject::Connection first = connect(&node, &ModuleObject::changed, this, [&] {
        disconnect(first);
        connect(&node, &ModuleObject::changed, this, [&calls] { ++calls; });
    });
    node.setValue(nullptr, 1);
    QCOMPARE(calls, 0);
    node.setValue(nullptr, 2);
    QCOMPARE(calls, 1);
}

void TestNodeReentrancy::nestedWrites_areToldInnermostFirst() {
    ModuleObject node;
    connect(&node, &ModuleObject::changed, this, [&node](const QVariant& value) {
        if (value.toInt() < 3) {
            node.setValue(nullptr, value.toInt() + 1);
        }
    });
    Recorder recorder(&node);
    node.setValue(nullptr, 1);
    QCOMPARE(recorder.heard, (QStringList{"changed 3<2", "changed 2<1", "changed 1<"}));
    QCOMPARE(node.getInt(), 3);
}

void TestNodeReentrancy::removedDuringRemoval_isToldOnce() {
    ModuleObject list;
    list.loadJson(nullptr, json("[1, 2]"));
    ModuleObject* kept = list.c(1);
    int told = 0;
    connect(&list, &ModuleObject::removed, this, [&](const QString& name) {
        if (++told == 1) {
            list.remove(nullptr, name);
        }
    });
    list.remove(nullptr, QStringLiteral("#0"));
    QCOMPARE(told, 2);
    QVERIFY(list.size() == 1 && list.c(0) == kept);
}

void TestNodeReentrancy::nodeDestroyedByItsOwner_mayTakeItsParentAlong() {
    auto* parent = new ModuleObject;
    auto* child = new ModuleObject(QStringLiteral("child"), parent);
    connect(parent, &ModuleObject::removed, this, [parent] { delete parent; });
    QPointer<ModuleObject> parentGuard(parent), childGuard(child);
    delete child;
    QVERIFY(!parentGuard && !childGuard);
}

void TestNodeReentrancy::removedNode_livesUntilTheOutermostLoopWaits() {
    ModuleManager::setOutermostLoop(1);
    ModuleObject list;
    QPointer<ModuleObject> element(list.append(nullptr));
    QEventLoop loop;
    bool aliveInHandler = false;
    QTimer::singleShot(0, this, [&] {
        list.remove(nullptr, QStringLiteral("#0"));
        aliveInHandler = element;
        QTimer::singleShot(1, &loop, &QEventLoop::quit);
    });
    loop.exec();
    QVERIFY(aliveInHandler);
    QVERIFY(!element);
}

void TestNodeReentrancy::removedNode_survivesNestedLoops() {
    ModuleManager::setOutermostLoop(1);
    ModuleObject list;
    QPointer<ModuleObject> element(list.append(nullptr));
    QEventLoop outer;
    bool aliveAfterNested = false;
    QTimer::singleShot(0, this, [&] {
        QEventLoop nested;
        QTimer::singleShot(0, this, [&] {
            list.remove(nullptr, QStringLiteral("#0"));
            QTimer::singleShot(1, &nested, &QEventLoop::quit);
        });
        nested.exec();
        aliveAfterNested = element && element->isNull() == false;
        QTimer::singleShot(1, &outer, &QEventLoop::quit);
    });
    outer.exec();
    QVERIFY(aliveAfterNested);
    QVERIFY(!element);
}

void TestNodeReentrancy::removedNode_takesItsObjectsAlong() {
    ModuleObject root;
    root.loadJson(nullptr, json("{'a': {'b': [1, 2]}}"));
    QPointer<QTimer> timer(new QTimer(root.r(QStringLiteral("a"))));
    QPointer<ModuleObject> deep(root.r(QStringLiteral("a.b.#1")));
    root.remove(nullptr, QStringLiteral("a"));
    QVERIFY(timer && deep);
    ModuleManager::purgeRemoved();
    QVERIFY(!timer && !deep);
}

QTEST_GUILESS_MAIN(TestNodeReentrancy)
#include "test_nodereentrancy.moc"
