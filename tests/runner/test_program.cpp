#include "support/runnerfolder.h"
#include "support/suite.h"
#include "support/text.h"
#include "support/vcd.h"

#include <cmath>

namespace {

const QByteArray kSetDo = R"({"type":"setDO","execute":true,"DO_type":"IO","doName":"DO2","value":"true"})";

/// A seam of 20 mm behind a move, a close and half a second.
QByteArray seam() {
    return '[' + moveL(0.5, 0.35) + ",\n" + kOpen + ",\n" + moveL(0.52, 0.35) + ",\n" + kClose + ",\n" +
           kDelay + ",\n" + R"({"end":{"name":"torch"},"ref":{"name":"table"}})" + ']';
}

QByteArray delays(int count) {
    return '[' + (kDelay + ',').repeated(count).chopped(1) + ']';
}

int doneMs(const Result& result) {
    return result.done()["ms"].toInt();
}

}  // namespace

/// The built program as its caller meets it: exit status, output, files. What programs do stands in
/// tests/programs.
class RunnerProgram : public QObject {
    Q_OBJECT
private slots:
    void badInput_endsBeforeAnythingIsWritten() {
        const Folder folder;
        folder.write("p.json", seam());
        folder.write("bad.json", "[{\"type\":\"close\"},\n {\"type\": \"weld\"}]");
        folder.write("load.json", R"([{"at":1,"do":"load","file":"bad.json"}])");
        const QByteArray kept = folder.read("bad.json");
        const std::pair<const char*, const char*> calls[] = {
            {"", "one project file"},
            {"none.json --trace t.jsonl", "none.json: there is no such file"},
            {"p.json --line x --trace t.jsonl", "--line x is no number from 1"},
            {"p.json --trace none/t.jsonl", "--trace none/t.jsonl: "},
            {"p.json --vcd none/a.vcd --trace -", "--vcd none/a.vcd: "},
            {"bad.json --trace t.jsonl", "bad.json:2:11: element 2: unknown statement type"},
            {"p.json --scenario none.json --trace t.jsonl", "none.json: there is no such file"},
            {"p.json --scenario bad.json --trace t.jsonl", "bad.json:1:2: entry 1: the key \"at\""},
            {"p.json --trace p.json", "--trace p.json would overwrite"},
            {"p.json --scenario load.json --trace bad.json", "--trace bad.json would overwrite"},
            {"--point 2000,0,0,180,0,0", "out of the arm's reach"}};
        for (const auto& [call, error] : calls) {
            const Result result = folder.run(QString(call).split(' ', Qt::SkipEmptyParts));
            QVERIFY2(result.status == 2 && result.out.isEmpty() && result.err.count('\n') == 1, call);
            QVERIFY2(result.err.contains(error), result.err.constData());
            QVERIFY2(
                !folder.has("t.jsonl") && folder.read("p.json") == seam() && folder.read("bad.json") == kept,
                call);
        }
        for (const char* option : {"--trace", "--vcd"}) {
            const Result full = folder.run({"p.json", "--quiet", option, "/dev/full"});
            QCOMPARE(full.status, 1);
            QVERIFY2(full.err.startsWith(QByteArray("lumo-run: ") + option + " /dev/full: "),
                     full.err.constData());
        }
    }

    void helpVersionAndPoint_needNoProject() {
        const Folder folder;
        const QByteArray help = folder.run({"--help"}).out;
        for (const char* option :
             {"settings", "language", "no-write-multi", "stations", "until", "posture", "point"})
            QVERIFY2(help.contains(QByteArray("  --") + option), option);
        QVERIFY(folder.run({"--version"}).out.startsWith("lumo-run "));
        const Result home = folder.run({"--point", "500,0,400,180,0,0", "--axes", "7"});
        const QJsonObject record = QJsonDocument::fromJson(home.out).object();
        QCOMPARE(record["trans"].toArray(), (QJsonArray{0.5, 0, 0.4}));
        QCOMPARE(record["near"].toArray().size(), 7);
    }

    /// Only lines of JSON on standard output, without a folder of this machine, and the same bytes each time.
    void trace_isCleanAndTheSameEachTime() {
        const QByteArray scenario =
            R"([{"at":1200,"do":"pause"},{"at":3000,"do":"resume"},{"at":3500,"do":"weld","value":false}])";
        const Folder one, two;
        const Result first = one.trace(seam(), scenario, {"--posture"});
        QVERIFY2(first.status == 0, first.err.constData());
        QCOMPARE(two.trace(seam(), scenario, {"--posture"}).out, first.out);
        QVERIFY(first.of("posture").size() > 20);
        for (const QByteArray& line : first.out.chopped(1).split('\n')) {
            QVERIFY2(line.startsWith("{\"t\":") && line.contains(",\"kind\":\""), line.constData());
            QVERIFY2(!QJsonDocument::fromJson(line).isNull(), line.constData());
            QVERIFY2(!line.contains(QFile::encodeName(one.path())), line.constData());
        }
        const QJsonObject begin = first.trace.first();
        QCOMPARE(begin["kind"].toString(), "begin");
        QVERIFY(begin["statements"] == 5 && begin["ports"].toArray().size() == 19 && begin["dt"] == 20);
        QCOMPARE(begin["sets"].toArray(), QJsonArray{"thin"});
        QCOMPARE(begin["options"].toObject()["project"].toString(), "p.json");
    }

    void outcome_isToldByReasonAndStatus_data() {
        QTest::addColumn<QByteArray>("scenario");
        QTest::addColumn<QString>("options");
        QTest::addColumn<QString>("reason");
        const auto row = [](const char* name, const char* reason, const char* scenario,
                            const char* options = "") {
            QTest::newRow(name) << test::quoted(scenario) << QString(options) << QString(reason);
        };
        row("finished", "finished", "[]");
        row("line past the end", "refused", "[]", "--line 6");
        row("power off", "refused", "[]", "--power off");
        row("refused, then started", "finished", "[{'at':5,'do':'start','line0':3}]", "--line 6");
        row("refused later", "finished", "[{'at':0,'do':'start','line0':0}]");
        row("paused", "paused", "[{'at':1200,'do':'pause'}]");
        row("power lost", "power", "[{'at':1200,'do':'power','value':'off'}]");
        row("motion error", "error", "[{'at':1200,'do':'motionError','code':-42}]");
        row("out of time", "until", "[]", "--until 900");
        row("single step that fails", "error", "[{'at':100,'do':'motionError','code':-1}]", "--once 1");
        row("state of somebody else", "error",
            "[{'at':1200,'do':'set','path':'lumo.execute.state','value':'idle'}]");
        row("quit in the weld", "quit", "[{'at':1200,'do':'quit'},{'at':1300,'do':'resume'}]");
        row("result that never comes", "stalled", "[{'at':600,'do':'quirk','name':'noResult','value':true}]");
        row("motion that fails at its end", "error",
            "[{'at':600,'do':'quirk','name':'failAtEnd','value':true}]");
        row("step of no move", "refused", "[]", "--once 2");
    }
    void outcome_isToldByReasonAndStatus() {
        QFETCH(QByteArray, scenario);
        QFETCH(QString, options);
        QFETCH(QString, reason);
        const Folder folder;
        const Result result = folder.trace(seam(), scenario, options.split(' ', Qt::SkipEmptyParts));
        QCOMPARE(reasonOf(result), reason);
        QCOMPARE(result.status, reason == "finished" ? 0 : 1);
        QCOMPARE(result.done()["ms"], result.done()["t"]);
        QCOMPARE(result.of("message").size(), result.of("answer").size());
        if (reason == "until")
            QCOMPARE(doneMs(result), 900);
    }

    void box_isAnsweredAfterItsTime() {
        const Folder folder;
        const Result result = folder.trace(seam(), "[]", {"--line", "6", "--ack", "750"});
        const QJsonObject message = result.of("message").value(0), answer = result.of("answer").value(0);
        QCOMPARE(message["icon"].toString() + ' ' + message["title"].toString(), "warning Running Error");
        QCOMPARE(answer["answer"].toString(), "OK");
        QCOMPARE(answer["t"].toInt() - message["t"].toInt(), 750);
    }

    /// A start runs its program inside the write; the entries behind it come all the same, as they were
    /// written.
    void entriesOfOneTime_comeInOnePass() {
        const Folder folder;
        const Result result = folder.trace(
            delays(2), R"([{"value": [2, {"z": 1.0, "a": null}], "path": "lumo.x", "do": "set", "at": 7},
            {"at":2000,"do":"start","line0":0},{"at":2000,"do":"input","name":"DI3","value":true}])");
        QCOMPARE(reasonOf(result), "finished");
        QCOMPARE(doneMs(result), 3000);
        QCOMPARE(result.of("input").value(0)["t"].toInt(), 2000);
        QVERIFY(result.out.contains(
            R"({"t":7,"kind":"event","action":{"value":[2,{"z":1,"a":null}],"path":"lumo.x",)"));
    }

    /// The run goes on as it was accepted; the next one has the lines as they stand then.
    void editInARun_isOfTheNextRun() {
        const Folder folder;
        folder.write("other.json", '[' + kSetDo + ']');
        const Result edited =
            folder.trace(delays(2), R"([{"at":100,"do":"insert","line0":2,"statement":)" + kSetDo +
                                        R"(},{"at":100,"do":"move","line0":2,"to0":0},
            {"at":100,"do":"enable","line0":1,"value":false},{"at":100,"do":"remove","line0":3},
            {"at":2000,"do":"start","line0":0}])");
        QVERIFY2(edited.status == 0, edited.err.constData());
        QCOMPARE(doneMs(edited), 2500);
        QCOMPARE(edited.done()["lines"].toInt(), 4);
        QCOMPARE(edited.of("output").size(), 1);
        for (const QJsonObject& event : edited.of("event"))
            QCOMPARE(event.contains("refused"), event["action"].toObject()["do"] == "remove");

        const Result loaded = folder.trace(
            delays(1), R"([{"at":800,"do":"load","file":"other.json"},{"at":900,"do":"resume"}])");
        QCOMPARE(loaded.of("output").value(0)["name"].toString(), "DO2");
        QCOMPARE(loaded.of("output").value(0)["t"].toInt(), 900);
        QStringList order;
        for (const QJsonObject& line : loaded.trace)
            order << line["kind"].toString() + ' ' + line["path"].toString();
        QCOMPARE(order[order.indexOf("output ") - 1], "command ");  // before what it does
    }

    void jog_takesTheStandingRobotAway_andNoOther() {
        const Folder folder;
        const Result result = folder.trace(seam(), R"([{"at":100,"do":"place","trans":[0.5,0,0.4]},
            {"at":1200,"do":"pause"},{"at":3000,"do":"place","trans":[0.5,0.1,0.4],"rot":[3,0,0]}])",
                                           {"--posture"});
        QCOMPARE(reasonOf(result), "paused");
        QVERIFY(result.of("event").first()["refused"].toBool() &&
                !result.of("event").last().contains("refused"));
        QVERIFY(doneMs(result) > 5000);  // more than 100 mm at 50 mm/s
        const QJsonObject last = result.of("posture").last();
        QVERIFY(std::abs(last["trans"][1].toDouble() - 0.1) < 1e-6 &&
                std::abs(last["rot"][0].toDouble() - 3) < 1e-6);
        QCOMPARE(result.of("motion").last()["id"].toInt(), 2);
    }

    /// The laser's button is pressed when the page has seen its lock; the end of the application puts it out.
    void hand_worksDevicesAndPortsAsThePagesLet() {
        const Folder folder;
        const Result result =
            folder.trace(delays(1), R"([{"at":1000,"do":"device","name":"laserLock","value":true},
            {"at":1000,"do":"device","name":"laser","value":true,"power":40,"frequency":10,"dutyCycle":100},
            {"at":1100,"do":"device","name":"gas","value":true},{"at":2000,"do":"port","row":6,"enable":false},
            {"at":2000,"do":"port","row":19,"enable":true},{"at":3000,"do":"quit"}])");
        QVERIFY2(result.status == 0 && reasonOf(result) == "quit", result.err.constData());
        QStringList outputs;
        for (const QJsonObject& output : result.of("output"))
            outputs << output["name"].toString().section('_', 1) + '=' +
                           output["value"].toVariant().toString();
        QCOMPARE(outputs.mid(0, 5),
                 (QStringList{"DO.#5=true", "DO.#3=true", "AO_2=3277", "AO_1=13107", "AO_3=32767"}));
        QVERIFY(outputs.contains("DO.#3=false"));
        QVERIFY2(result.err.contains("the button of \"gas\" is not enabled"), result.err.constData());
        QVERIFY2(result.err.contains("there is no row 19"), result.err.constData());
        const QJsonArray ports = QJsonDocument::fromJson(folder.read("lumo_port.json")).array();
        QCOMPARE(ports[6].toObject()["enable"], false);
    }

    void oddOrDamagedFile_isTold_andTheRunGoesOn() {
        const Folder folder;
        folder.write("lumo_param.json", "[\n{]");
        folder.write("other.json", "[}");
        const Result result =
            folder.trace(R"([{"type":"delay","delaytime":"250"},{"type":"delay","execute":false}])",
                         R"([{"at":100,"do":"load","file":"other.json"}])");
        QCOMPARE(result.status, 0);
        QCOMPARE(doneMs(result), 250);
        QVERIFY2(result.err.contains("warning: lumo_param.json:2:"), result.err.constData());
        QVERIFY2(result.err.contains("warning: p.json:1:37: line 2 (delay) lacks delaytime"),
                 result.err.constData());
        QCOMPARE(result.of("file").size(), 1);
        QCOMPARE(result.of("file")[0]["name"].toString(), "other.json");
    }

    void step_leavesResumeDataAlone() {
        const Folder folder;
        const Result result = folder.trace(seam(), "[]", {"--once", "3"});
        QCOMPARE(result.status, 0);
        QCOMPARE(result.done()["lines"].toInt(), 1);
        QVERIFY(!result.out.contains(R"("path":"lumo.current.line")"));
    }

    void namesOutsideAscii_areReadInAnyLocale() {
        const Folder folder;
        folder.write("焊缝.json", delays(1));
        qputenv("LC_ALL", "C");
        const Result result = folder.run({"焊缝.json", "--quiet", "--trace", "-", "--vcd", "a.vcd"});
        qputenv("LC_ALL", "C.UTF-8");
        QCOMPARE(result.status, 0);
        QCOMPARE(result.trace.first()["options"].toObject()["project"].toString(), "焊缝.json");
    }

    /// As the controller has them, with the time of the trace; pacing changes neither.
    void dump_holdsTheOutputsOfTheTrace() {
        const Folder folder;
        const QByteArray program = '[' + kDelay + ',' + kSetDo + ',' + kDelay + ']';
        const Result fast = folder.trace(program, "[]", {"--vcd", "a.vcd"});
        const auto changes = readDump(folder.path("a.vcd"));
        QCOMPARE(changes["DO.DO2"].last(), "500:1");
        QCOMPARE(changes["run.busy"].last(), "1000:0");
        QCOMPARE(folder.trace(program, "[]", {"--realtime"}).out, fast.out);
    }
};

LUMO_TEST_ON(RunnerProgram, test::onWallClock)
#include "test_program.moc"
