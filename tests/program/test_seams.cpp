#include "program/seams.h"
#include "support/suite.h"
#include "support/text.h"

using prog::Position;
using prog::SeamProgress;

/// The seams of a program, and how far a run has come along them.
class ProgramSeams : public QObject {
    Q_OBJECT

    static QByteArray move(const char* type, const char* first, const char* second = nullptr) {
        const auto point = [](const char* name, const char* trans) {
            return QByteArray(",'") + name + "':{'trans':" + trans + ",'rot':[0,0,0]}";
        };
        return QByteArray("{'type':'") + type + "','execute':true" + point("point", first) +
               (second ? point("point1", second) : QByteArray()) + '}';
    }
    static std::vector<prog::Seam> seams(const QByteArrayList& lines) {
        const QByteArray text = test::quoted('[' + lines.join(',') + ']');
        return prog::seamsOf(prog::RunProgram(prog::Record(test::json(text))));
    }
    const QByteArray open_ = "{'type':'open','execute':true}", close_ = "{'type':'close','execute':true}";
    const QByteArray off_ = "{'type':'close','execute':false}";

    /// A line of 100 mm, a full circle of 50 mm radius, and a second seam of 200 mm.
    std::vector<prog::Seam> twoSeams() const {
        return seams({move("moveJ", "[0,0,0]"), open_, move("moveL", "[0.1,0,0]"), off_,
                      move("moveCC", "[0.05,0.05,0]", "[0,0,0]"), close_, move("moveL", "[0,0,0.2]"), open_,
                      move("moveL", "[0,0.2,0.2]"), close_});
    }

private slots:
    void seams_areWhatIsWeldedBetweenExecutedLines() {
        const auto found = twoSeams();
        QCOMPARE(found.size(), std::size_t(2));
        QCOMPARE(std::make_pair(found[0].open, found[0].close), std::make_pair(1, 5));
        QCOMPARE(found[0].lines, std::vector<int>({2, 4}));
        QVERIFY(std::abs(found[0].lengthM() - 0.1 - M_PI * 0.1) < 1e-6);
        QVERIFY(std::abs(found[1].lengthM() - 0.2) < 1e-9);
        // Nothing ends it; where the tool comes from is not known.
        const auto endless = seams({open_, move("moveL", "[0.1,0,0]"), move("moveL", "[0.1,0.1,0]")});
        QCOMPARE(endless.at(0).close, 3);
        QVERIFY(std::abs(endless[0].lengthM() - 0.1) < 1e-9);
    }

    void progress_followsLineAndTool_andOnlyWhatWasLitIsWelded() {
        SeamProgress run;
        run.setSeams(twoSeams());
        run.begin(0, false);
        QCOMPARE(run.seamAt(0), 0);
        run.follow(2, {0.03, 0.001, 0}, true);
        QVERIFY(std::abs(run.alongM(0) - 0.03) < 1e-9);
        // At the start of the circle the tool is at its end, too.
        run.follow(4, {0.1, 0.0001, 0}, true);
        QVERIFY(std::abs(run.alongM(0) - 0.1) < 0.001);
        run.follow(4, {0.05, 0.05, 0}, true);
        QVERIFY(std::abs(run.alongM(0) - 0.1 - M_PI * 0.025) < 0.001);
        QVERIFY(!run.isWelded(0));
        run.follow(6, {0, 0, 0.1}, false);
        QVERIFY(run.isWelded(0) && run.seamAt(6) == 1);
        run.follow(8, {0, 0.1, 0.2}, false);  // the laser stays off
        run.finish();
        QVERIFY(std::abs(run.alongM(1) - 0.2) < 1e-9 && !run.isWelded(1));
    }

    void part_keepsItsSeamsWhenItGoesOn_andANewOneBeginsWithNone() {
        SeamProgress run;
        run.setSeams(twoSeams());
        run.begin(0, false);
        run.follow(6, {}, false);
        run.follow(8, {0, 0.05, 0.2}, true);
        run.begin(8, true);
        run.follow(8, {0, 0.04, 0.2}, true);  // back a little, to overlap
        QVERIFY(std::abs(run.alongM(1) - 0.05) < 1e-9);
        run.begin(7, false);
        run.follow(9, {}, true);
        run.finish();
        QVERIFY(run.alongM(0) == 0.0 && run.isWelded(1));
        QVERIFY(SeamProgress().seamAt(3) == -1);
    }
};

LUMO_TEST(ProgramSeams)
#include "test_seams.moc"
