#include "app/appearance.h"
#include "app/events/flightkeeper.h"
#include "app/panel.h"
#include "flight/ringreader.h"
#include "flight/runindex.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"
#include "program/words.h"
#include "simulator/controller.h"
#include "simulator/time/pacedtime.h"
#include "support/runnerfolder.h"
#include "support/suite.h"

#include <QTimer>

#include <functional>

namespace {

sim::PacedTime* paced = nullptr;

void onPacedTime() {
    paced = sim::PacedTime::install();
    paced->setFactor(10);
}

bool isIdle() {
    return m(prog::key::executeState)->getString() == prog::word::idle;
}

/// Writes the start trigger as the page does; returns when the run is over.
void start(const app::Panel& panel, QObject* hand) {
    *panel.packageFlags().runMode = prog::runmode::byHand;
    m(prog::key::triggerStart)->setValue(hand, m(prog::key::currentLine)->getInt());
}

/// Does something once, some time after it has become possible.
void when(QObject* owner, const std::function<bool()>& isPossible, int afterMs,
          const std::function<void()>& act) {
    auto* const poll = new QTimer(owner);
    QObject::connect(poll, &QTimer::timeout, owner, [=] {
        if (isPossible()) {
            poll->stop();
            QTimer::singleShot(afterMs, owner, act);
        }
    });
    poll->start(20);
}

}  // namespace

/// The panel's own recording, on the panel's clock.
class TestPaced : public QObject {
    Q_OBJECT

private slots:
    void incidentOfThePanelIsReplayed() {
        mendo::LogHub::instance()->setConsole(false);
        for (const char* name : {"lumo_port.json", "lumo_param.json", "lap_seam.json"}) {
            QFile::copy(QStringLiteral(EXAMPLES "/lap_seam/") + name, name);
        }
        app::installLanguage("en");
        {
            app::Panel panel;
            QString error;
            QVERIFY2(panel.open(LUMO_LIBRARY, &error), qPrintable(error));
            panel.window()->show();
            panel.setFlightSize(4);
            panel.complete();
            panel.controller()->setPower(true);
            QJsonArray program = test::json(test::contentOf("lap_seam.json")).toArray();
            m(prog::key::weldSwitch)->setValue(this, true);
            m(prog::key::toolset)->loadJson(this, program.takeAt(program.size() - 1));
            m(prog::key::program)->loadJson(this, program);
            const auto isWelding = [] { return m(prog::key::weldOpen)->getBool(); };
            when(this, isWelding, 700, [] { m(prog::key::triggerPause)->trigger(); });
            start(panel, this);
            QTRY_VERIFY_WITH_TIMEOUT(isIdle() && panel.controller()->standsStill(), 120000);
            when(
                this, [] { return !isIdle(); }, 400,
                [&panel] { panel.controller()->setEmergencyStop(true); });
            start(panel, this);
            QTRY_VERIFY_WITH_TIMEOUT(isIdle() && panel.controller()->standsStill(), 120000);
        }
        QString error;
        const auto recording = flight::readRing(app::FlightKeeper::defaultFile(), &error);
        QVERIFY2(recording, qPrintable(error));
        const auto runs = flight::runsOf(*recording);
        QCOMPARE(runs.size(), std::size_t(2));
        QCOMPARE(runs[0].reason, QString("paused"));
        QCOMPARE(runs[1].reason, QString("power"));
        for (const char* run : {"1", "2"}) {
            const Result repeated = runIn(".", {"--replay", app::FlightKeeper::defaultFile(), "--run", run});
            QVERIFY2(repeated.status == 0, (repeated.out + repeated.err).constData());
        }
    }
};

LUMO_TEST_ON(TestPaced, onPacedTime)
#include "test_paced.moc"
