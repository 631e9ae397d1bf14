#include "support/suite.h"
#include "workcell/pathshares.h"

using workcell::PathShares;
using workcell::SeamTally;

namespace {

/// A tool that moves at 15 mm/s from a moment on, and a controller that tells where it was, a little late.
class Stitch {
public:
    explicit Stitch(double startMs) : startMs_(startMs) { shares.begin(0, 0); }

    double travelledMm(double ms) const { return std::max(ms - startMs_, 0.0) * 0.015; }
    /// The laser was on, or off, up to then.
    void wasLit(bool lit, double untilMs) {
        PathShares::Piece piece{nowMs_, untilMs, {}, lit ? &seam : nullptr, &seam};
        piece.stretch.emitting = lit;
        piece.stretch.betweenPulses = !lit;
        shares.add(piece);
        nowMs_ = untilMs;
    }
    void tell(double atMs) { shares.tell(atMs, travelledMm(atMs)); }
    workcell::SeamRecord record() const { return seam.record({}, {}); }

    PathShares shares;
    SeamTally seam{1, "set", "p", 0};

private:
    double startMs_, nowMs_ = 0;
};

}  // namespace

/// What is welded by pulses when the place of the tool is told from time to time only.
class WorkcellPathshares : public QObject {
    Q_OBJECT
private slots:
    /// 80 ms of light, 60 ms of none, told each 10.6 ms and 3 ms late, out of step with the pulses.
    void pulses_getThePathOfTheirOwnTime() {
        Stitch stitch(40);
        double toldMs = 0;
        bool lit = true;
        for (int at = 1, edge = 80; at <= 1400; ++at) {
            if (at == edge) {
                stitch.wasLit(lit, at);
                lit = !lit;
                edge += lit ? 80 : 60;
            }
            if (at - 3 >= toldMs + 10.6) {
                toldMs = at - 3;
                stitch.wasLit(lit, at);
                stitch.tell(toldMs);
            }
        }
        stitch.shares.settle(1400);
        const workcell::SeamRecord record = stitch.record();
        QCOMPARE(record.laserOnS, 0.8);
        QVERIFY2(std::abs(record.weldedMm - (10 * 80 - 40) * 0.015) < 0.01,
                 qPrintable(QString::number(record.weldedMm)));
        QVERIFY2(std::abs(record.standingS - 0.04) < 0.011, qPrintable(QString::number(record.standingS)));
        QCOMPARE(record.darkGaps.size(), std::size_t(1));  // behind the last pulse
    }

    void aPlaceOfNow_isAddedAtOnce() {
        Stitch stitch(0);
        stitch.wasLit(true, 100);
        stitch.tell(100);
        QVERIFY(!stitch.shares.isWaiting());
        QCOMPARE(stitch.record().weldedMm, 1.5);
    }

    /// What a place is not told for waits, and the seam with it; then the tool stood.
    void whatIsNotTold_waitsAndThenCountsAsStandstill() {
        Stitch stitch(0);
        stitch.wasLit(true, 30);
        stitch.tell(20);
        QVERIFY(stitch.shares.concerns(&stitch.seam));
        QCOMPARE(stitch.record().weldedMm, 0.3);
        stitch.shares.settle(29);
        QVERIFY(stitch.shares.isWaiting());
        stitch.shares.settle(30);
        QVERIFY(!stitch.shares.concerns(&stitch.seam));
        QCOMPARE(stitch.record().weldedMm, 0.3);
        QCOMPARE(stitch.record().standingS, 0.01);
    }

    /// A controller that tells no standstill: a first place far from the one before belongs to the last
    /// moments.
    void theFirstPlaceOfAMovement_doesNotReachBackIntoTheStandstill() {
        Stitch stitch(1000);
        stitch.wasLit(true, 1000);
        stitch.wasLit(false, 1050);
        stitch.tell(1050);
        const workcell::SeamRecord record = stitch.record();
        QVERIFY(record.standingS > 0.94 && record.weldedMm < 0.4);
        QCOMPARE(record.programmedMm, 0.75);
    }
};

LUMO_TEST(WorkcellPathshares)
#include "test_pathshares.moc"
