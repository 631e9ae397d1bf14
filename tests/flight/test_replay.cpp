#include "flight/ringfile.h"
#include "flight/ringreader.h"
#include "flight/runindex.h"
#include "support/runnerfolder.h"
#include "support/suite.h"

#include <QJsonArray>

#include <csignal>
#include <functional>

namespace {

using flight::Record;

/// Records a run of a case of tests/programs.
Result recordCase(const QString& name, const QString& ring) {
    const QString folder = QStringLiteral(PROGRAMS "/") + name;
    const QByteArray options = test::contentOf(folder + "/options").simplified();
    QStringList arguments = QString::fromUtf8(options).split(' ', Qt::SkipEmptyParts);
    if (QFileInfo::exists(folder + "/scenario.json")) {
        arguments << "--scenario"
                  << "scenario.json";
    }
    arguments << "--quiet"
              << "--flight" << ring << "--flight-size"
              << "4"
              << "project.json";
    return runIn(folder, arguments);
}

flight::Recording read(const QString& file) {
    QString error;
    const auto recording = flight::readRing(file, &error);
    return recording ? *recording : flight::Recording();
}

/// A copy of a recording with some records changed.
void writeChanged(const QString& from, const QString& to,
                  const std::function<void(Record* record, QJsonObject* body)>& change) {
    flight::RingProblem problem;
    const auto ring = flight::RingFile::open(to, 4 << 20, &problem);
    QVERIFY2(ring, qPrintable(problem.text()));
    for (Record record : read(from).records) {
        QJsonObject body = record.object();
        const QJsonObject before = body;
        change(&record, &body);
        if (body != before) {
            record.body = QJsonDocument(body).toJson(QJsonDocument::Compact);
        }
        ring->append(record);
    }
}

Result replay(const QString& ring, const QStringList& more = {}) {
    return runIn(".", QStringList{"--replay", ring} + more);
}

/// Kills a child that is still there.
class Child : public QProcess {
public:
    ~Child() override {
        kill();
        waitForFinished();
    }
};

}  // namespace

/// Recordings of whole runs: they repeat, and what is decided otherwise is named.
class TestReplay : public QObject {
    Q_OBJECT

private slots:
    void recordedRunsAreEqual_data() {
        QTest::addColumn<int>("runs");
        QTest::newRow("pause_in_weld_resumes_it") << 2;
        QTest::newRow("power_loss_in_weld_shuts_down_and_a_restart_reopens_it") << 3;
        QTest::newRow("motion_error_in_weld_brakes_closes_and_shows_its_code") << 1;
        QTest::newRow("circle_goes_on_from_where_it_was_stopped") << -1;
        QTest::newRow("overlap_goes_back_along_what_is_welded") << -1;
        QTest::newRow("edits_of_a_stopped_program_take_its_line_along") << -1;
        QTest::newRow("permission_lost_in_an_opening_abandons_it_and_the_next_seam_welds") << 3;
        QTest::newRow("results_inside_the_command_let_their_lines_pass_at_once") << 1;
        QTest::newRow("zone_ends_the_wait_only_right_before_a_close") << 1;
        QTest::newRow("zone_entry_closes_the_laser_and_the_late_result_is_dropped") << 1;
        QTest::newRow("single_step_moves_one_line_at_its_own_speed") << -1;
        QTest::newRow("registers_written_one_by_one_keep_their_order") << -1;
    }
    void recordedRunsAreEqual() {
        const QString name = QTest::currentDataTag();
        const QString ring = QDir::current().filePath(name + ".ring");
        const Result recorded = recordCase(name, ring);
        QVERIFY2(recorded.status == 0 || recorded.status == 1, recorded.err.constData());
        const Result list = replay(ring, {"--list"});
        const int count = list.out.count('\n');
        QFETCH(int, runs);
        QVERIFY2(count > 0 && (runs < 0 || count == runs), list.out.constData());
        for (int run = 1; run <= count; ++run) {
            const Result repeated = replay(ring, {"--run", QString::number(run)});
            QVERIFY2(repeated.status == 0, (repeated.out + repeated.err).constData());
            QVERIFY2(repeated.out.contains("\nequal: "), repeated.out.constData());
        }
    }

    /// The stations start each other; each run repeats by itself.
    void runsOfStationsAreEqual() {
        const QString ring = QDir::current().filePath("stations.ring");
        runIn(EXAMPLES "/stations", {"--quiet", "--stations", ".", "--scenario", "scenario.json", "--until",
                                     "240000", "--flight", ring, "--flight-size", "16"});
        const QByteArray list = replay(ring, {"--list"}).out;
        QVERIFY2(list.count(", station, ") >= 8, list.constData());
        for (int run = 1; run <= 8; ++run) {
            const Result repeated = replay(ring, {"--run", QString::number(run)});
            QVERIFY2(repeated.status == 0, (repeated.out + repeated.err).constData());
        }
    }

    void howRunsEndedIsListed() {
        const QString ring = QDir::current().filePath("listed.ring");
        recordCase("power_loss_in_weld_shuts_down_and_a_restart_reopens_it", ring);
        const QByteArray list = replay(ring, {"--list"}).out;
        QVERIFY2(list.contains(": power,") && list.contains(": refused,") && list.contains(": finished,"),
                 list.constData());
    }

    /// As if another version of the package had been recorded.
    void decisionThatDiffersIsNamed() {
        const QString ring = QDir::current().filePath("decided.ring");
        recordCase("pause_in_weld_resumes_it", ring);
        QByteArray written;
        int count = 0;
        writeChanged(ring, "changed.ring", [&](Record* record, QJsonObject* body) {
            if (record->kind == Record::Kind::Command && record->by == Record::By::Executor &&
                body->value("name") == "register.write" && ++count == 4) {
                QJsonObject args = body->value("args").toObject();
                args["value"] = args["value"].toInt() + 1;
                body->insert("args", args);
                written = QJsonDocument(args).toJson(QJsonDocument::Compact);
            }
        });
        const Result result = replay("changed.ring", {"--run", "1"});
        QCOMPARE(result.status, 1);
        QVERIFY2(result.out.contains("  recorded: register.write " + written), result.out.constData());
        QVERIFY2(result.out.contains("  now:      register.write "), result.out.constData());
        QVERIFY2(result.out.contains("\ndifferent at ") && result.out.contains(", line "),
                 result.out.constData());
    }

    /// What was lost, added or late in the package shows as well.
    void missingAndLateCommandsAreNamed() {
        const QString ring = QDir::current().filePath("late.ring");
        recordCase("pause_in_weld_resumes_it", ring);
        qint64 lateMs = -1;
        writeChanged(ring, "late2.ring", [&](Record* record, QJsonObject* body) {
            if (lateMs < 0 && record->kind == Record::Kind::Command && body->value("name") == "move.l") {
                lateMs = record->ms;
                record->ms += 20;
            }
        });
        const Result late = replay("late2.ring", {"--run", "1"});
        QCOMPARE(late.status, 1);
        QVERIFY2(late.out.contains("now:      move.l"), late.out.constData());
        bool isDone = false;
        writeChanged(ring, "cell.ring", [&](Record* record, QJsonObject* body) {
            if (!isDone && record->by == Record::By::Cell && body->value("p") == "move.l") {
                isDone = true;
                body->insert("v", -9);  // the motion had failed
            }
        });
        const Result other = replay("cell.ring", {"--run", "1"});
        QCOMPARE(other.status, 1);
        QVERIFY2(other.out.contains("now:      lumo.current.pausepoint"), other.out.constData());
    }

    /// The parameters of a run are those of the recording, not of a file.
    void parametersOfTheRecordingCount() {
        const QString ring = QDir::current().filePath("set.ring");
        recordCase("pause_in_weld_resumes_it", ring);
        writeChanged(ring, "otherset.ring", [](Record* record, QJsonObject* body) {
            if (record->kind == Record::Kind::Section && body->value("name") == "lumo.param") {
                QJsonArray sets = body->value("content").toArray();
                for (int i = 0; i < sets.size(); ++i) {
                    QJsonObject set = sets[i].toObject();
                    set["power"] = 3;
                    sets[i] = set;
                }
                body->insert("content", sets);
            }
        });
        const Result result = replay("otherset.ring", {"--run", "1"});
        QCOMPARE(result.status, 1);
        QVERIFY2(result.out.contains("register.write"), result.out.constData());
    }

    void killedProcessLeavesARecording() {
        const QString ring = QDir::current().filePath("killed.ring");
        Child child;
        child.setWorkingDirectory(EXAMPLES "/lap_seam");
        child.start(LUMO_RUN,
                    {"--quiet", "--realtime", "--flight", ring, "--flight-size", "4", "lap_seam.json"});
        const auto hasPostures = [&ring] {
            const flight::Recording recording = read(ring);
            return std::count_if(recording.records.begin(), recording.records.end(),
                                 [](const Record& record) { return record.kind == Record::Kind::Posture; }) >
                   20;
        };
        QTRY_VERIFY_WITH_TIMEOUT(hasPostures(), 120000);
        ::kill(pid_t(child.processId()), SIGKILL);
        QVERIFY(child.waitForFinished(60000));
        const flight::Recording recording = read(ring);
        QCOMPARE(recording.damaged, 0);
        const auto runs = flight::runsOf(recording);
        QCOMPARE(runs.size(), std::size_t(1));
        QCOMPARE(runs.front().reason, QString("cut"));
        const Result repeated = replay(ring);
        QVERIFY2(repeated.status == 0, (repeated.out + repeated.err).constData());
    }

    void badUsageAndFilesAreRefused() {
        test::writeFile("no.ring", "no recording");
        flight::RingProblem problem;
        flight::RingFile::open("empty.ring", 1 << 20, &problem);
        for (const QStringList& arguments : {QStringList{"--replay", "no.ring"},
                                             {"--replay", "missing.ring"},
                                             {"--replay", "empty.ring"},
                                             {"--replay", "empty.ring", "project.json"},
                                             {"--run", "1", "project.json"}}) {
            const Result result = runIn(".", arguments);
            QVERIFY2(result.status == 2 && result.err.count('\n') == 1, qPrintable(arguments.join(' ')));
        }
        QCOMPARE(replay("empty.ring", {"--list"}).status, 0);
    }
};

LUMO_TEST_ON(TestReplay, test::onWallClock)
#include "test_replay.moc"
