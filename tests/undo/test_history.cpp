#include "json/jsonwriter.h"
#include "support/executorbench.h"
#include "support/suite.h"
#include "support/text.h"
#include "undo/edit.h"
#include "undo/history.h"

#include <QRandomGenerator>

using namespace lumo;

/// The steps of the history on the tree alone. LUMO_SEED=n repeats one sequence.
class TestHistory : public QObject {
    Q_OBJECT

    test::ExecutorBench bench_;
    QRandomGenerator random_;

    static History* history() { return History::instance(); }
    static ModuleObject* program() { return m("lumo.program"); }
    static QByteArray content() {
        mendo::JsonWriter text;
        for (const EditedList list : editedLists) {
            text.json(listOf(list)->exportToJson());
        }
        return text.take();
    }
    int rowOf(const ModuleObject* list) { return random_.bounded(list->size()); }
    QVariant value() {
        const QVariant values[] = {
            random_.bounded(500), random_.bounded(1.0), QString("文 %1.\n"), true, QVariant(), QString()};
        return values[random_.bounded(6)];
    }
    QJsonValue statement() {
        const char* const made[] = {
            "{'type':'moveL','speed':50,'zone':2,'execute':true,'note':'','toolset':{},'point':{'trans':"
            "[0.1,0.2,0.3],'rot':[0,0,0],'near':[]}}",
            "{'type':'open','index':0,'laserPower':'50','execute':true}", "{'type':'close','a.b':{'#':1}}"};
        return test::json(made[random_.bounded(3)]);
    }
    void insert(ModuleObject* list, const QJsonValue& content) {
        auto* const row = new ModuleObject;
        list->insert(this, row, true, random_.bounded(list->size() + 1));
        row->loadJson(this, content);  // after it came
    }
    void write(ModuleObject* row) {
        const char* const paths[] = {"speed",         "note", "execute",         "point.trans.#1",
                                     "point.near.#0", "new",  "toolset.end.name"};
        const int way = random_.bounded(12);
        if (way < 7) {
            row->set(this, paths[way], value());
        } else if (way == 7) {
            row->r("point")->loadJson(this, test::json("{'trans':[1,2,3],'rot':{}}"));
        } else if (way == 8) {
            row->remove(this, "toolset");
        } else if (way == 9) {
            row->r("point.trans")->loadJson(this, QJsonValue(7));
        } else if (way == 10) {
            row->r("point.near")->clear(this, true);
        } else {
            row->loadJson(this, statement());
        }
    }
    void changeProgram() {
        const int way = random_.bounded(10);
        if (way < 2 || program()->size() < 5) {
            insert(program(), statement());
        } else if (way < 4) {
            program()->remove(this, mIndex(rowOf(program())));
        } else if (way < 6) {
            const int from = rowOf(program()), to = rowOf(program());
            Edit::moving(from, to);
            program()->reorder(this, from, to);
        } else {
            ModuleObject* const row = program()->c(rowOf(program()));
            if (way == 6 && row->hasCmobj("point")) {
                Edit::touch(row->c("point"));
                row->set(this, "point.trans.#1", value());
            } else {
                Edit::touch(row);
                write(row);
            }
        }
    }
    void changeList(EditedList which) {
        ModuleObject* const list = listOf(which);
        const int way = which == EditedList::Ports ? 3 : random_.bounded(4);
        if (way == 0 || list->size() == 0) {
            insert(list, test::json("{'name':'B','power':60,'time':'100'}"));
        } else if (way == 1) {
            list->remove(this, mIndex(rowOf(list)));
        } else {
            list->c(rowOf(list))->set(this, which == EditedList::Ports ? "enable" : "name", value());
        }
    }
    void act() {
        const EditedList page = random_.bounded(3) ? EditedList::Program : editedLists[random_.bounded(4)];
        const Edit edit(page, "step");
        const Edit inner(EditedList::Program, "part of it");
        for (int count = random_.bounded(12) ? 1 : 4; count > 0; --count) {
            page == EditedList::Program || random_.bounded(4) == 0 ? changeProgram() : changeList(page);
        }
    }
    /// Takes all steps that way, and compares the contents on the way with those that were kept.
    bool walk(History::Way way, int from, int to, const QMap<int, QByteArray>& kept) {
        for (int step = from; step != to; step += to > from ? 1 : -1) {
            if (kept.contains(step) && kept.value(step) != content()) {
                return false;
            }
            if (!history()->go(way)) {
                return false;
            }
        }
        return kept.value(to) == content();
    }
    int steps() {
        int count = 0;
        while (history()->go(History::Way::Undo)) {
            ++count;
        }
        return count;
    }

private slots:
    void init() { bench_.reset(); }

    void tenThousandEdits_undoneAndRedone_giveTheSameTree() {
        const int given = qEnvironmentVariableIntValue("LUMO_SEED");
        const quint32 seed = given ? quint32(given) : QRandomGenerator::global()->generate() % 1000000;
        random_.seed(seed);
        QMap<int, QByteArray> kept{{0, content()}};
        int steps = 0;
        {
            QObject scope;
            connect(history(), &History::changed, &scope, [&steps] { ++steps; });
            while (steps < 10000) {
                act();
                if (random_.bounded(100) == 0) {
                    kept[steps] = content();
                }
            }
        }
        kept[steps] = content();
        const QByteArray told = "LUMO_SEED=" + QByteArray::number(seed);
        QVERIFY2(walk(History::Way::Undo, steps, 0, kept), told);
        QVERIFY2(!history()->go(History::Way::Undo), told);
        QVERIFY2(walk(History::Way::Redo, 0, steps, kept), told);
        for (int turn = 0; turn < 20; ++turn) {
            const int depth = random_.bounded(200);
            for (const History::Way way : {History::Way::Undo, History::Way::Redo}) {
                for (int step = 0; step < depth; ++step) {
                    QVERIFY2(history()->go(way), told);
                }
            }
            QVERIFY2(kept.value(steps) == content(), told);
        }
    }

    void changesFromElsewhere_endTheHistory() {
        const std::function<void()> changes[] = {[this] { program()->append(this); },
                                                 [this] { program()->remove(this, "#0"); },
                                                 [this] { program()->reorder(this, 0, 1); },
                                                 [this] { bench_.load("delay"); },
                                                 [this] { m("lumo.param")->append(this); },
                                                 [this] {
                                                     const Edit edit(EditedList::Program, "replaced");
                                                     bench_.load("delay");
                                                 },
                                                 [this] { m("lumo.param")->loadJson(this, QJsonArray()); }};
        for (const auto& change : changes) {
            bench_.load("delay 1; delay 2");
            for (int edit = 0; edit < 2; ++edit) {
                const Edit step(EditedList::Program, "flag");
                Edit::touch(program()->c(0));
                program()->c(0)->set(this, "execute", edit > 0);
            }
            history()->go(History::Way::Undo);
            change();
            const QByteArray after = content();
            QVERIFY(!history()->go(History::Way::Undo) && !history()->go(History::Way::Redo));
            QCOMPARE(content(), after);
        }
        // A value written by another stays, and so do the steps around it.
        bench_.load("delay 1; delay 2");
        {
            const Edit step(EditedList::Program, "flag");
            Edit::touch(program()->c(0));
            program()->c(0)->set(this, "delaytime", 5);
        }
        m("lumo.program.#0")->set(this, "note", "host");
        m("lumo.toolset.end")->set(this, "name", "host");
        QCOMPARE(steps(), 1);
        QCOMPARE(test::text(program()->c(0)), "{'delaytime':1,'note':'host','type':'delay'}");
    }

    void aStepThatMeetsOtherContent_isDroppedAndTold() {
        bench_.load("moveL to=1,2,3");
        {
            const Edit step(EditedList::Program, "teach");
            Edit::touch(program()->c(0));
            program()->c(0)->set(this, "point.trans.#2", 9);
        }
        program()->c(0)->remove(this, "point");  // by another
        QCOMPARE(steps(), 1);
        QCOMPARE(test::boxes().size(), 1);
        QVERIFY(!history()->go(History::Way::Redo));
    }

    void resumeData_followAsByHand() {
        bench_.load("delay 100; delay 5000; delay 100");
        bench_.at(1000, [] { test::ExecutorBench::pause(); });
        bench_.run();
        QCOMPARE(test::ExecutorBench::resumeLine(), 1);
        {
            const Edit step(EditedList::Program, "delete");
            program()->remove(this, "#0");
        }
        QCOMPARE(test::ExecutorBench::resumeLine(), 0);
        QVERIFY(history()->go(History::Way::Undo));
        QCOMPARE(test::ExecutorBench::resumeLine(), 1);
        // Not during a run.
        bench_.at(50, [this] { QVERIFY(!history()->go(History::Way::Redo) && program()->size() == 3); });
        bench_.run(2);
        QVERIFY(history()->go(History::Way::Redo));
    }

    void anEditOfALongProgram_costsWhatItChanges() {
        QJsonArray lines;
        for (int line = 0; line < 10000; ++line) {
            lines.append(test::json("{'type':'delay','delaytime':100,'execute':true}"));
        }
        program()->loadJson(this, lines);
        const QByteArray before = content();
        for (int edit = 0; edit < 1000; ++edit) {
            const Edit step(EditedList::Program, "edit");
            Edit::touch(program()->c(edit * 7 % 10000)->c("delaytime"));
            program()->c(edit * 7 % 10000)->set(this, "delaytime", edit);
            edit % 2 ? void(program()->remove(this, mIndex(edit))) : insert(program(), statement());
        }
        {
            const Edit all(EditedList::Program, "batch");
            for (ModuleObject* line : program()->cmobjs()) {
                Edit::touch(line->c("execute"));
                line->set(this, "execute", false);
            }
        }
        QCOMPARE(steps(), 1001);
        QCOMPARE(content(), before);
    }
};

LUMO_TEST(TestHistory)
#include "test_history.moc"
