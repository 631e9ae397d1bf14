// Handlers that change the tree inside its signals, and the lifetime of removed nodes.

#include "mendo/modulemanager.h"
#include "support/suite.h"
#include "support/text.h"

#include <QEventLoop>
#include <QPointer>
#include <QTimer>

#include <functional>

using mendo::ModuleManager;
using mendo::ModuleObject;
using test::json;

class TestReentrancy : public QObject {
    Q_OBJECT
private slots:
    void cleanup() {
        ModuleManager::setOutermostLoop(0);
        ModuleManager::purgeRemoved();
    }

    void anyChangeInAHandler_keepsTheTreeConsistent() {
        using Action = std::function<void(ModuleObject*)>;
        const std::vector<Action> writes = {
            [](auto list) { list->append(nullptr, "new"); },
            [](auto list) { list->insert(nullptr, new ModuleObject, true, 1); },
            [](auto list) { list->insert(nullptr, list->c(2), true, 0); },
            [](auto list) { list->remove(nullptr, "#1"); },
            [](auto list) { list->set(nullptr, "#1.x", 1); },
            [](auto list) { list->set(nullptr, mIndex(list->size(), ".x.y"), 1); },
            [](auto list) { list->loadJson(nullptr, json("[1, 2]")); },
            [](auto list) { list->clear(nullptr); },
            [](auto list) { list->reorder(nullptr, 0, 2); },
            [](auto list) { delete list->c(1); },
        };
        const std::vector<Action> reactions = {
            [](auto list) { list->append(nullptr); },
            [](auto list) { list->remove(nullptr, "#0"); },
            [](auto list) { list->insert(nullptr, new ModuleObject, true, 0); },
            [](auto list) { list->loadJson(nullptr, json("{'a': [1, 2, 3]}")); },
            [](auto list) { list->copyFrom(nullptr, list->c(0)); },
            [](auto list) { qDeleteAll(list->cmobjs().mid(0, 1) + list->cmobjs().mid(2)); },
            [](auto list) { delete list; },
        };
        for (size_t pair = 0; pair < writes.size() * reactions.size(); ++pair) {
            ModuleObject root;
            const QPointer<ModuleObject> list(root.append(nullptr, "list"));
            list->loadJson(nullptr, json("[{'x': 0}, {'x': 1}, {'x': 2}]"));
            int calls = 0;
            const auto react = [&] {
                if (++calls == 1 && list) {
                    reactions[pair % reactions.size()](list);
                }
            };
            for (ModuleObject* node : {list.data(), list->r("#1.x")}) {
                connect(node, &ModuleObject::changed, this, react);
                connect(node, &ModuleObject::added, this, react);
                connect(node, &ModuleObject::removed, this, react);
            }
            writes[pair / reactions.size()](list);
            QVERIFY(calls > 0);
            for (const ModuleObject* node : root.cmobjs(true)) {
                QVERIFY(node->pmobj()->c(node->indexInPmobj()) == node &&
                        node->pmobj()->c(node->name()) == node);
            }
        }
    }

    void insertion_toleratesHandlersWithoutLeakingNodes() {
        const QStringList actions = {"nothing",   "delete target", "delete node",
                                     "elsewhere", "inside out",    "again"};
        for (int i = 0; i < 2 * actions.size(); ++i) {
            const QString action = actions[i / 2];
            const bool inTarget =
                i % 2;  // handler of the replaced child's removal; else of the node's removal
            const auto root = test::node("{'source': {'node': {'x': 1}}, 'target': {}, 'other': {}}");
            const QPointer<ModuleObject> node(root->r("source.node")), target(root->c("target"));
            if (inTarget) {
                target->append(nullptr, "node");
            }
            bool acted = false;
            connect(inTarget ? target.data() : root->c("source"), &ModuleObject::removed, this, [&] {
                if (std::exchange(acted, true)) {
                    return;
                }
                if (action == "delete target") {
                    delete target;
                } else if (action == "delete node") {
                    delete node;
                } else if (action == "elsewhere") {
                    root->c("other")->insert(nullptr, node);
                } else if (action == "inside out") {
                    node->insert(nullptr, target);
                } else if (action == "again") {
                    target->insert(nullptr, new ModuleObject("node"));
                }
            });
            const bool inserted = target->insert(this, node);
            QVERIFY(acted);
            QCOMPARE(inserted, action == "nothing" || (action == "again" && !inTarget));
            QCOMPARE(inserted, target && node && node->pmobj() == target);
            ModuleManager::purgeRemoved();
            QVERIFY(!node || !node->pmobj()->isNull());
        }
    }

    void nestedWrites_areSignalledInnermostFirstToTheListenersOfThatMoment() {
        ModuleObject node;
        QStringList log;
        const auto note = [&](const QVariant& now, const QVariant& before) {
            log << now.toString() + '<' + before.toString();
        };
        connect(&node, &ModuleObject::changed, this, [&](const QVariant& value) {
            if (value.toInt() < 3) {
                node.setValue(nullptr, value.toInt() + 1);
            } else if (value.toInt() == 3) {
                connect(&node, &ModuleObject::changed, &node, note);
            }
        });
        connect(&node, &ModuleObject::changed, this, note);
        node.setValue(nullptr, 1);
        QCOMPARE(log, (QStringList{"3<2", "2<1", "1<"}));
        node.setValue(nullptr, 4);
        QCOMPARE(log.mid(3), (QStringList{"4<3", "4<3"}));
    }

    void removedNode_livesUntilTheOutermostLoopWaits() {
        ModuleManager::setOutermostLoop(1);
        const auto root = test::node("{'a': {'b': [1, 2]}}");
        const QPointer<ModuleObject> deep(root->r("a.b.#1"));
        const QPointer<QTimer> owned(new QTimer(root->c("a")));
        QEventLoop outer, nested;
        QTimer::singleShot(0, this, [&] {
            QTimer::singleShot(0, this, [&] {
                root->remove(nullptr, "a");
                QTimer::singleShot(1, &nested, &QEventLoop::quit);
            });
            nested.exec();
            QVERIFY(deep && owned && deep->getInt() == 2);
            QTimer::singleShot(1, &outer, &QEventLoop::quit);
        });
        outer.exec();
        QVERIFY(!deep && !owned);
    }
};

LUMO_TEST(TestReentrancy)
#include "test_reentrancy.moc"
