#include "app/backup/support.h"
#include "app/panelfixture.h"
#include "app/roles/rolekeeper.h"
#include "app/sheet/sheet.h"
#include "app/telemetry/telemetrytools.h"
#include "broker.h"

#include <QFileInfo>

using test::Broker;
using test::Process;
using test::Subscriber;

/// The panel and its page of the telemetry.
class TelemetryPanel : public test::PanelTest {
    Q_OBJECT

    const QString file_ = telemetry::Settings::defaultFile();

    void open() const {
        pass(0);
        click("btnMenu");
        click("btnTelemetrySettings");
        pass(0);
    }
    void type(const QString& field, const QString& text) const { find<QLineEdit>(field)->setText(text); }
    void answers(const QString& text) const {
        click("btnTelemetryStore");
        QCOMPARE(textOf("lblTelemetryAnswer"), text);
    }
    static int sockets() {
        int count = 0;
        for (const QFileInfo& file : QDir("/proc/self/fd").entryInfoList(QDir::Files | QDir::System)) {
            count += QFile::symLinkTarget(file.filePath()).contains("socket:") ? 1 : 0;
        }
        return count;
    }
    static int threads() {
        return QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
    }

private slots:
    void initTestCase() {
        if (Broker::program().isEmpty()) {
            QSKIP("mosquitto is not installed");
        }
        robot()->setInput("DI3", true);
        openSample();
    }

    void byDefault_nothingIsOpened() {
        const int before = threads();
        robot()->setPower(true);
        run(0, {});
        waitUntilIdle();
        robot()->setPower(false);
        QVERIFY(!QFile::exists(file_));
        QCOMPARE(sockets(), 0);
        QCOMPARE(threads(), before);
    }

    void page_switchesItOn_andARunIsTold() {
        Broker broker;
        QVERIFY(broker.start());
        open();
        QCOMPARE(textOf("lblTelemetryState"), "Off");
        click("btnTelemetry1");
        answers("Enter the broker's address");
        type("edtTelemetryHost", "127.0.0.1");
        type("edtTelemetryPort", QString::number(broker.port()));
        answers("Enter the cell's name, without / + #");
        type("edtTelemetryCell", "cell-3");
        type("edtTelemetryPassword", "s3cret");
        answers("There is a password and no user");
        type("edtTelemetryUser", "me");
        click("btnTelemetryStore");
        QVERIFY(test::waitUntil([this] { return textOf("lblTelemetryState").startsWith("Connected"); },
                                [] { pass(500); }));
        Subscriber subscriber(broker.port());
        QVERIFY(subscriber.sees("online", "true"));
        robot()->setPower(true);
        bool seen = false;
        const auto lit = connect(
            robot(), &sim::Controller::outputChanged, this, [&](const QString& name, const QVariant& on) {
                if (name == "LUMO_DO.#3" && on.toBool()) {
                    QTimer::singleShot(100, this, [&] { seen = subscriber.sees("state", "\"laser_on\""); });
                }
            });
        run(0, {});
        waitUntilIdle();
        disconnect(lit);
        QVERIFY(seen);
        QVERIFY(subscriber.sees("run", "\"over\":true", [] { pass(100); }));
        QVERIFY(subscriber.sees("seams", "welded_mm") && subscriber.sees("counters", "\"made\":2"));
        robot()->setEmergencyStop(true);
        pass(100);
        QVERIFY(subscriber.sees("state", "emergency_stop") &&
                subscriber.sees("faults", "\"emergency_stop\":true"));
        robot()->setEmergencyStop(false);
        robot()->setInput("LUMO_DI.#2", false);
        pass(100);
        QVERIFY(subscriber.sees("faults", "\"cooling_state\"") && subscriber.sees("state", "\"fault\""));
        robot()->setInput("LUMO_DI.#2", true);
        broker.end();
        QVERIFY(test::waitUntil([this] { return textOf("lblTelemetryState").startsWith("Not reachable"); },
                                [] { pass(500); }));
    }

    /// Nor does it go to another broker, or into an archive.
    void password_isNotShown() {
        open();
        QVERIFY(find<QLineEdit>("edtTelemetryPassword")->text().isEmpty());
        type("edtTelemetryHost", "other.example.org");
        answers("The connection has changed: enter the password again");
        QVERIFY(test::contentOf(file_).contains("s3cret") && test::contentOf(file_).contains("127.0.0.1"));
        QVERIFY((QFileInfo(file_).permissions() & 0x77) == 0);
        app::SupportFacts facts;
        facts.folder = QDir::currentPath();
        facts.preferences = file_ + "/../lumo-panel.json";
        facts.telemetry = app::TelemetryTools::shownSettings();
        QByteArray telemetry;
        for (const app::ArchiveFile& file : app::supportFiles(facts)) {
            QVERIFY2(!file.content.contains("s3cret"), qPrintable(file.name));
            telemetry += file.name == "settings/telemetry.json" ? file.content : QByteArray();
        }
        QVERIFY(telemetry.contains("127.0.0.1") && telemetry.contains("(set)"));
    }

    void page_isTheIntegrators() {
        auto* const keeper = panel_->findChild<app::RoleKeeper*>();
        keeper->setCode("1234");
        pass(1000);
        open();
        const QPointer<app::Sheet> sheet = find<app::Sheet>("telemetrySheet");
        QVERIFY(sheet->isVisible());
        keeper->leave();
        pass(0);
        QVERIFY(!sheet || !sheet->isVisible());
        click("btnMenu");
        click("btnTelemetrySettings");
        QVERIFY(find<app::Sheet>("codeSheet")->isVisible());
    }

    /// In processes of their own: killed, ended, and ended while the broker hangs.
    void end_isTold() {
        Broker broker;
        QVERIFY(broker.start());
        mendo::FileProblem problem;
        telemetry::Settings settings;
        settings.isOn = true;
        settings.host = "127.0.0.1";
        settings.port = broker.port();
        settings.cell = "cell-3";
        QVERIFY(settings.write(file_, &problem));
        QDir().mkdir("other");
        for (const int signal : {SIGKILL, SIGTERM}) {
            Process panel;
            panel.start(LUMO_PANEL, {"--settings", "other"});
            Subscriber subscriber(broker.port());
            QVERIFY(subscriber.sees("online", "true") && subscriber.sees("state", "drives_off"));
            panel.finish(signal);
            QVERIFY(test::waitUntil([&] { return subscriber.last("online") == "false"; }, [] {}));
        }
        Process panel;
        panel.start(LUMO_PANEL, {"--settings", "other"});
        Subscriber subscriber(broker.port());
        QVERIFY(subscriber.sees("online", "true"));
        broker.process()->signal(SIGSTOP);
        QCOMPARE(panel.finish(SIGTERM), 0);
    }
};

LUMO_TEST(TelemetryPanel)
#include "test_panel.moc"
