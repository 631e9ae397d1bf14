#include "mendo/modulemanager.h"
#include "support/suite.h"
#include "support/text.h"
#include "workcell/runwatch.h"
#include "workcell/treefollower.h"

using mendo::ModuleObject;
using workcell::Change;
using workcell::RunWatch;
using workcell::TreeFollower;

/// The follower knows the package's executor by its class name.
class LumoExecutor : public QObject {
    Q_OBJECT
};

class RunnerFollower : public QObject {
    Q_OBJECT

    TreeFollower follower_;
    LumoExecutor executor_;
    QStringList seen_;

    void write(const QString& what) {
        if (what == "start" || what == "once" || what == "pause") {
            m("lumo.execute.trigger." + what)->trigger();
        } else if (what == "point") {
            m("lumo.current.pausepoint")->clear(&executor_);
        } else if (what == "off") {
            m("kord.r.power")->setValue(this, what);
        } else if (what.startsWith("foreign ")) {
            m("lumo.execute.state")->setValue(this, what.section(' ', 1));
        } else {
            m("lumo.execute.state")->setValue(&executor_, what);
        }
    }

private slots:
    void initTestCase() {
        m()->regist(this, "lumo")
            ->loadJson(this,
                       test::json("{'execute':{'state':'idle','trigger':{'start':-1,'once':-1,'pause':null}},"
                                  "'current':{'points':[{}],'pausepoint':{}},'program':[{'type':'open'}],"
                                  "'count':0}"));
        connect(&follower_, &TreeFollower::changed, this,
                [this](const Change& change) { seen_ << change.path; });
    }
    void init() { seen_.clear(); }

    void change_isAnnouncedBeforeItsConsequences() {
        const QString path = "lumo.execute.trigger.pause";
        const auto package = connect(m(path), &ModuleObject::changed, this, [this] {
            seen_ << "package";
            m("lumo.count")->setValue(nullptr, 1);
        });
        m(path)->trigger();
        disconnect(package);
        QCOMPARE(seen_, (QStringList{path, "package", "lumo.count"}));
    }

    void laterNode_isFollowed_andOthersAreNot() {
        m("lumo")->set(nullptr, "current.program.moveL", 1);
        m("lumo.current.program.moveL")->loadJson(nullptr, QJsonObject{{"speed", 5}});
        m("lumo.current.program.moveL.speed")->setValue(nullptr, 6);
        m("kord.r.mode")->setValue(nullptr, "manual");
        QCOMPARE(seen_, (QStringList{"lumo.current.program.moveL", "lumo.current.program.moveL",
                                     "lumo.current.program.moveL.speed", "kord.r.mode"}));
        for (const char* path : {"kord.r.station.made", "lumo.execute.made",
                                 "lumo.current.pausepoint.trans.#0", "lumo.current.pausepoint.trans.#1",
                                 "lumo.current.made.#0.rot.#0", "lumo.current.points.#0.speed"}) {
            seen_.clear();
            follower_.followElement(path);
            m()->root()->set(this, path, 1);
            m()->root()->set(this, path, 2);
            QCOMPARE(seen_, (QStringList{path, path}));
        }
        seen_.clear();
        m("lumo")->set(nullptr, "currentish", 1);
        m("lumo.program.#0.type")->setValue(nullptr, "open");
        ModuleObject* const taken = m("lumo.current.program.moveL");
        m("lumo.current.program")->remove(nullptr, "moveL");
        taken->setValue(nullptr, 7);
        QCOMPARE(seen_, QStringList());
    }

    void reason_isTheFirstOfTheLastRun() {
        const std::pair<const char*, const char*> runs[] = {
            {"pause,point", "refused"},
            {"busy,point,pause,point,idle", "error"},
            {"busy,off,point,idle", "power"},
            {"busy,pause,off,idle", "paused"},
            {"busy,idle,off", "finished"},
            {"busy,pause,point,idle,busy,idle", "finished"},
            {"busy,idle,pause,point", "finished"},
            {"foreign busy", "refused"},
            {"start,busy,foreign idle,foreign busy", "error"},
            {"once,busy,result -1,idle", "error"},
            {"once,busy,result 0,foreign idle,idle", "finished"},
            {"once,busy,pause,result -1,idle", "paused"},
            {"once,busy,idle,result -1", "finished"},
            {"once,busy,start,result -1,idle", "error"},
            {"start,busy,result -1,idle", "error"},
            {"start,busy,idle,result -9", "error"}};
        for (const auto& [writes, reason] : runs) {
            RunWatch watch(&follower_);
            for (const QString& what : QString(writes).split(',')) {
                if (what.startsWith("result ")) {
                    watch.motionEnded(what.section(' ', 1).toInt());
                } else {
                    write(what);
                }
            }
            QVERIFY2(watch.reason() == reason, writes);
        }
    }
};

LUMO_TEST_ON(RunnerFollower, test::onWallClock)
#include "test_follower.moc"
