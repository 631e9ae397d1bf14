#include "kord/controllermanager.h"
#include "panel/keypad.h"
#include "panel/toolset.h"
#include "support/executorbench.h"
#include "support/suite.h"
#include "support/text.h"

using test::json;
using test::text;

/// The pendant's keys, and the selectors of tool and work object, without the page around them.
class TestParts : public QObject {
    Q_OBJECT

    test::ExecutorBench bench_;
    ModuleObject* report_ = kord::ControllerManager::cmdItemMobj("endtool.keypad.state_change", "notify");
    std::unique_ptr<lumo::Keypad> keypads_[2];  // two pages at a time must not double a press
    QComboBox tools_, wobjs_;
    QStringList heard_;

    /// The controller reports all keys whenever one changes; a key that is down as false.
    void report(const QStringList& down, int thenMs = 0) {
        for (ModuleObject* key : report_->cmobjs()) {
            key->setValue(nullptr, !down.contains(key->name()));
        }
        report_->trigger();
        bench_.time.advance(thenMs);
    }

    /// The tool in force after a choice.
    QString choose(QComboBox* combo, int entry) {
        combo->setCurrentIndex(entry);
        lumo::applyToolsetSelector(this, combo, combo == &tools_);
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
        m("lumo.toolset")->copyFrom(this, m("lumo.default.default_toolset"));
        const auto tools = json(
            "[{'name':'T1','frame':{'pos':{'x':100,'y':250,'z':50},"
            "                       'ori':{'euler':{'a':180,'b':-180,'c':360}}},"
            "  'load':{'mass':2.5,'pose':{'pos':{'x':10,'y':20,'z':40}},'moment':[1000,2000,3000]}},"
            " {'name':'T2','frame':{'pos':{'x':200}}}]");
        m("rova.project.tool._list")->loadJson(this, tools);
        m("rova.project.wobj._list")->loadJson(this, json("[{'name':'W1','frame':{'pos':{'y':300}}}]"));
        for (QComboBox* combo : {&tools_, &wobjs_}) {
            combo->clear();
            lumo::fillToolsetSelector(combo, combo == &tools_);
        }
        keypads_[0] = std::make_unique<lumo::Keypad>(nullptr);
        keypads_[1] = std::make_unique<lumo::Keypad>(nullptr);
        heard_.clear();
    }

    void heldKey_isTakenForNoOtherPress() {
        const std::pair<int, const char*> presses[] = {{6200, "next pressing, next pressing"},
                                                       {3000, "next pressing"},
                                                       {2999, ""},
                                                       {501, ""},
                                                       {500, "next clicked"},
                                                       {0, "next clicked"}};
        for (const auto& [heldMs, expected] : presses) {
            for (const char* key : {"next", "last", "center", "enter", "delete"}) {
                heard_.clear();
                report({key}, heldMs);
                report({}, 10000);
                QCOMPARE(heard_.join(", "), QString(expected).replace("next", key));
            }
        }
    }

    /// And a long press stays no click. Nobody hears of the keys' release once the page is gone.
    void reportOfAnotherKey_beginsThePressAnew() {
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
        QCOMPARE(bench_.time.armedTimers(), 0);
    }

    /// Metres, radians and kilogram square metres from millimetres, degrees and kilogram square millimetres.
    void chosenTool_comesWithAllItsNumbersAndIsToldTheRobot() {
        const QString whole =
            "{'load':{'cog':[0.01,0.02,0.04],'inertia':[0.001,0.002,0.003],'mass':2.5},"
            "'name':'T1','rot':[3.141592653589793,-3.141592653589793,6.283185307179586],"
            "'trans':[0.1,0.25,0.05]}";
        QCOMPARE(choose(&tools_, 1), whole);
        QCOMPARE(choose(&wobjs_, 1), whole);
        QCOMPARE(text(m("lumo.toolset.ref")), "{'name':'W1','rot':[0,0,0],'trans':[0,0.3,0]}");
        QCOMPARE(text(kordservice()->dataNode("pel.coord.toolset")), text(m("lumo.toolset")));
        QCOMPARE(choose(&tools_, 0), text(m("lumo.default.default_toolset.end")));
    }

    /// The host's list may change while the page is there, and a file may name what is not in it.
    void entry_isTheHostsToolOfItsName_notOfItsPlace() {
        QCOMPARE(test::textsOf(&wobjs_), QStringList({"wobj0", "W1"}));
        m("lumo.toolset.end")->loadJson(this, json("{'name':'T2','trans':[0.5]}"));
        lumo::fillToolsetSelector(&tools_, true);
        QCOMPARE(tools_.currentText(), "T2");  // the one in force
        QVERIFY(lumo::selectToolsetName(&tools_, "from a file"));
        QVERIFY(!lumo::selectToolsetName(&tools_, "from a file"));
        QVERIFY(!lumo::selectToolsetName(&tools_, ""));
        QCOMPARE(test::textsOf(&tools_).mid(3), QStringList({"tool0", "T1", "T2", "from a file"}));
        const auto chosen = [this](const char* hostList, int entry) {
            m("rova.project.tool._list")->loadJson(this, json(hostList));
            choose(&tools_, entry);
            const ModuleObject* tool = m("lumo.toolset.end");
            return tool->c("name")->getString("none") + tool->r("trans.#0")->getString();
        };
        QCOMPARE(chosen("[{'name':'T2','frame':{'pos':{'x':70}}}]", 6), "from a file0.5");
        QCOMPARE(chosen("[{'name':'T2','frame':{'pos':{'x':70}}}]", 1), "T10.5");
        QCOMPARE(chosen("[{'name':'T2'},{'name':'T1','frame':{'pos':{'x':70}}}]", 1), "T10.07");
        QCOMPARE(chosen("[]", -1), "0.07");
    }
};

LUMO_TEST(TestParts)
#include "test_parts.moc"
