#include "app/path/pathlayout.h"
#include "app/progress/runestimate.h"
#include "support/runnerfolder.h"
#include "support/suite.h"
#include "support/text.h"

using app::Position;

namespace {

/// "X Y" in millimetres; all there is lies 300 mm high.
QString text(const Position& place) {
    return QString("%1 %2").arg(qRound64(place.x * 1000)).arg(qRound64(place.y * 1000));
}

/// "LINE SHAPE from > to length ~ where the corner ends", with w for a weld.
QString text(const app::PathMove& move) {
    static const char* const shapes[] = {"joint", "line", "arc", "circle"};
    const QString path = text(move.path.front()) + " > " + text(move.path.back());
    const QString length = QString::number(app::lengthOf(move.path) * 1000, 'f', 1);
    return QString("%1 %2 %3 %4").arg(move.line).arg(shapes[int(move.shape)], path, length) +
           (move.corner.empty() ? "" : " ~ " + text(move.corner.back())) + (move.weld ? " w" : "");
}

/// "TYPE X Y [X1 Y1] ['field':value]…" as a statement.
QString statement(const QString& text) {
    const QStringList words = text.split(' ');
    QString json = "{'type':'" + words[0] + "'";
    for (int i = 1; i < words.size(); ++i) {
        if (words[i].startsWith('\'')) {
            json += "," + words[i];
        } else if (i % 2 == 1) {
            json += QString(",'%1':{'trans':[%2e-3,%3e-3,0.3]}")
                        .arg(i == 1 ? "point" : "point1", words[i], words[i + 1]);
        }
    }
    return json + "}";
}

}  // namespace

/// What is known of a program before it runs, its path and its time.
class AppPlan : public QObject {
    Q_OBJECT

    const sim::Arm arm_{6};

    std::vector<app::PathMove> layOut(const QString& statements) const {
        QStringList list;
        for (const QString& line : statements.split("; ")) {
            list << statement(line);
        }
        const QJsonValue program = test::json("[" + list.join(',').toUtf8() + "]");
        return app::layOutPath(prog::RunProgram(program), arm_, {{{0.5, 0, 0.3}, {}}, arm_.home()});
    }
    /// From home, made in parts.
    std::vector<app::LineEstimate> estimate(const QJsonValue& program, const QJsonValue& sets, int line,
                                            bool permitted, bool resumed) const {
        app::RunStart start;
        start.posture = {arm_.forward(arm_.home()), arm_.home()};
        start.line = line;
        start.permitted = permitted;
        start.inWeld = resumed;
        app::RunEstimate made(prog::RunProgram(program), prog::LaserParams::allFrom(sets), start, arm_);
        while (!made.advance(3)) {
        }
        return made.lines();
    }

private slots:
    void program_isLaidOutAsItIsRun() {
        const QVector<QStringList> rows = {
            {"moveL 500 0; moveL 600 0 'zone':'20'; moveL 600 100 'zone':20",  // none behind the last one
             "0 line 500 0 > 500 0 0.0", "1 line 500 0 > 580 0 80.0 ~ 600 20",
             "2 line 600 20 > 600 100 80.0"},
            {"moveL 500 0; moveL 600 0 'zone':90; moveL 600 60",  // half of the shorter way
             "0 line 500 0 > 500 0 0.0", "1 line 500 0 > 570 0 70.0 ~ 600 30", "2 line 600 30 > 600 60 30.0"},
            {"moveL 500 0; open 'execute':false; moveL 550 0 'zone':20; open; moveL 600 0; close; moveL 600 "
             "90",
             "0 line 500 0 > 500 0 0.0", "2 line 500 0 > 550 0 50.0", "4 line 550 0 > 600 0 50.0 w",
             "6 line 600 0 > 600 90 90.0"},
            {"moveC 600 100 700 0; moveC 500 0 600 -100", "0 arc 500 0 > 700 0 314.1",
             "1 arc 700 0 > 600 -100 471.2"},  // the long way round
            {"moveCC 600 100 700 0; moveL 500 50", "0 circle 500 0 > 500 0 628.3",
             "1 line 500 0 > 500 50 50.0"},
            {"moveL 500 0; moveJ 600 0", "0 line 500 0 > 500 0 0.0", "1 joint 500 0 > 600 0 100.0"},
        };
        for (const QStringList& row : rows) {
            QStringList path = {row[0]};
            for (const app::PathMove& move : layOut(row[0])) {
                path << text(move);
            }
            QCOMPARE(path.join('\n'), row.join('\n'));
        }
    }

    void example_takesWhatTheRunnerMeasures() {
        for (const QString name : {"lap_seam", "flange", "box_stitch"}) {
            const QString folder = EXAMPLES "/" + name, project = folder + "/" + name + ".json";
            const auto sets = test::json(test::contentOf(folder + "/lumo_param.json"));
            auto statements = test::json(test::contentOf(project)).toArray();
            statements.removeLast();  // the tool set
            for (const QStringList& options : {QStringList{}, {"--weld", "off"}, {"--line", "4"}}) {
                const Result run = runIn(".", QStringList{project, "--trace", "-", "--quiet"} + options);
                QCOMPARE(reasonOf(run), "finished");
                const int line = options.contains("4") ? 3 : 0;
                QMap<int, int> begins = {{0, 0}, {statements.size(), run.done()["ms"].toInt()}};
                for (const QJsonObject& change : run.trace) {
                    if (change["path"] == "lumo.current.line") {
                        begins[change["value"].toInt()] = change["t"].toInt();
                    }
                }
                const auto lines = estimate(statements, sets, line, !options.contains("off"), false);
                for (auto begin = begins.find(line); begin.key() < statements.size(); ++begin) {
                    const int ms = std::next(begin).value() - begin.value();
                    const QString what = QString("%1 line %2: %3").arg(project).arg(begin.key()).arg(ms);
                    QVERIFY2(qAbs(lines[size_t(begin.key())].ms - ms) <= qMax(ms / 10, 60), qPrintable(what));
                }
            }
        }
    }

    void resumedWeld_opensAgainAndTakesTheTimesOfItsSets() {
        const auto sets = test::json(
            "[{'delay_before_blow':200,'stay_time':20},"
            "{'decrease_time':80,'close_delay':10,'delay_after_blow':300}]");
        const auto program = test::json(
            "[{'type':'open','index':0},{'type':'delay','delaytime':1500},{'type':'waitDI'},"
            "{'type':'param','index':1},{'type':'close'}]");
        QStringList times;
        for (const auto& line : estimate(program, sets, 1, true, true)) {
            times << QString::number(line.ms) + (line.waitsForInput ? "?" : "");
        }
        QCOMPARE(times.join(' '), "0 1720 100? 0 390");
    }
};

LUMO_TEST(AppPlan)
#include "test_plan.moc"
