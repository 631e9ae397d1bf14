// Lookups, values, writes and signals of nodes.

#include "mendo/modulemanager.h"
#include "support/suite.h"
#include "support/text.h"

#include <QPointer>
#include <QRegularExpression>
#include <QTimer>

#include <cmath>
#include <functional>
#include <random>

using mendo::ModuleManager;
using mendo::ModuleObject;
using test::json;
using test::text;

namespace {

QObject sender;
QObject* const me = &sender;

/// Records the signals of all nodes, as "path changed new<old me" or "path added name@position".
void listen(ModuleObject* root, QStringList* seen) {
    for (ModuleObject* n : QList<ModuleObject*>{root} + root->cmobjs(true)) {
        const QString path = n == root ? QString() : n->path() + ' ';
        const auto note = [=](const QString& what, const QString& value, const QObject* by) {
            seen->append(path + what + value + (by == me ? " me" : by ? " other" : ""));
        };
        const auto at = [=](const QString& name) {
            return name + '@' + QString::number(n->c(name)->indexInPmobj());
        };
        QObject::connect(n, &ModuleObject::changed, [=](auto now, auto before, auto by) {
            note("changed ", now.toString() + '<' + before.toString(), by);
        });
        QObject::connect(n, &ModuleObject::added, [=](auto name, auto by) {
            const QVariant value = n->c(name)->value();  // invalid for a node that set() has just made
            note("added ", at(name) + (value.isValid() ? '=' + value.toString() : QString()), by);
        });
        QObject::connect(n, &ModuleObject::removed,
                         [=](auto name, auto by) { note("removed ", at(name), by); });
    }
}

}  // namespace

class TestNode : public QObject {
    Q_OBJECT
private:
    struct Container {
        QString path;
        bool isList;
        QVector<int> values;  // of the children; all are different
    };

    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }
    ModuleObject* nodeOf(const Container& container) const { return root_->r(container.path); }

    void add(Container& container) {
        const int value = ++made_, position = below(container.values.size() + 1), kind = below(3);
        const QString name = container.isList ? QString() : QString("k%1").arg(value);
        if (kind == 2) {
            const QString element = container.isList ? mIndex(container.values.size()) : name;
            root_->set(nullptr, container.path + '.' + element, value);
        } else if (kind == 1) {
            nodeOf(container)->append(nullptr, name)->setValue(nullptr, value);
        } else {
            auto* const child = new ModuleObject(name);
            child->setValue(nullptr, value);
            nodeOf(container)->insert(nullptr, child, true, position);
        }
        container.values.insert(kind ? container.values.size() : position, value);
    }

    void change(Container& container, Container& other, int from) {
        const int to = below(container.values.size()), kind = below(5);
        ModuleObject *const node = nodeOf(container), *const child = node->c(from);
        // Always asked for: moved to a map without a name, it would get one that the list may generate, too.
        const QString name = child->name();
        if (kind == 0) {
            node->reorder(nullptr, from, to);
            container.values.move(from, to);
            return;
        }
        const int value = container.values.takeAt(from);
        if (kind == 1) {
            const int place = std::min(to, other.values.size());
            other.values.insert(place, value);
            nodeOf(other)->insert(nullptr, child, true, place);
        } else if (kind == 2) {
            delete child;
        } else {
            node->remove(nullptr, kind == 3 ? mIndex(from) : name);
        }
    }

    /// Whether all lookups find the child and its position is right.
    bool isConsistent(const Container& container, int i) const {
        const ModuleObject* const node = nodeOf(container);
        ModuleObject* const child = node->c(i);
        return child->getInt() == container.values[i] && child->indexInPmobj() == i &&
               child->pmobj() == node && node->c(child->name()) == child &&
               root_->r(child->path()) == child && child->nextBmobj() == node->c(i + 1) &&
               child->prevBmobj() == node->c(i - 1);
    }

    std::mt19937 random_;
    std::unique_ptr<ModuleObject> root_;
    int made_ = 0;

private slots:
    void lookup_findsByNameAndPosition() {
        const auto root =
            test::node("{'':[5],'a':1,'b':{'c':{'d':2}},'h#':[6],'list':[10,11,{'x':12}],'dotted.name':3}");
        const QHash<QString, int> there = {{"a", 1},      {"b.c.d", 2}, {"list.#1", 11}, {"list.#2.x", 12},
                                           {"b.#0.d", 2}, {".#0", 5},   {"h#.#0", 6},    {"#0.#0", 5}};
        for (auto row = there.begin(); row != there.end(); ++row) {
            QVERIFY(root->hasRmobj(row.key()) && m(row.key(), root.get())->getInt() == row.value());
        }
        for (const char* path : {"list.#3", "list.#99999999999999999999", "list.#", "list.#1x", "b.x.d",
                                 "a.b", "a.", ".a", "dotted.name"}) {
            QVERIFY2(!root->hasRmobj(path) && root->r(path)->isNull(), path);
        }
        QVERIFY(root->r("") == root.get() && root->c("dotted.name")->getInt() == 3);
        // A recursive lookup finds the first one, depth first.
        QVERIFY(root->c("x")->isNull() && !root->hasCmobj("x") && root->hasCmobj("x", true));
        QCOMPARE(root->c("d", true)->path() + ' ' + root->c("x", true)->path(), "b.c.d list.#2.x");
        QCOMPARE(mName("a", "b", "#1") + mName("a.b", "") + mName("", "b", "c"), "a.b.#1a.bb.c");
        QCOMPARE(ModuleObject::indexOfRname("LUMO_DO.#12") + ModuleObject::indexOfRname("#3"), 15);
        for (const char* name : {"DO2_2", "a.#3.b", "a.#3x", "#-1", ""}) {
            QCOMPARE(ModuleObject::indexOfRname(name), 0);
        }
    }

    void nullNode_ignoresWritesAndReportsConnections() {
        ModuleObject* const null = ModuleObject::null();
        ModuleObject child;
        null->setValue(me, 5);
        null->set(me, "a.b", 5)->loadJson(me, json("{'a': 1}"));
        null->clear(me);
        null->reorder(me, 0, 0);
        QVERIFY(!null->insert(me, &child) && !null->remove(me, "a") && null->append(me, "a")->isNull());
        QVERIFY(null->isNull() && !null->value().isValid() && null->size() == 0 && !null->hasRmobj(""));
        for (ModuleObject* found : {null->c(0), null->c("a"), null->r("a.#1"), null->r(""), null->pmobj(),
                                    null->prevBmobj(), null->nextBmobj()}) {
            QVERIFY(found == null);
        }
        QTest::ignoreMessage(QtCriticalMsg, QRegularExpression("changed.*null node"));
        connect(null, &ModuleObject::changed, this, [] {});
        null->disconnect(this);
    }

    /// As integer, number, boolean (once with either default) and text; -7 and "-" are defaults.
    void values_convertOrGiveTheDefault() {
        const std::vector<std::pair<QVariant, const char*>> rows = {
            {QVariant(), "-7 -7 0 1 -"},
            {-2.7, "-2 -2.7 1 1 -2.7"},
            {0.1 + 0.2, "0 0.3 1 1 0.30000000000000004"},
            {"60.0", "60 60 1 1 60.0"},
            {"True", "-7 -7 1 1 True"},
            {"false", "-7 -7 0 0 false"},
            {"nan", "-7 -7 0 1 nan"},
            {std::nan(""), "-7 -7 0 1 -"},
            {Q_INT64_C(-2147483649), "-7 -2.14748e+09 1 1 -2147483649"},
            {-2147483648.5, "-2147483648 -2.14748e+09 1 1 -2147483648.5"},
            {QVariantList{1}, "-7 -7 0 1 -"},
            {QVariant::fromValue<QObject*>(this), "-7 -7 0 1 -"}};
        for (const auto& [value, expected] : rows) {
            ModuleObject node;
            node.setValue(me, value);
            QString text;
            QTextStream(&text) << node.getInt(-7) << ' ' << node.getDouble(-7) << ' ' << node.getBool(false)
                               << ' ' << node.getBool(true) << ' ' << node.getString("-");
            QCOMPARE(text, expected);
        }
    }

    void objectOwnedByANode_isDeletedBeforeTheNodes() {
        QStringList seen;
        {
            ModuleObject root;
            ModuleObject* const package = root.append(nullptr, "lumo");
            package->set(nullptr, "port.#0", "a")->set(nullptr, "port.#1", "b");
            for (ModuleObject* owner : {package, package->c("port")}) {
                connect(new QObject(owner), &QObject::destroyed, me,
                        [&seen, owner] { seen << owner->path() + ' ' + owner->r("port.#1")->getString(); });
            }
        }
        QCOMPARE(seen, QStringList({"lumo.port ", "lumo b"}));
    }

    void listNames_areUniqueAndNeverReused() {
        const auto list = test::node("[]");
        QSet<QString> seen;
        for (int i = 0; i < 30; ++i) {
            const QString asked = i == 10 ? "id15" : i % 3 ? "" : ModuleObject::generateId(list.get());
            const QString name = list->append(nullptr, asked)->name();
            QVERIFY2(!seen.contains(name) && list->hasCmobj(name), qPrintable(name));
            seen << name;
            if (i % 2) {
                list->remove(nullptr, name);
            }
        }
        QVERIFY(!seen.contains(list->append(nullptr, list->c(0)->name())->name()));
        QVERIFY(list->append(nullptr, "#1x")->name() != "#1x" &&
                list->append(nullptr, "mine")->name() == "mine");
    }

    void write_changesAndSignalsOnlyItsNodes() {
        using Write = std::function<void(ModuleObject*)>;
        const std::vector<std::tuple<const char*, Write, const char*, const char*>> rows = {
            {"{'a':{'b':1}}", [](auto n) { n->set(me, "a.b", 2); }, "{'a':{'b':2}}", "a.b changed 2<1 me"},
            {"{'a':1}", [](auto n) { n->c("a")->trigger(); }, "{'a':1}", "a changed 1<1"},
            {"{'a':1}", [](auto n) { n->set(me, "b.c", 2, false); }, "{'a':1}", ""},
            {"{}", [](auto n) { n->set(me, "a.b.c", 9); }, "{'a':{'b':{'c':9}}}", "added a@0 me"},
            {"{'a':1}", [](auto n) { n->set(me, "a.b", 9); }, "{'a':{'b':9}}", "a added b@0 me"},
            {"{'p':{}}", [](auto n) { n->set(me, "p.#0", 9); }, "{'p':[9]}", "p added id1@0 me"},
            {"{'l':[1]}", [](auto n) { n->set(me, "l.#1.x", 9); }, "{'l':[1,{'x':9}]}", "l added id1@1 me"},
            {"[1]", [](auto n) { n->set(me, "x", 9); }, "[1,9]", "added x@1 me"},
            {"{'l':[1]}", [](auto n) { n->set(me, "l.#2", 9); }, "{'l':[1]}", ""},
            {"{'a':1}", [](auto n) { n->set(me, "#1", 9)->set(me, "b.c.#1", 9)->set(me, "c..b", 9); },
             "{'a':1}", ""},
            {"{'a':1}", [](auto n) { n->append(me, "a"), n->append(me, "b.c"); }, "{'a':1,'b.c':null}",
             "added b.c@1 me"},
            {"{'a':1}", [](auto n) { n->append(me); }, "{'a':1,'id1':null}", "added id1@1 me"},
            {"{}", [](auto n) { n->append(me); }, "[null]", "added id1@0 me"},
            {"{}", [](auto n) { n->append(me, "#0"); }, "[null]", "added id1@0 me"},
            {"[1]", [](auto n) { n->append(me, "x"); }, "[1,null]", "added x@1 me"},
            {"{'l':[1,2],'m':{'a':3}}", [](auto n) { n->c("l")->insert(me, n->r("m.a"), true, 1); },
             "{'l':[1,3,2],'m':{}}", "m removed a@0 me, l added a@1=3 me"},
            {"{'a':1,'b':2}", [](auto n) { n->insert(me, new ModuleObject("a")); }, "{'a':null,'b':2}",
             "removed a@0 me, added a@1 me"},
            {"{'a':1,'b':{}}", [](auto n) { n->c("b")->insert(me, n->c("a"), false); }, "{'b':{'a':1}}", ""},
            {"{'a':{'b':{}}}", [](auto n) { n->r("a.b")->insert(me, n->c("a")); }, "{'a':{'b':{}}}", ""},
            {"{}", [](auto n) { n->insert(me, n) || n->insert(me, n->c("b")); }, "{}", ""},
            {"[1,2,3]", [](auto n) { n->remove(me, "#1"); }, "[1,3]", "removed id1@1 me"},
            {"[1,2]", [](auto n) { n->remove(me, "#2") || n->remove(me, "#0", false); }, "[2]", ""},
            {"[1,2,3]", [](auto n) { delete n->c(1); }, "[1,3]", "removed id1@1"},
            {"[0,1,2,3]", [](auto n) { n->reorder(me, 3, 1); }, "[0,3,1,2]", "changed < me"},
            {"[0]", [](auto n) { n->reorder(me, 1, 0), n->reorder(me, -1, 0), n->reorder(me, 0, 1); }, "[0]",
             ""},
            {"{'l':[1]}", [](auto n) { n->c("l")->clear(me); }, "{'l':[]}", "l changed < me"},
            {"{'m':{'a':1}}", [](auto n) { n->c("m")->clear(me, false); }, "{'m':{}}", ""},
            {"{'a':1}", [](auto n) { n->c("a")->clear(me, true, true); }, "{'a':null}", "a changed <1 me"},
            {"{'a':1}", [](auto n) { n->loadJson(me, json("{'a':2}")); }, "{'a':2}", "changed < me"},
            {"{'a':{'b':1}}", [](auto n) { n->c("a")->loadJson(me, 5); }, "{'a':5}", "a changed 5< me"},
            {"{'a':1}", [](auto n) { n->loadJson(me, json("{}"), false); }, "{}", ""},
            {"[1]", [](auto n) { n->loadJson(me, QJsonValue::Undefined); }, "[1]", ""},
            {"{'a':1,'b':2}", [](auto n) { n->c("a")->copyFrom(me, n->c("b")); }, "{'a':2,'b':2}",
             "a changed 2<1 me"},
            {"{'a':[2]}", [](auto n) { n->c("a")->copyFrom(me, n->c("b"), false, true); }, "{'a':[2]}", ""},
            {"{'a':[2]}", [](auto n) { n->c("a")->copyFrom(me, n->c("b"), false); }, "{'a':[]}", ""},
            {"{'a':{'c':2}}", [](auto n) { n->c("a")->copyFrom(me, n->c("b"), false); }, "{'a':{}}", ""},
            {"{'a':{'b':1}}", [](auto n) { n->c("a")->copyFrom(me, n, false); }, "{'a':{'a':{'b':1}}}", ""},
            {"{'a':{'b':1}}", [](auto n) { n->copyFrom(me, n->c("a"), false); }, "{'b':1}", ""},
        };
        for (const auto& [before, write, after, announced] : rows) {
            // Records and objects must behave alike.
            const auto records = test::node(before), objects = test::node(before);
            QStringList seen;
            listen(objects.get(), &seen);
            write(records.get());
            write(objects.get());
            QCOMPARE(text(records.get()), after);
            QCOMPARE(text(objects.get()) + ' ' + seen.join(", "), QString(after) + ' ' + announced);
        }
    }

    void loadAndCopy_replaceOrMerge() {
        // Before, loaded content, result of replacing, result of merging.
        const std::vector<std::array<const char*, 4>> rows = {
            {"{'a':1,'b':{'x':1}}", "{'b':{'y':2},'c':3}", "{'b':{'y':2},'c':3}",
             "{'a':1,'b':{'x':1,'y':2},'c':3}"},
            {"[{'n':1,'t':1},2,3]", "[{'n':9},8]", "[{'n':9},8]", "[{'n':9,'t':1},8,3]"},
            {"[1]", "{}", "[]", "[1]"},
            {"{'a':1}", "[]", "[]", "[]"},
            {"[1]", "{'a':1}", "{'a':1}", "{'a':1}"},
            {"{'p':[1,2]}", "{'p':{}}", "{'p':[]}", "{'p':[1,2]}"},
            {"{'p':[1,2]}", "{'p':null}", "{'p':[]}", "{'p':[1,2]}"},
            {"{'p':{'x':1}}", "{'p':4}", "{'p':4}", "{'p':{'x':1}}"},
            {"{'p':4}", "{'p':null}", "{'p':null}", "{'p':null}"},
            {"{'p':4}", "{'p':{'x':1}}", "{'p':{'x':1}}", "{'p':{'x':1}}"},
        };
        for (const auto& [before, loaded, replaced, merged] : rows) {
            for (int variant = 0; variant < 8; ++variant) {
                const bool merge = variant & 1, copied = variant & 2, objects = variant & 4;
                const auto target = test::node(before);
                if (objects) {
                    target->cmobjs(true);
                }
                if (copied) {
                    target->copyFrom(me, test::node(loaded).get(), true, merge);
                } else {
                    target->loadJson(me, json(loaded), true, merge);
                }
                QCOMPARE(text(target.get()), merge ? merged : replaced);
                for (ModuleObject* child : target->cmobjs()) {
                    QVERIFY(target->c(child->name()) == child);
                }
            }
        }
    }

    void ownValue_isReplacedMergedOrKept() {
        // Loaded over a map with value 5: the content, and the value after replacing, merging, keepValue.
        for (const QString row : {"{'a':2} -1 5 5", "{} -1 5 5", "7 7 7 7", "null -1 5 -1"}) {
            const QStringList words = row.split(' ');
            for (int variant = 0; variant < 3; ++variant) {
                const auto target = test::node("{'a':1}");
                target->setValue(me, 5);
                const QJsonValue loaded = json('[' + words[0].toUtf8() + ']').toArray().first();
                target->loadJson(me, loaded, true, variant == 1, variant == 2);
                QCOMPARE(target->getInt(-1), words[1 + variant].toInt());
            }
        }
    }

    void loadedMap_keepsItsObjects_aListDoesNot() {
        const auto root = test::node("{'b': 1, 'c': 2, 'z': {'deep': 1}, 'l': [1]}");
        ModuleObject *const kept = root->c("c"), *const deep = root->r("z.deep"),
                            *const element = root->r("l.#0");
        const QPointer<ModuleObject> removed(root->c("b"));
        root->loadJson(me, json("{'a': 0, 'c': 5, 'z': {'deep': 6, 'more': 7}, 'l': [3]}"));
        QVERIFY(root->c("c") == kept && root->r("z.deep") == deep && root->r("l.#0") != element);
        QVERIFY(kept->indexInPmobj() == 1 && deep->getInt() == 6);
        QVERIFY(element->pmobj()->isNull() && element->indexInPmobj() == -1);
        QVERIFY(removed && removed->pmobj()->isNull());
        // Removed nodes may be inserted again or deleted before the purge.
        const QPointer<ModuleObject> a(root->c("a")), c(root->c("c"));
        root->clear(me);
        root->insert(me, removed);
        delete a;
        ModuleManager::purgeRemoved();
        QVERIFY(removed && root->c("b") == removed && root->size() == 1 && !c);
    }

    void copyAndExport_dropPointersAndListNames() {
        const auto source = test::node("{'trans': [1, 2], 'nan': 0, 'object': 0}");
        auto* const timer = new QTimer(source.get());
        source->setValue(me, 4);
        source->c("trans")->append(me, "x");
        source->set(me, "nan", std::nan(""))->set(me, "object", QVariant::fromValue(timer));
        ModuleObject copy;
        copy.copyFrom(me, source.get());
        source->set(me, "trans.#0", 9);
        QCOMPARE(text(&copy), "{'nan':null,'object':null,'trans':[1,2,null]}");
        QCOMPARE(text(copy.exportToJson(false)), "{'trans':[1,2,null]}");
        QVERIFY(copy.getInt() == 4 && !copy.c("trans")->hasCmobj("x"));
        QVERIFY(copy.c("object")->value().value<QTimer*>() == timer &&
                ModuleObject::null()->exportToJson().isNull());
    }

    void tree_hasAtMost1024Levels() {
        QJsonValue deep = 1;
        for (int i = 0; i < 3000; ++i) {
            deep = QJsonArray{deep};
        }
        ModuleObject node, outer;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("deepest level"));
        node.loadJson(nullptr, deep);
        int levels = 0;
        for (const ModuleObject* inner = &node; inner->size() > 0; inner = inner->c(0)) {
            ++levels;
        }
        QCOMPARE(levels, 1024);
        for (int i = 0; i < 2; ++i) {
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("refused"));
        }
        QVERIFY(!outer.append(nullptr, "a")->insert(nullptr, &node));
        outer.set(nullptr, QString("x.").repeated(5000) + 'x', 1);
        QVERIFY(!outer.hasCmobj("x"));
    }

    void randomChanges_keepLookupsConsistent() {
        for (unsigned seed = 1; seed <= 16; ++seed) {
            random_.seed(seed);
            std::vector<Container> containers = {
                {"map", false, {}}, {"map.deep", false, {}}, {"list", true, {}}, {"few", false, {}}};
            root_ = test::node("{'map': {'deep': {}}, 'list': [], 'few': {}}");
            containers[0].values = {0};  // the child "deep"
            for (int step = 1; step <= 1500; ++step) {
                Container& container = containers[size_t(below(4))];
                // Mostly changed at the front, with few lookups, so that many position hints become wrong.
                const int from = below(2) ? 0 : below(std::max(container.values.size(), 1));
                const bool keeps = container.values.value(from) == 0;
                const int most = container.path == "few" ? 8 : 150;
                if (keeps || (container.values.size() < most && below(3))) {
                    add(container);
                } else {
                    change(container, containers[size_t(below(4))], from);
                }
                const int stride = step % 500 == 0 ? 1 : step % 50 == 0 ? 37 : 1000;
                for (const Container& checked : containers) {
                    QCOMPARE(nodeOf(checked)->size(), checked.values.size());
                    for (int i = below(stride); i < checked.values.size(); i += stride) {
                        QVERIFY2(isConsistent(checked, i),
                                 qPrintable(QString("seed %1 %2").arg(seed).arg(checked.path)));
                    }
                }
            }
            mendo::ModuleManager::purgeRemoved();
        }
    }
};

LUMO_TEST(TestNode)
#include "test_node.moc"
