#include "support/runnerfolder.h"
#include "support/suite.h"
#include "support/text.h"
#include "support/vcd.h"

#include <cmath>

namespace {

const QByteArray setDo = R"({"type":"setDO","execute":true,"DO_type":"IO","doName":"DO2","value":"true"})";

/// A seam of 20 mm behind a move, a close and half a second.
QByteArray seam() {
    return '[' + moveL(0.5, 0.35) + ",\n" + openStatement + ",\n" + moveL(0.52, 0.35) + ",\n" +
           closeStatement + ",\n" + delayStatement + ",\n" +
           R"({"end":{"name":"torch"},"ref":{"name":"table"}})" + ']';
}

QByteArray delays(int count) {
    return '[' + (delayStatement + ',').repeated(count).chopped(1) + ']';
}

int doneMs(const Result& result) {
    return result.done()["ms"].toInt();
}

}  // namespace

/// The built program: exit status, output, files. What weld programs do is tested in tests/programs.
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
            {"p.json --trace none/t.jsonl", "--trace none/t.jsonl: "},
            {"p.json --vcd none/a.vcd --trace -", "--vcd none/a.vcd: "},
            {"bad.json --trace t.jsonl",
             "bad.json:2:11: error: [type] line 2 (weld): unknown statement type"},
            {"p.json --scenario none.json --trace t.jsonl", "none.json:1:1: error: [field] there is no such"},
            {"p.json --trace p.json", "--trace p.json would overwrite"},
            {"p.json --scenario load.json --trace bad.json", "--trace bad.json would overwrite"},
            {"--point 2000,0,0,180,0,0", "out of the arm's reach"}};
        for (const auto& [call, error] : calls) {
            const Result result = folder.run(QString(call).split(' ', Qt::SkipEmptyParts));
            QVERIFY2(result.status == 2 && result.out.isEmpty(), call);
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

    void versionAndPoint_needNoProject() {
        const Folder folder;
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
        QVERIFY(begin["statements"] == 5 && begin["ports"].toArray().size() == 19 && begin["dt"] == 20);
        QCOMPARE(begin["sets"].toArray(), QJsonArray{"thin"});
    }

    /// Reasons that no case of tests/programs ends with.
    void outcome_givesReasonAndExitStatus() {
        const std::tuple<const char*, const char*, const char*> runs[] = {
            {"[]", "--line 6", "refused"},
            {"[{'at':5,'do':'start','line0':3}]", "--line 6", "finished"},
            {"[{'at':0,'do':'start','line0':0}]", "", "finished"},
            {"[{'at':1200,'do':'quit'},{'at':1300,'do':'resume'}]", "", "quit"},
            {"[{'at':600,'do':'quirk','name':'noResult','value':true}]", "", "stalled"},
            {"[]", "--once 2", "refused"}};
        const Folder folder;
        for (const auto& [scenario, options, reason] : runs) {
            const QStringList words = QString(options).split(' ', Qt::SkipEmptyParts);
            const Result result = folder.trace(seam(), test::quoted(scenario), words);
            QVERIFY2(reasonOf(result) == reason, scenario);
            QCOMPARE(result.status, reasonOf(result) == "finished" ? 0 : 1);
        }
    }

    /// Entries are ordered by time, then as in the file. A start runs its program inside the write, which
    /// does not delay the next entry.
    void entriesOfOneTime_areAppliedTogether() {
        const Folder folder;
        const Result result = folder.trace(delays(2), R"([{"at":2000,"do":"start","line0":0},
            {"value": [2, {"z": 1.0, "a": null}], "path": "lumo.x", "do": "set", "at": 7},
            {"at":2000,"do":"input","name":"DI3","value":true}])");
        QCOMPARE(reasonOf(result), "finished");
        QCOMPARE(doneMs(result), 3000);
        QCOMPARE(result.of("event").last()["action"].toObject()["do"].toString(), "input");
        QCOMPARE(result.of("input").value(0)["t"].toInt(), 2000);
        QVERIFY(result.out.contains(
            R"({"t":7,"kind":"event","action":{"value":[2,{"z":1,"a":null}],"path":"lumo.x",)"));
    }

    void entryThatCannotBeApplied_isRefusedInTheTrace() {
        const Folder folder;
        const Result result = folder.trace(seam(), R"([{"at":100,"do":"place","trans":[0.5,0,0.4]},
            {"at":1200,"do":"pause"},{"at":2000,"do":"place","trans":[5,0,0.4]},
            {"at":2000,"do":"insert","line0":6,"statement":{"type":"close"}},
            {"at":2000,"do":"remove","line0":5},{"at":2000,"do":"enable","line0":5,"value":false},
            {"at":2000,"do":"move","line0":4,"to0":5},{"at":2000,"do":"load","file":"none.json"},
            {"at":2000,"do":"port","row":19,"enable":true},
            {"at":2100,"do":"insert","line0":5,"statement":{"type":"close"}},
            {"at":3000,"do":"place","trans":[0.5,0.1,0.4],"rot":[3,0,0]}])",
                                           {"--posture"});
        QString refused;
        for (const QJsonObject& event : result.of("event")) {
            refused += event["refused"].toBool() ? 'x' : '-';
        }
        QCOMPARE(refused, "x-xxxxxxx--");
        QCOMPARE(reasonOf(result), "paused");
        QVERIFY(doneMs(result) > 5000);  // more than 100 mm at 50 mm/s
        const QJsonObject last = result.of("posture").last();
        QVERIFY(std::abs(last["trans"][1].toDouble() - 0.1) + std::abs(last["rot"][0].toDouble() - 3) < 1e-6);
    }

    /// The laser's button is enabled once the page shows its lock; quitting switches the laser off.
    void pageActions_pressEnabledButtonsOnly() {
        const Folder folder;
        const Result result =
            folder.trace(delays(1), R"([{"at":1000,"do":"device","name":"laserLock","value":true},
            {"at":1000,"do":"device","name":"laser","value":true,"power":40,"frequency":10,"dutyCycle":100},
            {"at":1100,"do":"device","name":"gas","value":true},{"at":2000,"do":"port","row":6,"enable":false},
            {"at":3000,"do":"quit"}])");
        QVERIFY2(result.status == 0 && reasonOf(result) == "quit", result.err.constData());
        QVERIFY(result.out.contains(R"("kind":"output","name":"LUMO_DO.#3","value":true})"));
        QVERIFY(result.out.contains(R"("kind":"output","name":"LUMO_DO.#3","value":false})"));
        QVERIFY2(result.err.contains("the button of \"gas\" is not enabled"), result.err.constData());
        const QJsonArray ports = QJsonDocument::fromJson(folder.read("lumo_port.json")).array();
        QCOMPARE(ports[6].toObject()["enable"], false);
    }

    void damagedFile_givesAWarning_andTheRunGoesOn() {
        const Folder folder;
        folder.write("lumo_param.json", "[\n{]");
        folder.write("other.json", "[}");
        const Result result =
            folder.trace(R"([{"type":"delay","delaytime":"250"},{"type":"delay","execute":false}])",
                         R"([{"at":100,"do":"load","file":"other.json"}])");
        QCOMPARE(result.status, 0);
        QCOMPARE(doneMs(result), 250);
        QVERIFY2(result.err.contains("lumo_param.json:2:2: warning: [field] no JSON"),
                 result.err.constData());
        QVERIFY2(result.err.contains("p.json:1:37: warning: [field] line 2 (delay): missing: \"delaytime\""),
                 result.err.constData());
        QCOMPARE(result.of("file").value(0)["name"].toString(), "other.json");
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

    void dumpAndProgress_agreeWithTheTrace_andPacingChangesNeither() {
        const Folder folder;
        const QByteArray program = '[' + delayStatement + ',' + setDo + ',' + delayStatement + ']';
        const Result fast = folder.trace(program, "[]", {"--vcd", "a.vcd"});
        const auto changes = readDump(folder.path("a.vcd"));
        QCOMPARE(changes["DO.DO2"].last(), "500:1");
        QCOMPARE(changes["run.busy"].last(), "1000:0");
        QCOMPARE(folder.trace(program, "[]", {"--realtime"}).out, fast.out);
        const QString progress = QString::fromUtf8(folder.run({"p.json"}).out).simplified();
        QVERIFY2(progress.contains("1 delay 0.000 s 2 setDO 0.500 s 3 delay 0.500 s"), qPrintable(progress));
        QVERIFY2(progress.contains("ended finished lines run 3"), qPrintable(progress));
    }
};

LUMO_TEST_ON(RunnerProgram, test::onWallClock)
#include "test_program.moc"
