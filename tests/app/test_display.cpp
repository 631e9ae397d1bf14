#include "panelfixture.h"
#include "simulator/time/pacedtime.h"

#include <qpa/qwindowsysteminterface.h>
#include <QProcess>

namespace {

constexpr int giveUpMs = 300000;

/// Starts an X server without a screen; it prints its display number.
void onDisplay() {
    static QProcess server;
    server.start("Xvfb", {"-displayfd", "1", "-screen", "0", "1920x1080x24", "-nolisten", "tcp"});
    while (!server.canReadLine()) {
        if (!server.waitForReadyRead(giveUpMs)) {
            qFatal("no display: is Xvfb installed?");
        }
    }
    qputenv("DISPLAY", ':' + server.readLine().trimmed());
    qputenv("QT_QPA_PLATFORM", "xcb");
    sim::PacedTime::install()->setFactor(10);
}

void click(const QWidget* window, const char* name) {
    const auto* const widget = test::child<QWidget>(window, name);
    const QPoint at = widget->mapToGlobal(widget->rect().center());
    const QStringList there = {"mousemove", QString::number(at.x()), QString::number(at.y())};
    QCOMPARE(QProcess::execute("xdotool", there + QStringList{"click", "1"}), 0);
}

}  // namespace

/// The panel on an X server, operated with its mouse. No test depends on real time.
class Display : public QObject {
    Q_OBJECT
private slots:
    void startByMouse_weldsOnce_andTheWindowCloses() {
        mendo::LogHub::instance()->setConsole(false);
        test::copyHere(EXAMPLES "/lap_seam", {"lap_seam.json", "lumo_port.json", "lumo_param.json"});
        app::Panel panel;
        QString error;
        QVERIFY2(panel.open(LUMO_LIBRARY, &error), qPrintable(error));
        panel.window()->resize(1280, 800);
        panel.window()->show();
        QWindow* const handle = panel.window()->windowHandle();
        QTRY_VERIFY_WITH_TIMEOUT(handle->isExposed(), giveUpMs);
        QVERIFY(panel.openProject(QDir::current().absoluteFilePath("lap_seam.json")));
        QTRY_VERIFY_WITH_TIMEOUT(m("lumo.program")->cmobjCount() > 0, giveUpMs);

        int switchings = 0;
        connect(panel.controller(), &sim::Controller::outputChanged, this,
                [&switchings](const QString& name) { switchings += name == "LUMO_DO.#3" ? 1 : 0; });
        click(panel.window(), "power1");
        QTRY_COMPARE_WITH_TIMEOUT(m("kord.r.power")->getString(), "on", giveUpMs);
        click(panel.window(), "btnStart");
        QTRY_VERIFY_WITH_TIMEOUT(switchings > 0 && m("lumo.execute.state")->getString() == "idle", giveUpMs);
        QCOMPARE(switchings, 2);
        QCOMPARE(m("lumo.execute.line")->getInt(), m("lumo.program")->cmobjCount() - 1);

        // Stop is pressed while a dialog blocks the window; the run holds up what waits here.
        QDialog dialog(panel.window()->pages()->currentWidget());
        dialog.resize(200, 100);
        m("lumo.current.line")->setValue(nullptr, 0);
        bool pressed = false;
        QTimer::singleShot(2000, this, [&dialog] { dialog.open(); });
        QTimer::singleShot(4000, this, [&panel, &pressed] {
            pressed = m("lumo.execute.state")->getString() == "busy";
            click(panel.window(), "btnRunStop");
        });
        m("lumo.execute.trigger.start")->setValue(nullptr, 0);
        QVERIFY(pressed && dialog.isVisible());
        QVERIFY(m("lumo.execute.line")->getInt() < m("lumo.program")->cmobjCount() - 1);
        dialog.close();
        QTimer::singleShot(0, this, [handle] { QWindowSystemInterface::handleCloseEvent(handle); });
        QCOMPARE(QApplication::exec(), 0);
    }
};

LUMO_TEST_ON(Display, onDisplay)
#include "test_display.moc"
