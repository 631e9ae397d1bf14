#include "program/check.h"
#include "program/runprogram.h"
#include "support/suite.h"
#include "support/text.h"

using prog::RunProgram;

namespace {

/// A program of one word a line: a type, "-" before it where the line is not executed, and behind ":" more
/// fields.
QJsonValue records(const QString& words) {
    QStringList lines;
    for (QString word : words.split(' ')) {
        const QString off = word.startsWith('-') ? ",'execute':false" : "";
        const QString type = word.section(':', 0, 0).remove('-');
        const QString fields = word.contains(':') ? "," + word.section(':', 1) : "";
        lines << "{'type':'" + type + "'" + off + fields + "}";
    }
    return test::json("[" + lines.join(',').toUtf8() + "]");
}

RunProgram program(const QString& words) {
    return RunProgram(records(words));
}

/// What `answer` says of each line.
template <typename Answer>
QString eachLine(const RunProgram& program, Answer answer) {
    QStringList answers;
    for (int line = 0; line < program.lineCount(); ++line) {
        answers << QString::number(answer(line));
    }
    return answers.join(' ');
}

QString at(double x, double y) {
    return QString("{'trans':[%1,%2,0]}").arg(x).arg(y);
}

/// An arm that counts what it is asked; it cannot get beyond 0.5 m.
struct ShortArm : prog::ArmModel {
    prog::ArmPosture home() const override { return {{}, {}, {0, 0, 0, 0, 0, 0}}; }
    std::optional<prog::ReachFault> follow(const prog::Statement& move, double speedMmPerS,
                                           prog::ArmPosture* posture) const override {
        ++asked;
        fastest = std::max(fastest, speedMmPerS);
        posture->trans = move.point.trans;
        return length(move.point.trans) > 0.5 ? std::make_optional(prog::ReachFault()) : std::nullopt;
    }
    mutable int asked = 0;
    mutable double fastest = 0;
};

}  // namespace

/// The rules about lines before and behind a line.
class ProgramRunProgram : public QObject {
    Q_OBJECT
private slots:
    void weldsAndBatches_followTheLines() {
        const struct {
            const char *program, *openBefore, *weldOf, *lastBeforeClose, *batchEnd;
        } cases[] = {
            {"moveL open moveL moveC delay close moveL", "-1 -1 1 1 1 1 1", "-1 -1 1 1 1 -1 -1",
             "0 0 0 1 1 0 0", "1 1 4 4 4 5 7"},
            // Lines that are not executed give their set and speed, and end the wait for a zone; they open
            // nothing.
            {"-open moveL -moveL moveL -close moveL", "-1 0 0 0 0 0", "-1 -1 -1 -1 -1 -1", "0 0 0 1 0 0",
             "0 2 2 4 4 6"},
            {"open -open -close moveL open moveL", "-1 0 1 1 1 4", "-1 -1 -1 0 0 4", "0 1 0 0 0 0",
             "0 1 2 4 4 6"},
        };
        for (const auto& row : cases) {
            const RunProgram lines = program(row.program);
            QCOMPARE(eachLine(lines, [&](int line) { return lines.openBefore(line); }), row.openBefore);
            QCOMPARE(eachLine(lines, [&](int line) { return lines.weldOf(line); }), row.weldOf);
            QCOMPARE(eachLine(lines, [&](int line) { return int(lines.isLastBeforeClose(line)); }),
                     row.lastBeforeClose);
            QCOMPARE(eachLine(lines, [&](int line) { return lines.batchEnd(line); }), row.batchEnd);
        }
    }

    void runThatOpensBeforeItMoves_isFound() {
        const QJsonValue lines = records("moveL -moveL -open delay open moveL");
        const auto opens = [&](int line) {
            return int(prog::opensBeforeItMoves(line, 6, prog::kindsIn(lines)));
        };
        QCOMPARE(eachLine(RunProgram(lines), opens), "0 1 1 1 1 0");
        QVERIFY(!opens(-1));
    }

    void pairs_alternateFromAStartToAStop() {
        const auto match = [](const char* words) { return prog::WeldPairs::of(records(words)).match(); };
        QVERIFY(match("moveL") && match("open moveL close") && match("open close open close"));
        QVERIFY(!match("open") && !match("close") && !match("close open"));
        QVERIFY(!match("open open close close") && !match("open close close open"));
    }

    void speed_isThatOfTheWeld() {
        const RunProgram lines = program("open:'weldspeed':'12' moveL:'speed':90");
        QVERIFY(lines.speedMmPerS(1, true) == 12 && lines.speedMmPerS(1, false) == 90);
        QVERIFY(program("moveL:'speed':90").speedMmPerS(0, true) == 90);
    }

    void circleStartsAtTheNearestTargetBefore() {
        const QString p1 = "'point':" + at(0.1, 0), p2 = "'point1':" + at(0.2, 0), bad = p1 + "," + p2;
        const QString fine = "'point':" + at(0.1, 0.1) + ",'point1':" + at(0, 0.2);
        // The end of an arc; a line that is not executed; not that of a circle.
        const RunProgram lines = program("moveCC:" + fine + " moveL:'point':" + at(0, 0) + " moveC:" + fine +
                                         " -moveL:'point':" + at(0.3, 0) + " moveCC:" + fine +
                                         " delay moveCC:" + bad + " -moveCC:" + bad);
        const auto target = [&lines](int line) {
            const auto before = lines.targetBefore(line);
            return before ? before->line * 10 + int(before->isPoint1) : -1;
        };
        QCOMPARE(eachLine(lines, target), "-1 -1 10 21 30 30 30 30");
        QCOMPARE(lines.point({2, true}).trans.y, 0.2);
        QCOMPARE(eachLine(lines, [&](int line) { return int(lines.circleFaultAt(line)); }),
                 "0 0 0 0 0 0 2 2");
        QVERIFY(lines.firstBadCircle(0, 8) == 6 && lines.firstBadCircle(0, 6) == -1);
        QCOMPARE(lines.firstBadCircle(7, 8), -1);
        QVERIFY(lines.isMove(0) && !lines.isMove(5) && !lines.isMove(8) && !lines.isMove(-1));
        QVERIFY(lines.isExecuted(0) && !lines.isExecuted(3) && !lines.isExecuted(8));
    }

    /// In parts, and again after an edit: only the moves from the edited one to where the postures are the
    /// same.
    void reach_isAskedAgainOnlyWhereItCouldDiffer() {
        const auto line = [](double x) {
            return QString("moveL:'speed':90,'point':{'trans':[%1,0,0],'rot':[0,0,0]} ").arg(x);
        };
        const QString before = line(0.1) + "open:'weldspeed':20 " + line(0.2),
                      after = "close " + line(0.7) + "moveL";
        const ShortArm arm;
        prog::ReachCheck check(arm);
        for (const auto& [edited, asked] : {std::pair{0.3, 5}, {0.3, 0}, {0.6, 2}}) {
            arm.asked = 0;
            const RunProgram lines = program(before + line(edited) + line(0.4) + after);
            check.begin(lines);
            while (!check.advance(1)) {
            }
            QCOMPARE(arm.asked, asked);
            QCOMPARE(check.findings().size(), prog::checkReach(lines, arm).size());
            QCOMPARE(check.findings().size(), edited > 0.5 ? 2U : 1U);
            QCOMPARE(check.findings().back().line, 6);
        }
        QCOMPARE(arm.fastest, 90.0);
    }
};

LUMO_TEST(ProgramRunProgram)
#include "test_runprogram.moc"
