#include "app/options.h"
#include "app/pendant/pendantwindow.h"
#include "app/shots/gallery.h"
#include "app/shots/stops.h"
#include "app/time/pacedtime.h"
#include "panelfixture.h"
#include "support/runnerfolder.h"

#include <qpa/qwindowsysteminterface.h>
#include <QImage>

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
    app::PacedTime::install()->setFactor(10);
}

/// Waits minutes before it gives up.
bool waitFor(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 300000);
}

void click(const QWidget* window, const char* name) {
    const auto* const widget = test::child<QWidget>(window, name);
    const QPoint at = widget->mapToGlobal(widget->rect().center());
    const QStringList there = {"mousemove", QString::number(at.x()), QString::number(at.y())};
    QCOMPARE(QProcess::execute("xdotool", there + QStringList{"click", "1"}), 0);
}

}  // namespace

/// The panel on the display of a window system, worked by its mouse. Nothing asks how long something takes.
class Display : public QObject {
    Q_OBJECT
private slots:
    void weldIsStartedByTheMouse_andTheWindowCloses() {
        mendo::LogHub::instance()->setConsole(false);
        test::copyHere(EXAMPLES "/lap_seam", {"lap_seam.json", "lumo_port.json", "lumo_param.json"});
        app::Panel panel;
        QString error;
        QVERIFY2(panel.open(LUMO_LIBRARY, &error), qPrintable(error));
        panel.window()->resize(1280, 800);
        panel.window()->show();
        panel.pendant()->showBeside(panel.window()->frameGeometry());
        QVERIFY(waitFor([&] { return panel.window()->windowHandle()->isExposed(); }));
        QCOMPARE(panel.window()->pages()->currentWidget()->metaObject()->className(), "LumoWidget");
        QVERIFY(panel.openProject(QDir::current().absoluteFilePath("lap_seam.json")));
        QVERIFY(waitFor([] { return m("lumo.program")->cmobjCount() > 0; }));

        int switchings = 0;
        connect(panel.controller(), &sim::Controller::outputChanged, this,
                [&switchings](const QString& name) { switchings += name == "LUMO_DO.#3" ? 1 : 0; });
        click(panel.pendant(), "power1");
        QVERIFY(waitFor([] { return m("kord.r.power")->getString() == "on"; }));
        click(panel.window(), "btnStart");
        QVERIFY(waitFor([&] { return switchings > 0 && m("lumo.execute.state")->getString() == "idle"; }));
        QCOMPARE(switchings, 2);
        QCOMPARE(m("lumo.execute.line")->getInt(), m("lumo.program")->cmobjCount() - 1);
        QWindow* const handle = panel.window()->windowHandle();
        QTimer::singleShot(0, this, [handle] { QWindowSystemInterface::handleCloseEvent(handle); });
        QCOMPARE(QApplication::exec(), 0);
    }

    void picturesShowEveryPage() {
        const Result result = runIn(".", {"--screenshots", "shots"}, LUMO_PANEL);
        QVERIFY2(result.status == 0, result.err);
        const QFileInfoList files = QDir("shots").entryInfoList(QDir::Files);
        QSet<QByteArray> different;
        for (const QFileInfo& file : files) {
            const QImage picture(file.filePath());
            const QString size = QString("-%1x%2-").arg(picture.width()).arg(picture.height());
            QVERIFY2(file.fileName().contains(size), qPrintable(file.fileName() + size));
            different << test::contentOf(file.filePath());
        }
        const auto kinds = app::languages().size() * int(app::pictureSizes().size());
        QCOMPARE(files.size(), kinds * int(app::stops().size()));
        // The panel after its start is the picture of its robot too; all others differ.
        QVERIFY(different.size() >= files.size() - kinds);
    }
};

LUMO_TEST_ON(Display, onDisplay)
#include "test_display.moc"
