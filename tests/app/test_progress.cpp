#include "app/progress/runestimate.h"
#include "app/progress/runprogress.h"
#include "support/runnerfolder.h"
#include "support/suite.h"
#include "support/text.h"

/// How long a run takes, known before, and how far it is told to be.
class AppProgress : public QObject {
    Q_OBJECT

    const sim::Arm arm_{6};

    /// From home, made in parts.
    std::vector<app::LineEstimate> estimate(const QJsonArray& statements, const QJsonArray& sets, int line,
                                            bool permitted, bool resumed) const {
        app::RunStart start;
        start.stand = {arm_.forward(arm_.home()), arm_.home()};
        start.line = line;
        start.permitted = permitted;
        start.weldOpen = resumed;
        app::RunEstimate made(statements, sets, start, arm_);
        while (!made.advance(3)) {
        }
        return made.lines();
    }

private slots:
    void example_takesWhatTheRunnerMeasures() {
        for (const QString name : {"lap_seam", "flange", "box_stitch"}) {
            const QString folder = EXAMPLES "/" + name, project = folder + "/" + name + ".json";
            const auto sets = test::json(test::contentOf(folder + "/lumo_param.json")).toArray();
            auto statements = test::json(test::contentOf(project)).toArray();
            statements.removeLast();  // the tool set
            for (const QStringList& options : {QStringList{}, {"--weld", "off"}, {"--line", "4"}}) {
                const Result run = runIn(".", QStringList{project, "--trace", "-", "--quiet"} + options);
                QCOMPARE(reasonOf(run), "finished");
                const int line = options.contains("4") ? 3 : 0;
                QMap<int, int> begins = {{0, 0}, {statements.size(), run.done()["ms"].toInt()}};
                for (const QJsonObject& change : run.trace)
                    if (change["path"] == "lumo.current.line")
                        begins[change["value"].toInt()] = change["t"].toInt();
                const auto lines = estimate(statements, sets, line, !options.contains("off"), false);
                for (auto begin = begins.find(line); begin.key() < statements.size(); ++begin) {
                    const int ms = std::next(begin).value() - begin.value();
                    const QString what = QString("%1 line %2: %3").arg(project).arg(begin.key()).arg(ms);
                    QVERIFY2(qAbs(lines[size_t(begin.key())].ms - ms) <= qMax(ms / 10, 60), qPrintable(what));
                }
            }
        }
    }

    void line_takesItsOwnTimes() {
        const auto sets = test::json("[{'delay_before_blow':200,'stay_time':20,'decrease_time':80,"
                                     "'close_delay':10,'delay_after_blow':300},{'delay_before_blow':9,"
                                     "'stay_time':9,'decrease_time':8,'close_delay':1,'delay_after_blow':30}]")
                              .toArray();
        const QByteArray weld = "{'type':'open','index':0},{'type':'delay','delaytime':1500},{'type':'close'}";
        const QByteArray pose = "'point':{'rot':[3.141592653589793,0,0],'trans':";
        const struct {
            QByteArray program;
            int from;
            bool resumed;
            QString times;
        } rows[] = {
            {weld, 0, false, "220 1500 390"},
            {weld, 1, false, "0 1500 390"},
            {weld, 1, true, "0 1720 390"},
            {"{'type':'open','index':0},{'type':'param','index':1},{'type':'close'}", 0, false, "220 0 39"},
            {"{'type':'delay','delaytime':50,'execute':false},{'type':'delay','delaytime':'70'}", 0, false, "0 70"},
            {"{'type':'waitDI'},{'type':'delay','delaytime':5}", 0, false, "100? 5"},
            // A move that cannot be made ends the run.
            {"{'type':'moveL','speed':10," + pose + "[9,9,9]}},{'type':'delay','delaytime':7}", 0, false, "0 0"},
            // 2 m/s², 100 mm at 100 mm/s: 50 ms more than at full speed.
            {"{'type':'moveL','speed':100," + pose + "[0.5,0,0.3]}},{'type':'delay'},{'type':'moveL','speed':50," +
                 pose + "[0.5,0,0.4]}}",
             0, false, "1050 0 2025"},
        };
        for (const auto& row : rows) {
            const auto program = test::json("[" + row.program + "]").toArray();
            QStringList times;
            for (const app::LineEstimate& line : estimate(program, sets, row.from, true, row.resumed))
                times << QString::number(line.ms) + (line.waitsForInput ? "?" : "");
            QCOMPARE(times.join(' '), row.times);
        }
    }

    void rest_isOfTheLinesThatAreLeft() {
        app::RunProgress run({{1000}, {100, true}, {400}, {500}}, 0, 50);
        const auto told = [&run](qint64 ms) {
            const auto view = run.at(ms);
            return QString("%1 %2%").arg(view.leftMs).arg(qRound(view.share * 100)) +
                   (view.waits ? " waits" : "") + (view.willWait ? " will wait" : "");
        };
        QCOMPARE(told(50), "2000 0% will wait");
        QCOMPARE(told(450), "1600 20% will wait");
        QCOMPARE(told(1950), "1000 50% will wait");  // longer than it was thought to be
        run.beginLine(1, 2050);
        QCOMPARE(told(90000), "900 55% waits");
        run.beginLine(2, 90000);
        for (const int strange : {2, -1, 4})
            run.beginLine(strange, 90300);
        QCOMPARE(told(90300), "600 70%");
        QCOMPARE(qRound(app::RunProgress({{0}, {500}, {500}}, 1, 0).at(250).share * 100), 25);
        QCOMPARE(app::RunProgress({{500}}, -1, 0).at(10).leftMs, qint64(0));
        QCOMPARE(app::RunProgress({{0}}, 0, 0).at(10).share, 1.0);
    }
};

LUMO_TEST(AppProgress)
#include "test_progress.moc"
