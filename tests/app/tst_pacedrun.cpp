#include "app/language.h"
#include "app/panel.h"
#include "app/time/pacedtime.h"
#include "kord/kordservice.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"
#include "simulator/controller.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

namespace {

app::PacedTime* paced = nullptr;

qint64 nowMs() {
    return mendo::Clock::current().elapsedMs();
}

/// What the runner's trace says of motions and of what is written to the equipment, with the times.
QStringList traceOf(const QString& project) {
    QProcess runner;
    runner.start(QStringLiteral(LUMO_RUN),
                 {project, QStringLiteral("--trace"), QStringLiteral("-"), QStringLiteral("--quiet")});
    runner.waitForFinished(-1);
    QStringList log;
    for (const QByteArray& text : runner.readAllStandardOutput().split('\n')) {
        const QJsonObject line = QJsonDocument::fromJson(text).object();
        const QString kind = line[QStringLiteral("kind")].toString();
        const QString name = line[QStringLiteral("name")].toString();
        const QString time = QString::number(line[QStringLiteral("t")].toInt());
        if (kind == QLatin1String("result") ||
            (kind == QLatin1String("command") && name.startsWith(QLatin1String("register."))))
            log << QStringLiteral("%1 %2").arg(time, name);
    }
    return log;
}

}  // namespace

/// A weld in the panel at several speeds: it is the one that virtual time gives, to the millisecond.
class AppPacedRun : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void weld_keepsItsProportions_data();
    void weld_keepsItsProportions();
    void cleanupTestCase() { panel_.reset(); }

private:
    void waitUntil(const std::function<bool()>& done);
    void press(const char* name) {
        auto* button = panel_->window()->findChild<QAbstractButton*>(QLatin1String(name));
        QTest::mouseClick(button, Qt::LeftButton);
    }

    QTemporaryDir folder_;
    QString project_;
    QStringList expected_;
    std::unique_ptr<app::Panel> panel_;
};

void AppPacedRun::waitUntil(const std::function<bool()>& done) {
    QEventLoop loop;
    QTimer poll;
    connect(&poll, &QTimer::timeout, &loop, [&] {
        if (done())
            loop.quit();
    });
    poll.start(100);
    QTimer::singleShot(600000, &loop, &QEventLoop::quit);
    loop.exec();
    QVERIFY(done());
}

void AppPacedRun::initTestCase() {
    mendo::LogHub::instance()->setConsole(false);
    const QDir example(QStringLiteral(LUMO_EXAMPLES "/lap_seam"));
    expected_ = traceOf(example.filePath(QStringLiteral("lap_seam.json")));
    QVERIFY(expected_.size() > 10);
    QVERIFY(QDir::setCurrent(folder_.path()));
    for (const char* name : {"lumo_port.json", "lumo_param.json", "lap_seam.json"}) {
        QVERIFY(QFile::copy(example.filePath(QLatin1String(name)), QLatin1String(name)));
        QFile::setPermissions(QLatin1String(name), QFile::ReadOwner | QFile::WriteOwner);
    }
    app::installLanguage(QStringLiteral("en"));
    panel_ = std::make_unique<app::Panel>();
    connect(panel_.get(), &app::Panel::speedChosen, paced, &app::PacedTime::setFactor);
    QString error;
    QVERIFY2(panel_->open(QStringLiteral(LUMO_LIBRARY), &error), qPrintable(error));
    panel_->window()->resize(1280, 800);
    panel_->window()->show();
    QVERIFY(panel_->openProject(QDir::current().absoluteFilePath(QStringLiteral("lap_seam.json"))));
    waitUntil([] { return m(QStringLiteral("lumo.program"))->cmobjCount() == 8; });
    panel_->controller()->setPower(true);
}

void AppPacedRun::weld_keepsItsProportions_data() {
    QTest::addColumn<QString>("button");
    QTest::addColumn<double>("factor");
    QTest::newRow("10x") << "speed3" << 10.0;
    QTest::newRow("as fast as it goes") << "" << 1e6;
}

void AppPacedRun::weld_keepsItsProportions() {
    QFETCH(QString, button);
    QFETCH(double, factor);
    if (button.isEmpty())
        paced->setFactor(factor);
    else
        press(button.toLatin1().constData());
    QCOMPARE(paced->factor(), factor);
    press("btnReset");
    QStringList log;
    qint64 startMs = nowMs();
    const auto note = [&](const QString& name) {
        log << QStringLiteral("%1 %2").arg(nowMs() - startMs).arg(name);
    };
    QObject scope;
    connect(panel_->controller(), &sim::Controller::result, &scope, [&](const QString& name) { note(name); });
    connect(kordservice(), &KordService::issued, &scope, [&](const KordCall& call) {
        if (call.name.startsWith(QLatin1String("register.")))
            note(call.name);
    });
    connect(m(QStringLiteral("lumo.execute.state")), &mendo::ModuleObject::changed, &scope,
            [&](const QVariant& state) {
                if (state == QLatin1String("busy"))
                    startMs = nowMs();
            });
    QTimer::singleShot(0, &scope, [this] { press("btnStart"); });
    waitUntil([this, &log] { return log.size() >= expected_.size() && panel_->controller()->standsStill(); });
    QCOMPARE(log, expected_);
}

int main(int argc, char** argv) {
    const QTemporaryDir configuration;
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(configuration.path()));
    paced = app::PacedTime::install();
    QApplication application(argc, argv);
    AppPacedRun test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_pacedrun.moc"
