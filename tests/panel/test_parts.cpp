#include "pagebench.h"

#include "files/projectfile.h"
#include "kord/controllermanager.h"
#include "panel/keypad.h"
#include "panel/toolset.h"
#include "support/suite.h"

using lumo::NameFault;
using test::contentOf;
using test::json;
using test::text;

/// Parts of the panel without the page: project files, the pendant's keys, the selectors of tools.
class TestParts : public QObject {
    Q_OBJECT

    test::PageBench bench_;
    ModuleObject* report_ = kord::ControllerManager::cmdItemMobj("endtool.keypad.state_change", "notify");
    std::unique_ptr<lumo::Keypad> keypads_[2];  // two pages must not double a press
    QStringList heard_;

    /// Loads a file. Returns the types and tool set in the tree, or "LINE:COLUMN reason" of the only report.
    QString opened(const QString& path) {
        m("lumo.program")->clear(this);
        m("lumo.toolset")->copyFrom(this, m("lumo.default.default_toolset"));
        bench_.problems.clear();
        if (const auto project = lumo::readProject(path)) {
            lumo::loadProject(this, *project);
            const QString tools =
                m("lumo.toolset.end.name")->getString() + ", " + m("lumo.toolset.ref.name")->getString();
            return bench_.types().join(' ') + " with " + tools;
        }
        const auto said = bench_.problems.value(0).value(0).value<mendo::FileProblem>();
        const auto& [line, column] = said.place;
        return bench_.problems.size() == 1 ? QString("%1:%2 %3").arg(line).arg(column).arg(said.text()) : "";
    }

    /// The controller reports all keys whenever one changes. False means down.
    void report(const QStringList& down, int thenMs = 0) {
        for (ModuleObject* key : report_->cmobjs()) {
            key->setValue(nullptr, !down.contains(key->name()));
        }
        report_->trigger();
        bench_.time.advance(thenMs);
    }

    /// Selects an entry. Returns the tool in force.
    QString choose(QComboBox* combo, int entry, bool isTool = true) {
        combo->setCurrentIndex(entry);
        lumo::applyToolsetSelector(this, combo, isTool);
        return text(m("lumo.toolset.end"));
    }

private slots:
    void initTestCase() {
        report_->set(nullptr, "unknown", false);
        for (const ModuleObject* key : m("lumo.keypad")->cmobjs()) {
            for (const ModuleObject* event : key->cmobjs()) {
                connect(event, &ModuleObject::changed, this,
                        [this, key, event] { heard_ << key->name() + ' ' + event->name(); });
            }
        }
    }

    void init() {
        bench_.clear();
        keypads_[0] = std::make_unique<lumo::Keypad>(nullptr);
        keypads_[1] = std::make_unique<lumo::Keypad>(nullptr);
        heard_.clear();
    }

    /// Saving over a file that is no project keeps that file under another name.
    void file_isReadAsProject_orKeptBySaving() {
        const QByteArray rich =
            "[{'type':'moveCC','execute':true,'speed':199,'toolset':{'end':{'name':'','trans':[0,0,0.1]}},"
            "  'point':{'trans':[0.1,-0.25,1e-9],'rot':[3.141592653589793,0,-1.5]},'point1':{}},"
            " {'type':'close','execute':false,'note':'焊缝 \\u0022A\\u0022\\n\\tшов, 1/2 \\\\ 😀'},"
            " {'type':'delay','delaytime':'1500','of a later version':[null,{},[],[[1]],true]}]";
        const QByteArray tool = "{'end':{'name':'T1'},'ref':{'name':'W1'}}";
        const char* const none = "0:0 the file holds no project";
        const std::pair<QByteArray, const char*> rows[] = {
            {rich, "moveCC close delay with tool0, wobj0"},
            {"[{'type':'open'},{'type':'close'}," + tool + "]", "open close with T1, W1"},
            {"[" + tool + ",{'type':'close'}]", "close with T1, W1"},
            {"[{'type':'close'}]", "close with tool0, wobj0"},
            {"[]", " with tool0, wobj0"},
            {"[{'end':{'name':'T1'}}]", " with T1, wobj0"},
            {"[{'end':5,'ref':{'name':'W1'}}]", " with tool0, W1"},
            {"[{'ref':{'name':'W1'}}]", " with tool0, W1"},
            {"[{'type':'close','ref':{'name':'W1'}}]", "close with tool0, wobj0"},
            {"[{'type':'close'},{'type':'dance'}]", "close dance with tool0, wobj0"},
            {"[{'type':\n 'cl", "2:5 no JSON: expected the end of a string"},
            {"{'type':'close'}", none},
            {"[{'type':'close'},2]", none},
            {"[{'type':'dance'}]", none},
            {"[{'end':{}},{'end':{}}]", none},
            {"[{'name':'steel','power':60}]", none},
            {"[{'stationname':'L','type':'','filePath':'a.json'}]", none}};
        for (const auto& [file, result] : rows) {
            bench_.clear();
            test::writeFile("p.json", test::quoted(file));
            QCOMPARE(file + ' ' + opened("p.json"), file + ' ' + result);
            const bool isProject = bench_.problems.isEmpty();
            QVERIFY(file != rich || text(m("lumo.program")) == text(json(rich)));
            m("lumo.toolset.end.trans.#2")->setValue(this, 0.12);
            const QJsonValue project = lumo::projectDocument();
            QVERIFY(lumo::saveProject("p.json"));
            QCOMPARE(contentOf("p.json"), QJsonDocument(project.toArray()).toJson());
            QCOMPARE(contentOf("p.json.damaged"), isProject ? "(no file)" : test::quoted(file));
            QVERIFY(opened("p.json").contains(" with "));
            QCOMPARE(text(lumo::projectDocument()), text(project));
        }
    }

    void nameOfAnExistingOrSettingsFile_isTaken() {
        for (const char* file : {"old.json", "notes.txt", "archive.tar.gz", "v1.2.json"}) {
            test::writeFile(file, "");
        }
        QVERIFY(QDir().mkdir("box.json") && QDir().mkdir("folder") && QFile::link("no", "link.json"));
        const std::pair<NameFault, QStringList> names[] = {
            // A file's name counts up to its first dot.
            {NameFault::None, {"seam", "焊缝 1", "archive.tar", "1234567890123456789", "Old", "folder"}},
            {NameFault::Empty, {"  "}},
            {NameFault::Taken, {"old", "notes", "archive", "v1", "v1.2", "box", "link"}},
            {NameFault::Taken, {"lumo_param", "lumo_port", "LUMO_SignalsConfig"}},  // not written yet
            {NameFault::Taken, {"a/b", "/seam", ".", "..", ".seam", "a\nb"}}};
        for (const auto& [fault, named] : names) {
            for (const QString& name : named) {
                QVERIFY2(lumo::projectNameFault(name) == fault, qPrintable('"' + name + '"'));
            }
        }
    }

    void key_isClickOrLongPressByItsDuration() {
        for (const auto& [heldMs, expected] :
             {std::pair(6200, "next pressing, next pressing"), std::pair(3000, "next pressing"),
              std::pair(2999, ""), std::pair(501, ""), std::pair(500, "next clicked"),
              std::pair(0, "next clicked")}) {
            for (const char* key : {"next", "last", "center", "enter", "delete"}) {
                heard_.clear();
                report({key}, heldMs);
                report({}, 10000);
                QCOMPARE(heard_.join(", "), QString(expected).replace("next", key));
            }
        }
    }

    /// A long press is no click then either. When the page is deleted, pressed keys are forgotten.
    void reportOfAnotherKey_restartsThePress() {
        report({"next"}, 2000);
        report({"next", "last"}, 2500);
        report({"next"}, 100);
        report({});
        report({"next"}, 3000);
        report({"next", "last"}, 100);
        report({});
        QCOMPARE(heard_, QStringList({"next clicked", "next pressing", "last clicked"}));
        const auto closing = connect(m("lumo.keypad.next.clicked"), &ModuleObject::changed, this, [this] {
            keypads_[0].reset();
            keypads_[1].reset();
        });
        report({"next", "last"}, 100);
        report({}, 10000);
        disconnect(closing);
        QCOMPARE(heard_.mid(3), QStringList("next clicked"));
    }

    /// Converts mm, degrees and kg mm² to m, rad and kg m².
    void chosenTool_isConvertedAndSentToTheRobot() {
        m("rova.project.tool._list")
            ->loadJson(this, json("[{'name':'T1','frame':{'pos':{'x':100,'y':250,'z':50},"
                                  "'ori':{'euler':{'a':180,'b':-180,'c':360}}},'load':{'mass':2.5,"
                                  "'pose':{'pos':{'x':10,'y':20,'z':40}},'moment':[1000,2000,3000]}}]"));
        m("rova.project.wobj._list")->loadJson(this, json("[{'name':'W1','frame':{'pos':{'y':300}}}]"));
        QComboBox tools, wobjs;
        lumo::fillToolsetSelector(&tools, true);
        lumo::fillToolsetSelector(&wobjs, false);
        QCOMPARE(test::textsOf(&wobjs), QStringList({"wobj0", "W1"}));
        const QString whole =
            "{'load':{'cog':[0.01,0.02,0.04],'inertia':[0.001,0.002,0.003],'mass':2.5},"
            "'name':'T1','rot':[3.141592653589793,-3.141592653589793,6.283185307179586],"
            "'trans':[0.1,0.25,0.05]}";
        QCOMPARE(choose(&tools, 1), whole);
        QCOMPARE(choose(&wobjs, 1, false), whole);
        QCOMPARE(text(m("lumo.toolset.ref")), "{'name':'W1','rot':[0,0,0],'trans':[0,0.3,0]}");
        QCOMPARE(text(kordservice()->dataNode("pel.coord.toolset")), text(m("lumo.toolset")));
        QCOMPARE(choose(&tools, 0), text(m("lumo.default.default_toolset.end")));
    }

    /// The host's list may change while the page exists, and a file may name a tool that is not in it.
    void entry_isFoundByName_notByPosition() {
        m("rova.project.tool._list")->loadJson(this, json("[{'name':'T1'},{'name':'T2'}]"));
        m("lumo.toolset.end")->loadJson(this, json("{'name':'T2','trans':[0.5]}"));
        QComboBox tools;
        lumo::fillToolsetSelector(&tools, true);
        QCOMPARE(tools.currentText(), "T2");  // in force
        QVERIFY(lumo::selectToolsetName(&tools, "from a file"));
        QVERIFY(!lumo::selectToolsetName(&tools, "from a file") && !lumo::selectToolsetName(&tools, ""));
        QCOMPARE(test::textsOf(&tools), QStringList({"tool0", "T1", "T2", "from a file"}));
        const auto chosen = [&](const char* hostList, int entry) {
            m("rova.project.tool._list")->loadJson(this, json(hostList));
            choose(&tools, entry);
            return m("lumo.toolset.end.name")->getString("none") +
                   m("lumo.toolset.end.trans.#0")->getString();
        };
        QCOMPARE(chosen("[{'name':'T2','frame':{'pos':{'x':70}}}]", 3), "from a file0.5");
        QCOMPARE(chosen("[{'name':'T2','frame':{'pos':{'x':70}}}]", 1), "T10.5");
        QCOMPARE(chosen("[{'name':'T2'},{'name':'T1','frame':{'pos':{'x':70}}}]", 1), "T10.07");
        QCOMPARE(chosen("[]", -1), "0.07");
    }
};

LUMO_TEST(TestParts)
#include "test_parts.moc"
