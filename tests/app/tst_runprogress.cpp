#include "app/progress/runprogress.h"

#include <QtTest>

using app::LineEstimate;
using app::RunProgress;

/// How far a run is told to be.
class AppRunProgress : public QObject {
    Q_OBJECT
private slots:
    void lineThatTakesLonger_keepsTheRest();
    void lineThatIsFaster_shortensTheRest();
    void inputs_areToldAndNotCounted();
    void runFromALaterLine_beginsAtNothing();
    void strangeLines_areHarmless();
};

namespace {

int percent(const RunProgress& progress, qint64 ms) {
    return qRound(progress.at(ms).share * 100);
}

}  // namespace

void AppRunProgress::lineThatTakesLonger_keepsTheRest() {
    RunProgress progress({{1000}, {2000}, {1000}}, 0, 50);
    QCOMPARE(progress.at(50).leftMs, qint64(4000));
    QCOMPARE(percent(progress, 50), 0);
    QCOMPARE(progress.at(450).leftMs, qint64(3600));
    QCOMPARE(progress.at(1950).leftMs, qint64(3000));
    QCOMPARE(percent(progress, 1950), 25);
    progress.beginLine(1, 2050);
    QCOMPARE(progress.at(3050).leftMs, qint64(2000));
    QCOMPARE(percent(progress, 3050), 50);
}

void AppRunProgress::lineThatIsFaster_shortensTheRest() {
    RunProgress progress({{1000}, {2000}}, 0, 0);
    progress.beginLine(1, 200);
    QCOMPARE(progress.at(200).leftMs, qint64(2000));
    // The same line again is no new beginning.
    progress.beginLine(1, 700);
    QCOMPARE(progress.at(700).leftMs, qint64(1500));
}

void AppRunProgress::inputs_areToldAndNotCounted() {
    RunProgress progress({{500}, {100, true}, {400}}, 0, 0);
    QVERIFY(progress.at(0).willWait && !progress.at(0).waits);
    progress.beginLine(1, 500);
    QVERIFY(progress.at(90000).waits && !progress.at(90000).willWait);
    QCOMPARE(progress.at(90000).leftMs, qint64(400));
    progress.beginLine(2, 90000);
    QVERIFY(!progress.at(90000).waits && !progress.at(90000).willWait);
    QCOMPARE(progress.at(90300).leftMs, qint64(100));
}

void AppRunProgress::runFromALaterLine_beginsAtNothing() {
    RunProgress progress({{0}, {0}, {500}, {500}}, 2, 0);
    QCOMPARE(percent(progress, 0), 0);
    QCOMPARE(percent(progress, 250), 25);
    progress.beginLine(3, 500);
    QCOMPARE(percent(progress, 1000), 100);
}

void AppRunProgress::strangeLines_areHarmless() {
    RunProgress progress({{500}}, 0, 0);
    progress.beginLine(7, 100);
    progress.beginLine(-1, 100);
    QCOMPARE(progress.at(100).leftMs, qint64(400));
    QCOMPARE(RunProgress({}, 0, 0).at(10).leftMs, qint64(0));
    QCOMPARE(RunProgress({{0}}, 0, 0).at(10).share, 1.0);
    QCOMPARE(RunProgress({{500}}, -1, 0).at(10).leftMs, qint64(0));
}

QTEST_GUILESS_MAIN(AppRunProgress)
#include "tst_runprogress.moc"
