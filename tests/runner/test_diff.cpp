#include "runner/tracediff.h"
#include "support/suite.h"
#include "support/text.h"

namespace {

QByteArray at(int ms, const char* kind, const char* keys) {
    return QStringLiteral("{\"t\":%1,\"kind\":\"%2\",%3}\n")
        .arg(ms)
        .arg(QLatin1String(kind), QString(keys).replace('\'', '"'))
        .toUtf8();
}

QByteArray beginsLine(int ms, int line, const char* type) {
    return at(ms, "changed", qPrintable(QString("'path':'lumo.execute.line','value':%1").arg(line))) +
           at(ms, "changed", qPrintable(QString("'path':'lumo.current.programtype','value':'%1'").arg(type)));
}

QByteArray moves(int ms, double speed) {
    return at(ms, "command", qPrintable(QString("'name':'move.l','args':{'traj':{'speed':%1}}").arg(speed)));
}

QByteArray writes(int ms, int value) {
    return at(ms, "command",
              qPrintable(QString("'name':'register.write','args':{'name':'AO_1','value':%1}").arg(value)));
}

const QByteArray head =
    at(0, "begin", "'statements':3") + at(0, "changed", "'path':'lumo.execute.state','value':'busy'");
const QByteArray release = "{\"t\":0,\"kind\":\"command\",\"name\":\"move.opr.enough\",\"args\":null}\n";

/// Two moves in a batch, then an opening; `pause` before the opening.
QByteArray traced(double speed2 = 0.2, int power = 1638, int pauseMs = 0, const char* fate = "passed") {
    return head + beginsLine(0, 0, "moveL") + moves(0, 0.1) + moves(0, speed2) + release +
           at(400, "posture", "'trans':[1]") + beginsLine(500, 1, "moveL") +
           at(900, "motion", qPrintable(QString("'id':2,'event':'%1'").arg(fate))) +
           beginsLine(1000 + pauseMs, 2, "open") + writes(1100 + pauseMs, power) +
           at(2000 + pauseMs, "done", "'reason':'finished','line':2,'lines':3,'ms':1");
}

}  // namespace

class RunnerDiff : public QObject {
    Q_OBJECT
private slots:
    void differences_areToldByStatement_andTimesAreNone() {
        using Lines = QStringList;
        const QByteArray repeated =
            traced().replace(beginsLine(1000, 2, "open"),
                             beginsLine(900, 1, "moveL") + moves(900, 0.2) + beginsLine(1000, 2, "open"));
        const std::tuple<QByteArray, Lines, Lines, const char*> others[] = {
            {traced(), {}, {}, "equal"},
            {traced(0.2, 1638, 120),
             {},
             {"line 3 (open): 120 ms later"},
             "equal but for the times; B ends 120 ms later"},
            {traced(0.3),
             {"line 2 (moveL): move.l traj.speed 0.2 -> 0.3"},
             {},
             "1 different; B ends at the same time"},
            {traced(0.2, 2048),
             {"line 3 (open): register.write AO_1 1638 -> 2048"},
             {},
             "1 different; B ends at the same time"},
            {traced(0.2, 1638, 0, "failed"),
             {"line 2 (moveL): the motion: passed -> failed"},
             {},
             "1 different; B ends at the same time"},
            {repeated,
             {"line 2 (moveL): only in B: move.l {\"traj\":{\"speed\":0.2}}"},
             {},
             "1 different; B ends at the same time"}};
        test::writeFile("a.jsonl", traced());
        for (const auto& [text, differences, shifts, summary] : others) {
            test::writeFile("b.jsonl", text);
            run::Problem problem;
            const auto a = run::TraceSteps::read("a.jsonl", &problem);
            const auto b = run::TraceSteps::read("b.jsonl", &problem);
            QVERIFY2(a && b, qPrintable(problem.text()));
            const run::TraceDiff diff = run::compare(*a, *b);
            QCOMPARE(diff.differences, differences);
            QCOMPARE(diff.shifts, shifts);
            QCOMPARE(diff.summary, QString(summary));
        }
    }

    void noTrace_isRefusedWithItsPlace() {
        const std::pair<QByteArray, const char*> files[] = {{"", "b.jsonl: no trace"},
                                                            {"[]\n", "b.jsonl:1:1: no line of a trace"},
                                                            {traced() + "{\"t\":1", "b.jsonl:16:1: no line"}};
        for (const auto& [text, reason] : files) {
            test::writeFile("b.jsonl", text);
            run::Problem problem;
            QVERIFY(!run::TraceSteps::read("b.jsonl", &problem));
            QVERIFY2(problem.text().startsWith(reason), qPrintable(problem.text()));
        }
    }
};

LUMO_TEST(RunnerDiff)
#include "test_diff.moc"
