#include "app/scope/scopeexport.h"
#include "app/scope/timewindow.h"
#include "kord/kordservice.h"
#include "mendo/modulemanager.h"
#include "recording/treefollower.h"
#include "simulator/cell.h"
#include "simulator/controller.h"
#include "simulator/virtualtime.h"

#include <QApplication>
#include <QBuffer>
#include <QtTest>

using app::SignalRecord;

/// What the scope keeps, shows and writes, without a window.
class AppScope : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase();
    void values_areKnownAtAnyTime_data();
    void values_areKnownAtAnyTime();
    void old_isForgotten();
    void tooMuch_isForgotten();
    void window_followsUntilItIsHeld();
    void stretching_keepsWhatIsFixed_data();
    void stretching_keepsWhatIsFixed();
    void revealing_scrollsOnlyWhereItMust_data();
    void revealing_scrollsOnlyWhereItMust();
    void lanes_areTheEnabledPortsAndWhatChanged();
    void csv_hasARowForEachTime();
    void dump_beginsAtItsSection();
    void fullDisk_isTold();

private:
    static void pass(qint64 ms) { sim::VirtualTime::instance()->advance(ms); }
    void write(const char* name, int value, int bias = 0) {
        kordservice()->execCommand(this, QStringLiteral("register.write"),
                                   QVariantHash{{QStringLiteral("name"), QLatin1String(name)},
                                                {QStringLiteral("value"), value},
                                                {QStringLiteral("bias"), bias}});
    }

    std::unique_ptr<sim::Controller> controller_;
    std::unique_ptr<sim::Cell> cell_;
    std::unique_ptr<rec::TreeFollower> follower_;
    std::unique_ptr<app::SignalRecorder> recorder_;
};

namespace {

/// A device that takes no more than so many bytes.
class FullDisk : public QIODevice {
public:
    explicit FullDisk(qint64 room) : room_(room) {
        open(WriteOnly | Unbuffered);
        setErrorString(QStringLiteral("full"));
    }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char*, qint64 size) override {
        room_ -= size;
        return room_ < 0 ? -1 : size;
    }

private:
    qint64 room_;
};

}  // namespace

void AppScope::initTestCase() {
    controller_ = std::make_unique<sim::Controller>(kordservice(), sim::Controller::Options());
    sim::Wiring wiring;
    wiring.laserEnable = QStringLiteral("LUMO_DO.#3");
    wiring.laserPower = QStringLiteral("LUMO_AO_1");
    cell_ = std::make_unique<sim::Cell>(controller_.get(), wiring);
    follower_ = std::make_unique<rec::TreeFollower>();
    recorder_ = std::make_unique<app::SignalRecorder>(controller_.get(), cell_.get(), follower_.get());
    m()->root()->set(this, QStringLiteral("lumo.port"), QVariant());
    m(QStringLiteral("lumo.port"))
        ->loadJson(this, QJsonDocument::fromJson(R"([{"name":"LUMO_DI.#0","tag":"Laser \"ok\"","enable":true},
            {"name":"LUMO_DO.#3","tag":"Laser","enable":false},
            {"name":"LUMO_AO_1","tag":"Power","enable":true}, {"name":"NOWHERE","tag":"?","enable":true}])")
                             .array());
}

void AppScope::cleanupTestCase() {
    recorder_.reset();
    follower_.reset();
    cell_.reset();
    controller_.reset();
}

void AppScope::values_areKnownAtAnyTime_data() {
    QTest::addColumn<qint64>("ms");
    QTest::addColumn<double>("before");
    QTest::addColumn<double>("at");
    QTest::newRow("earlier than all") << qint64(5) << 1.0 << 1.0;
    QTest::newRow("at the first change") << qint64(20) << 1.0 << 3.0;
    QTest::newRow("between") << qint64(25) << 3.0 << 3.0;
    QTest::newRow("at the last change") << qint64(30) << 3.0 << 4.0;
    QTest::newRow("later") << qint64(99) << 4.0 << 4.0;
}

void AppScope::values_areKnownAtAnyTime() {
    QFETCH(qint64, ms);
    SignalRecord record({1, 7}, 10);
    record.add({20, 0, 2});
    record.add({20, 0, 3});
    record.add({22, 1, 8});
    record.add({30, 0, 4});
    QTEST(record.before(ms)[0], "before");
    QTEST(record.at(ms)[0], "at");
}

void AppScope::old_isForgotten() {
    SignalRecord record({0, 0}, 0);
    record.add({1000, 0, 1});
    record.add({2000, 1, 1});
    record.add({1500 + SignalRecord::kKeptMs, 0, 2});
    QCOMPARE(record.changes().size(), size_t(2));
    QCOMPARE(record.beginMs(), qint64(1500));
    QCOMPARE(record.before(0), (std::vector<double>{1, 0}));
}

void AppScope::tooMuch_isForgotten() {
    SignalRecord record({0}, 0);
    for (int i = 0; i <= SignalRecord::kMostChanges; ++i)
        record.add({i / 1000, 0, double(i)});
    QCOMPARE(int(record.changes().size()), SignalRecord::kMostChanges);
    QCOMPARE(record.before(0)[0], 0.0);
    QCOMPARE(record.changes().front().value, 1.0);
    record.add({1000, 0, -1});
    QCOMPARE(record.before(0)[0], 1.0);
}

void AppScope::window_followsUntilItIsHeld() {
    app::TimeWindow window;
    QCOMPARE(window.span(100000).toMs, qint64(100000));
    window.hold(100000);
    QCOMPARE(window.span(150000).toMs, qint64(100000));
    window.scrollTo(20000);
    QCOMPARE(window.span(150000).fromMs, qint64(20000));
    window.release();
    QCOMPARE(window.span(150000).toMs, qint64(150000));
}

void AppScope::stretching_keepsWhatIsFixed_data() {
    QTest::addColumn<double>("factor");
    QTest::addColumn<qint64>("fixed");
    QTest::addColumn<qint64>("from");
    QTest::addColumn<qint64>("to");
    QTest::newRow("shorter about the cursor") << 0.5 << qint64(70000) << qint64(55000) << qint64(85000);
    QTest::newRow("longer") << 2.0 << qint64(100000) << qint64(-20000) << qint64(100000);
    QTest::newRow("not without end") << 1e-9 << qint64(70000) << qint64(69950) << qint64(70050);
    QTest::newRow("not beyond the record")
        << 1e9 << qint64(100000) << 100000 - SignalRecord::kKeptMs << qint64(100000);
}

void AppScope::stretching_keepsWhatIsFixed() {
    QFETCH(double, factor);
    QFETCH(qint64, fixed);
    app::TimeWindow window;
    window.hold(100000);
    window.stretch(factor, fixed);
    QTEST(window.span(0).fromMs, "from");
    QTEST(window.span(0).toMs, "to");
}

void AppScope::revealing_scrollsOnlyWhereItMust_data() {
    QTest::addColumn<qint64>("ms");
    QTest::addColumn<qint64>("from");
    QTest::newRow("in view") << qint64(90000) << qint64(40000);
    QTest::newRow("before") << qint64(30000) << qint64(0);
    QTest::newRow("after") << qint64(130000) << qint64(100000);
}

void AppScope::revealing_scrollsOnlyWhereItMust() {
    QFETCH(qint64, ms);
    app::TimeWindow window;
    window.reveal(ms, 100000);
    QVERIFY(window.isHeld());
    QTEST(window.span(200000).fromMs, "from");
}

void AppScope::lanes_areTheEnabledPortsAndWhatChanged() {
    const auto labels = [this] {
        QStringList names;
        for (const app::Lane& lane : app::lanesOf(recorder_->cellSignals(), recorder_->record()))
            names << lane.label;
        return names.mid(2);  // behind run and laser
    };
    QCOMPARE(labels(), (QStringList{"Laser \"ok\"", "Power"}));
    controller_->setInput(QStringLiteral("DI5"), true);
    write("LUMO_DO", 1, 7);
    QCOMPARE(labels(), (QStringList{"Laser \"ok\"", "Power", "DI5", "LUMO_DO.#7"}));
}

void AppScope::csv_hasARowForEachTime() {
    pass(100);
    const qint64 begin = app::SignalRecorder::nowMs();
    controller_->setInput(QStringLiteral("LUMO_DI.#0"), false);
    pass(20);
    write("LUMO_AO_1", 16384);
    controller_->setInput(QStringLiteral("LUMO_DI.#0"), true);
    pass(10);
    controller_->setInput(QStringLiteral("DI6"), true);  // not among the lanes
    pass(10);
    write("LUMO_AO_1", 0);
    auto lanes = app::lanesOf(recorder_->cellSignals(), recorder_->record());
    lanes = {lanes[2], lanes[3]};
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    QString error;
    QVERIFY(app::writeCsv(&out, *recorder_, lanes, {begin, app::SignalRecorder::nowMs()}, &error));
    QCOMPARE(QString::fromUtf8(out.data()),
             QStringLiteral("time_s,\"LUMO_DI.#0 Laser \"\"ok\"\"\",\"LUMO_AO_1 Power\"\n"
                            "0.000,0,0\n0.020,1,16384\n0.040,1,0\n"));
}

void AppScope::dump_beginsAtItsSection() {
    write("LUMO_AO_1", 1000);
    pass(500);
    const qint64 begin = app::SignalRecorder::nowMs();
    pass(30);
    write("LUMO_DO", 1, 3);
    pass(70);
    write("LUMO_DO", 0, 3);
    pass(30);
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    QString error;
    QVERIFY(app::writeVcd(&out, *recorder_, {begin, begin + 50}, &error));
    const QString text = QString::fromUtf8(out.data());
    const auto codeOf = [&text](const QString& scope, const QString& name) {
        const QString variables = text.mid(text.indexOf(QStringLiteral("$scope module %1 ").arg(scope)));
        return QRegularExpression(QStringLiteral("(\\S+) %1 ").arg(name)).match(variables).captured(1);
    };
    const QString body = text.mid(text.indexOf(QLatin1String("#0\n")));
    const QString power =
        QStringLiteral("b1111101000 ") + codeOf(QStringLiteral("LUMO_AO"), QStringLiteral("LUMO_AO_1"));
    QVERIFY2(body.contains(power), qPrintable(body));
    const QString bit = codeOf(QStringLiteral("LUMO_DO"), QStringLiteral("bit3"));
    const QString emission = codeOf(QStringLiteral("run"), QStringLiteral("laser_emission"));
    QVERIFY2(body.contains(QLatin1String("\n#30\n")) && body.contains(QLatin1String("1") + bit) &&
                 body.contains(QLatin1String("1") + emission),
             qPrintable(body));
    QVERIFY2(body.endsWith(QLatin1String("\n#50\n")), qPrintable(body));
}

void AppScope::fullDisk_isTold() {
    QString error;
    FullDisk disk(2000);
    QVERIFY(!app::writeVcd(&disk, *recorder_, recorder_->all(), &error));
    QCOMPARE(error, QStringLiteral("full"));
    error.clear();
    FullDisk small(10);
    QVERIFY(!app::writeCsv(&small, *recorder_, {}, recorder_->all(), &error));
    QCOMPARE(error, QStringLiteral("full"));
}

int main(int argc, char** argv) {
    sim::VirtualTime::install();
    QApplication application(argc, argv);
    AppScope test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_scope.moc"
