#include "program/lasertiming.h"
#include "support/suite.h"
#include "support/text.h"

#include <limits>

using namespace prog;

namespace {

QString toText(const PortStep& step) {
    static const char* const roles[] = {"", " ramp-down", " off", " gas-off"};
    return QString("%1 %2%3")
        .arg(portInfo(step.port).word)
        .arg(step.value, 0, 'g', 4)
        .arg(roles[int(step.role)]);
}

/// A line for each phase: "pulses off, [gas 1], 200: laser_power 0.5, wait dwell 100".
QStringList toText(const LaserPlan& plan) {
    QStringList lines;
    for (const LaserPhase& phase : plan) {
        QStringList parts, now;
        for (const PortStep& step : phase.now) {
            now << toText(step);
        }
        if (phase.pulses == LaserPhase::Pulses::Stop) {
            parts << "pulses off";
        }
        if (!now.isEmpty()) {
            parts << (phase.isGroup ? '[' + now.join(", ") + ']' : now.join(", "));
        }
        for (const TimedStep& later : phase.later) {
            parts << QString("%1: %2").arg(later.ms).arg(toText(later.step));
        }
        if (phase.pulses == LaserPhase::Pulses::Start) {
            parts << "pulses on";
        }
        if (!phase.wait.isEmpty()) {
            parts << QString("wait %1 %2").arg(phase.wait).arg(phase.waitMs);
        }
        lines << parts.join(", ");
    }
    return lines;
}

LaserParams paramsOf(const QByteArray& set) {
    return LaserParams::from(test::node(set).get());
}

}  // namespace

/// What an opening and a closing write, and when.
class TestLaserPlan : public QObject {
    Q_OBJECT

private slots:
    /// Each time ends where its output changes, whatever the other times are.
    void timing_showsEachTimeWhereItEnds() {
        const QByteArray fields[] = {"increase_time",  "decrease_time",     "stay_time",
                                     "close_delay",    "delay_before_blow", "delay_after_blow",
                                     "move_wire_time", "stop_wire_time",    "give_wire_time"};
        for (int seed = 1; seed < 40; ++seed) {
            QByteArray set =
                "{'power':70,'open_time':30,'open_interval':" + QByteArray::number(seed % 2 * 40);
            for (int i = 0; i < 9; ++i) {
                set += ",'" + fields[i] + "':" + QByteArray::number(seed * (i + 3) * 37 % 500 + i % 3);
            }
            const LaserParams params = paramsOf(set + "}");
            const LaserTiming timing = laserTiming(params);
            QVERIFY(timing.opening.ms >= durationMs(openingPlan(params, 20)));
            QVERIFY(timing.closing.ms >= durationMs(closingPlan(params, 20, Closing::Awaited)));
            for (const TimingPart* part : {&timing.opening, &timing.closing}) {
                for (const TimingSpan& span : part->spans) {
                    const auto changes = [&span](const TimingLane& lane) {
                        return std::any_of(lane.steps.begin(), lane.steps.end(),
                                           [&span](const auto& step) { return step.first == span.toMs; });
                    };
                    QVERIFY2(span.field == QLatin1String("stay_time") || span.toMs <= part->ms, set);
                    // Where the wire is not fed again, nothing happens at that time.
                    const bool isSeen = span.field != QLatin1String("stay_time") &&
                                        span.field != QLatin1String("close_delay") &&
                                        span.field != QLatin1String("stop_wire_time");
                    QVERIFY2(!isSeen || std::any_of(part->lanes.begin(), part->lanes.end(), changes),
                             span.field.data());
                }
            }
        }
    }

    void opening_isGasThenLaserThenRampAndWire() {
        const LaserParams params = paramsOf(
            "{'power':50,'frequency':40,'ratio':30,'increase_time':50,'stay_time':100,'delay_before_blow':"
            "200}");
        const QStringList plan{
            "gas 1", "wait preflow 200",
            "[laser_power 0, laser_enable 1, laser_duty_cycle 0.3, laser_frequency 0.4]",
            "20: laser_power 0.2, 40: laser_power 0.4, 50: laser_power 0.5, 50: wire_enable 1, pulses on, "
            "wait dwell 100"};
        QCOMPARE(toText(openingPlan(params, 20)), plan);
        // A ramp that is not longer than its step has no steps.
        QCOMPARE(toText(openingPlan(paramsOf("{'power':50,'increase_time':20}"), 20)).last(),
                 QString("20: laser_power 0.5, 20: wire_enable 1, pulses on, wait dwell 0"));
    }

    void closing_isWireAndRampThenLaserOffThenGas() {
        LaserParams params = paramsOf(
            "{'power':50,'decrease_time':50,'close_delay':70,'delay_after_blow':30,'move_wire_time':10,"
            "'stop_wire_time':15,'give_wire_time':25}");
        const QString ramp =
            "pulses off, wire_pullback 1, 10: wire_pullback 0 off, 15: wire_enable 1, 25: wire_enable 0 off, "
            "20: laser_power 0.3 ramp-down, 40: laser_power 0.1 ramp-down, 50: laser_power 0 off, "
            "50: laser_enable 0 off, 50: laser_duty_cycle 0 off, 50: laser_frequency 0 off";
        const auto plan = [&params](Closing closing) { return toText(closingPlan(params, 20, closing)); };
        QCOMPARE(plan(Closing::Awaited), QStringList({ramp + ", wait rampdown 50", "wait closedelay 70",
                                                      "30: gas 0 gas-off, wait postflow 30"}));
        QCOMPARE(plan(Closing::Unattended), QStringList({ramp, "150: gas 0 gas-off"}));
        QCOMPARE(plan(Closing::Paused),
                 QStringList({ramp, "50: gas 0 gas-off"}));  // not before the ramp's end
        params.postFlowMs = 60;
        QCOMPARE(plan(Closing::Paused).last(), QString("60: gas 0 gas-off"));
        params.refeedEndMs = 14;  // the wire would run for ever
        const QString noRefeed = plan(Closing::Paused).first();
        QVERIFY(!noRefeed.contains("wire_enable 1") && noRefeed.contains("14: wire_enable 0 off"));
    }

    void shutdown_endsWithTheGas() {
        LaserPhase off;
        off.now = shutdownSteps();
        QCOMPARE(toText({off}).first(),
                 QString("wire_pullback 0 off, wire_enable 0 off, laser_power 0 off, laser_enable 0 off, "
                         "laser_duty_cycle 0 off, laser_frequency 0 off, gas 0 gas-off"));
    }

    /// No dialog takes such times, but a file may hold them: they are cut to what fits, and their ramps
    /// go the whole length in few steps.
    void timesOfWeeks_neitherOverflowNorFillTheMemory() {
        const LaserParams params = paramsOf(
            "{'power':50,'increase_time':2000000000,'decrease_time':2000000000,'close_delay':2000000000,"
            "'delay_after_blow':2000000000}");
        QVERIFY(qint64(params.decreaseMs) + params.closeDelayMs + params.postFlowMs <=
                std::numeric_limits<int>::max());
        const LaserPhase up = openingPlan(params, 1).back();
        const LaserPhase down = closingPlan(params, 1, Closing::Awaited).front();
        for (const std::vector<TimedStep>& steps : {up.later, down.later}) {
            QVERIFY(steps.size() > 4000 && steps.size() < 6000);
            QCOMPARE(steps.back().ms, params.increaseMs);
        }
    }
};

LUMO_TEST(TestLaserPlan)
#include "test_laserplan.moc"
