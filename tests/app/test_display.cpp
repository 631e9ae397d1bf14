#include "app/look.h"
#include "app/options.h"
#include "app/pendant/pendantwindow.h"
#include "app/shots/gallery.h"
#include "app/shots/stops.h"
#include "app/time/pacedtime.h"
#include "panelfixture.h"
#include "support/runnerfolder.h"

#include <qpa/qwindowsysteminterface.h>
#include <QImage>
#include <QWindow>

namespace {

/// An X server without a screen, for this process; its number is told by itself.
void onDisplay() {
    static QProcess server;
    server.start("Xvfb", {"-displayfd", "1", "-screen", "0", "1920x1080x24", "-nolisten", "tcp"});
    while (!server.canReadLine())
        if (!server.waitForReadyRead(600000))
            qFatal("no display: is Xvfb installed?");
    qputenv("DISPLAY", ':' + server.readLine().trimmed());
    qputenv("QT_QPA_PLATFORM", "xcb");
    // The rest of a desktop is not tried: its libraries leave memory behind.
    qputenv("QT_XCB_GL_INTEGRATION", "none");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    app::PacedTime::install()->setFactor(10);
}

}  // namespace

/// The panel on the display of a window system, worked by its mouse. Nothing here asks how long something takes.
class Display : public QObject {
    Q_OBJECT

    /// Waits minutes before it gives up.
    static bool waitFor(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 300000); }
    static void mouse(const QWidget* window, const char* name, const QStringList& action = {"click", "1"}) {
        const auto* const widget = test::child<QWidget>(window, name);
        const QPoint place = widget->mapToGlobal(widget->rect().center());
        const QStringList there = {"mousemove", QString::number(place.x()), QString::number(place.y())};
        QCOMPARE(QProcess::execute("xdotool", there + action), 0);
    }

private slots:
    void weldIsStartedByTheMouse_andTheWindowCloses() {
        mendo::LogHub::instance()->setConsole(false);
        test::copyHere(EXAMPLES "/lap_seam", {"lap_seam.json", "lumo_port.json", "lumo_param.json"});
        app::installLanguage("en");
        app::installLook();
        app::Panel panel;
        QString error;
        QVERIFY2(panel.open(LUMO_LIBRARY, &error), qPrintable(error));
        panel.window()->resize(1280, 800);
        panel.window()->show();
        panel.pendant()->showBeside(panel.window()->frameGeometry());
        QVERIFY(QTest::qWaitForWindowExposed(panel.window()) && QTest::qWaitForWindowExposed(panel.pendant()));
        QCOMPARE(panel.window()->pages()->currentWidget()->metaObject()->className(), "LumoWidget");
        QVERIFY(panel.openProject(QDir::current().absoluteFilePath("lap_seam.json")));
        QVERIFY(waitFor([] { return m("lumo.program")->cmobjCount() > 0; }));

        QVector<bool> laser;
        connect(panel.controller(), &sim::Controller::outputChanged, this, [&](const QString& name, const QVariant& on) {
            if (name == "LUMO_DO.#3")
                laser << on.toBool();
        });
        mouse(panel.pendant(), "power1");
        QVERIFY(waitFor([] { return m("kord.r.power")->getString() == "on"; }));
        mouse(panel.window(), "btnStart");
        QVERIFY(waitFor([&] { return laser.size() >= 2 && m("lumo.execute.state")->getString() == "idle"; }));
        QCOMPARE(laser, (QVector<bool>{true, false}));
        QCOMPARE(m("lumo.execute.line")->getInt(), m("lumo.program")->cmobjCount() - 1);

        mouse(panel.pendant(), "power0");
        QVERIFY(waitFor([] { return m("kord.r.power")->getString() == "off"; }));
        mouse(panel.window(), "btnStart");
        QVERIFY(waitFor([] { return QApplication::activeModalWidget(); }));
        mouse(panel.pendant(), "btnStop");  // in reach under the message
        QVERIFY(waitFor([&] { return panel.controller()->emergencyStop(); }));
        test::closeBoxes();

        QTimer::singleShot(0, this, [&panel] {
            QWindowSystemInterface::handleCloseEvent(panel.window()->windowHandle());
        });
        QCOMPARE(QApplication::exec(), 0);
    }

    void picturesShowEveryPage() {
        const Result result = runIn(".", {"--screenshots", "shots"}, LUMO_PANEL);
        QVERIFY2(result.status == 0, result.err);
        const QFileInfoList files = QDir("shots").entryInfoList(QDir::Files);
        QSet<QByteArray> different;
        for (const QFileInfo& file : files) {
            const QString size = file.fileName().section('-', 1, 1);
            const QImage picture(file.filePath());
            QCOMPARE(QString("%1x%2").arg(picture.width()).arg(picture.height()), size);
            different << test::contentOf(file.filePath());
        }
        const auto kinds = app::languages().size() * app::pictureSizes().size();
        QCOMPARE(size_t(files.size()), kinds * app::stops().size());
        // The panel after its start is the picture of its robot too; all others differ.
        QVERIFY(size_t(different.size()) >= files.size() - kinds);
    }
};

LUMO_TEST_ON(Display, onDisplay)
#include "test_display.moc"
