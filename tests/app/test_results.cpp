#include "app/results/passport.h"
#include "app/results/resultcsv.h"
#include "app/results/resultspage.h"
#include "app/results/runhistory.h"
#include "app/results/seamlist.h"
#include "panelfixture.h"

#include <QBuffer>
#include <QDir>
#include <QTableView>

/// What the panel tells and keeps of runs.
class AppResults : public test::PanelTest {
    Q_OBJECT

    app::ResultsPage* page_ = nullptr;

    QString cell(const char* table, int row, int column) const {
        return find<QTableView>(table)->model()->index(row, column).data().toString();
    }
    /// The cell of the first seam in a column.
    QModelIndex seam(app::SeamColumn column) const {
        return find<QTableView>("seamsTable")->model()->index(0, column + 1);
    }
    app::Mark markOf(app::SeamColumn column) const {
        return app::Mark(seam(column).data(app::SeamList::markRole).toInt());
    }
    /// The last sentence but those on editing.
    QString ended() const {
        pass(0);
        return textOf("lblWhy").split("  ·  ").value(1);
    }
    void weld(const Moments& moments) const {
        run(0, moments);
        waitUntilIdle();
        pass(5000);
    }
    static app::RunResult resultOf(const QString& project) {
        app::RunResult result;
        result.begun = QDateTime({2026, 1, 2}, {3, 4, 5});
        result.record.project = project;
        result.record.reason = "finished";
        return result;
    }

private slots:
    void initTestCase() {
        page_ = static_cast<app::ResultsPage*>(docks()->content("results"));
        robot()->setInput("DI3", true);
        openSample();
        robot()->setPower(true);
        docks()->open("results");
        QVERIFY(find<QLabel>("lblNoRuns")->isVisible());
        docks()->close("results");
    }

    void finishedRun_isJudgedAndTold() {
        test::writeFile(
            "seam.limits.json",
            test::quoted("{'seam':{'welded_ratio':{'min':0.9,'max':1.1},'standing_s':{'max':0}}}"));
        weld({});
        const QString welded = seam(app::SeamLength).data().toString();
        QVERIFY2(welded.toDouble() > 100, qPrintable(welded));
        QVERIFY2(ended().startsWith("Finished, 0:") && ended().endsWith("mm welded, limits exceeded: 1"),
                 qPrintable(ended()));
        QCOMPARE(find<QLabel>("lblWhySign")->accessibleName(), "warn");
        click("lblWhy");
        QVERIFY(page_->isVisible());
        QCOMPARE(cell("runsTable", 0, 5), "✗ 1");
        QVERIFY(markOf(app::SeamLength) == app::Mark::Within && markOf(app::SeamGood) == app::Mark::Outside);
        QVERIFY2(textOf("lblReasons").contains("allowed ≤ 0"), qPrintable(textOf("lblReasons")));
        QVERIFY2(textOf("lblVerdict").contains("Seams to check: 1"), qPrintable(textOf("lblVerdict")));
        const app::RunResult result = *app::RunHistory(app::RunHistory::defaultFolder()).at(0);
        const app::SeamProfile& profile = result.profiles.at(0);
        const auto fastest =
            std::max_element(profile.begin(), profile.end(),
                             [](const app::ProfileSample& one, const app::ProfileSample& other) {
                                 return one.speedMmPerS < other.speedMmPerS;
                             });
        QVERIFY(qAbs(fastest->speedMmPerS - *result.record.seams[0].meanSpeedMmPerS) < 3);
        QVERIFY(qAbs(profile.back().mm - welded.toDouble()) < 2);
        page_->exportTo("seam.pdf");
        const QByteArray pdf = test::contentOf("seam.pdf");
        QVERIFY(pdf.startsWith("%PDF") && textOf("lblResultWritten") == "Saved: seam.pdf");
    }

    void brokenRun_isKeptWithItsFault() {
        test::writeFile("seam.limits.json", "{'seam': 1}");
        const auto fail = [this] { robot()->setInput("LUMO_DI.#2", false); };
        const auto pause = [] { m("lumo.execute.trigger.pause")->trigger(); };
        weld({{9000, fail}, {9500, pause}});
        robot()->setInput("LUMO_DI.#2", true);
        QVERIFY2(ended().startsWith("Paused at line ") && ended().endsWith(" mm welded"),
                 qPrintable(ended()));
        QCOMPARE(cell("runsTable", 0, 5), "⚠");
        QVERIFY(markOf(app::SeamGood) == app::Mark::Outside);
        QVERIFY(textOf("lblNotice").contains("Chiller fault while the laser is on, line "));
        QVERIFY(textOf("lblReasons").contains("seam.limits.json has errors"));
        set("lumo.current.openmiddlecolse", false);
        m("lumo.current.pausepoint")->clear(nullptr);
        QFile::remove("seam.limits.json");
    }

    void programWithoutWelds_saysTheTimeOnly() {
        load("lumo.program", "[{'type':'delay','delaytime':61000}]");
        weld({});
        QCOMPARE(ended(), "Finished, 1:01");
        load("lumo.program", "[{'type':'open','index':0},{'type':'close'}]");
        QCOMPARE(ended(), "No program runs");
        robot()->setMode("manual");
        weld({});
        robot()->setMode("auto");
        QCOMPARE(ended(), "Finished, 0:00, nothing welded");
    }

    void history_keepsTheLastThousandAndToldDamage() {
        QVERIFY(QDir().mkpath("runs"));
        for (int i = 1; i <= app::RunHistory::mostRuns; ++i) {
            test::writeFile(QString("runs/run-%1-1.json").arg(i), "{\"begun\":");
        }
        app::RunHistory("runs").add(resultOf("a, \"b\""));
        const app::RunHistory history("runs");
        QVERIFY(history.count() == app::RunHistory::mostRuns && !QFile::exists("runs/run-1-1.json"));
        QVERIFY(history.at(0) && history.at(0)->record.project == "a, \"b\"" && !history.at(1));
        QCOMPARE(history.fileName(1), "run-1000-1.json");
        const QByteArray csv = app::csvLines(*history.at(0));
        QVERIFY2(csv.startsWith("2026-01-02 03:04:05,\"a, \"\"b\"\"\",finished,0,,"), csv);
        QCOMPARE(csv.count(','), app::csvHeader().count(',') + 1);
        // A folder that cannot be written: the run is kept until it can.
        app::RunHistory lost("/proc/runs");
        lost.add(resultOf("lost"));
        QVERIFY(lost.count() == 1 && lost.at(0)->record.project == "lost");
        QVERIFY(textOf("lblNotice").contains("/proc/runs"));
    }

    void passport_hasAPageForEveryFewLines() {
        app::RunResult result = resultOf("long");
        result.record.seams.resize(12);
        for (int i = 0; i < 500; ++i) {
            result.lines.append({"moveL", true, "1, 2, 3", "10", "0", QString(400, 'x')});
        }
        const app::Sheets sheets = app::seamPassport(result);
        QVERIFY2(sheets.pageCount() > 20 && sheets.pageCount() < 90,
                 qPrintable(QString::number(sheets.pageCount())));
        QBuffer pdf;
        QVERIFY(pdf.open(QIODevice::WriteOnly) && app::writePassport(&pdf, result));
        QCOMPARE(pdf.data().count("/Type /Page\n"), sheets.pageCount());
    }
};

LUMO_TEST(AppResults)
#include "test_results.moc"
