#include "app/events/eventlist.h"
#include "app/events/eventpage.h"
#include "app/events/eventstore.h"
#include "app/noticebar.h"
#include "panelfixture.h"
#include "program/words.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTableView>

using app::Event;
using app::EventStore;

/// The event log: what gets into it, how it is kept, and its page.
class AppEvents : public test::PanelTest {
    Q_OBJECT

    static Event event(const QString& project, const QDateTime& at = {{2026, 1, 2}, {3, 4, 5}}) {
        Event event;
        event.at = at;
        event.project = project;
        return event;
    }
    static QStringList projects(EventStore* store, const app::EventFilter& filter = {}) {
        app::EventSearch search(store);
        QSignalSpy done(&search, &app::EventSearch::done);
        search.start(filter, app::EventPage::mostShown);
        sim::VirtualTime::instance()->advanceUntil([&] { return !done.isEmpty(); }, 10000);
        QStringList found;
        for (const Event& one : search.found()) {
            found << one.project;
        }
        return found;
    }
    /// The rows of the page, newest first: event, by, project, line, details.
    QStringList rows() const {
        const auto* const table = docks()->content("log")->findChild<QTableView*>("eventTable");
        QStringList rows;
        for (int row = 0; row < table->model()->rowCount(); ++row) {
            QStringList cells;
            for (int column = app::EventList::What; column < app::EventList::ColumnCount; ++column) {
                cells << table->model()->index(row, column).data().toString();
            }
            rows << cells.join('|');
        }
        return rows;
    }

private slots:
    void initTestCase() {
        docks()->open("log");
        openSample();
        robot()->setPower(true);
    }

    void panel_logsWhatHappensAndByWhom() {
        load("lumo.program", "[{'type':'delay','delaytime':9000}]");
        click("btnSave");
        test::closeBoxes();
        run(0, {{3000, [] { m("lumo.execute.trigger.pause")->trigger(); }}});
        setRunMode(prog::runmode::byStation);
        m("lumo")->append(nullptr, "signalbind_program");
        load("lumo.signalbind_program", "[{'type':'delay','delaytime':9000}]");
        run(0, {{3000, [this] { robot()->setEmergencyStop(true); }}});
        setRunMode(prog::runmode::byHand);
        robot()->setEmergencyStop(false);
        robot()->setPower(true);
        load("lumo.program", "[{'type':'moveL','speed':10,'point':{'trans':[5,0,0.3],'rot':[3.14,0,0]}}]");
        run(0, {});
        test::closeBoxes();
        robot()->setInput("LUMO_DI.#2", false);
        pass(1000);
        robot()->setInput("LUMO_DI.#2", true);
        pass(1000);
        const QStringList expected = {"Fault||seam||Water Cooling State: ready again",
                                      "Fault||seam||Water Cooling State: not ready",
                                      "Error|by hand|seam|1|Robot motion error -0x1",
                                      "Start|by hand|seam|1|",
                                      "Stop||seam||Emergency stop released",
                                      "Stop||seam||Emergency stop pressed",
                                      "Stop|station|seam|1|Drive power lost in a run",
                                      "Start|station|seam|1|",
                                      "Pause|by hand|seam|1|0:03",
                                      "Start|by hand|seam|1|",
                                      "Saved||seam||",
                                      "Opened||seam||"};
        QCOMPARE(rows().mid(0, expected.size()).join("\n"), expected.join("\n"));
        QVERIFY(rows().last().startsWith("Panel||||Panel started"));
    }

    void page_searchesAndExports() {
        find<QLineEdit>("edtEventText")->setText("water");
        find<QComboBox>("cmbEventKind")->setCurrentIndex(1 + int(Event::Kind::Fault));
        pass(1000);
        QVERIFY(rows().size() == 2 && textOf("lblEventCount") == "2 events");
        static_cast<app::EventPage*>(docks()->content("log"))->exportTo("log.csv");
        pass(1000);
        const QByteArrayList lines = test::contentOf("log.csv").split('\n');
        QVERIFY2(lines.size() == 4 && lines[2].contains(",fault,,seam,,unready,Water"), lines.value(2));
        find<QComboBox>("cmbEventKind")->setCurrentIndex(0);
        find<QLineEdit>("edtEventText")->clear();
        click("btnEventDayBack");
        click("btnEventDayBack");
        pass(1000);
        QCOMPARE(rows().size(), 0);
    }

    void store_keepsEventsAndIsBounded() {
        {
            EventStore store("e.sqlite");
            store.add(event("a"));
            pass(EventStore::delayMs);
            QVERIFY(store.waiting().isEmpty());
            store.add(event("b, \"c\"", {{2026, 1, 3}, {0, 0}}));
            QCOMPARE(projects(&store), QStringList({"b, \"c\"", "a"}));
        }
        EventStore store("e.sqlite");
        QCOMPARE(projects(&store), QStringList({"b, \"c\"", "a"}));
        QCOMPARE(projects(&store, {{}, {2026, 1, 2}, {}}), QStringList("a"));
        QCOMPARE(projects(&store, {{}, {}, "\"C\""}), QStringList("b, \"c\""));
        QCOMPARE(projects(&store, {Event::Kind::Stop, {}, {}}), QStringList());
        {
            QSqlDatabase other = QSqlDatabase::addDatabase("QSQLITE", "other");
            other.setDatabaseName("e.sqlite");
            QVERIFY(other.open());
            QSqlQuery("UPDATE sqlite_sequence SET seq = 100100", other);
        }
        QSqlDatabase::removeDatabase("other");
        for (int i = 0; i < 500; ++i) {
            store.add(event("new"));
        }
        QVERIFY(store.flush());
        const QStringList left = projects(&store);
        QVERIFY(left.size() == 500 && !left.contains("a"));
    }

    /// Locked by another program, deleted, read-only, damaged.
    void store_outlivesWhatHappensToItsFile() {
        EventStore store("f.sqlite");
        QSignalSpy told(&store, &EventStore::problem);
        store.add(event("1"));
        QVERIFY(store.flush());
        {
            QSqlDatabase other = QSqlDatabase::addDatabase("QSQLITE", "other");
            other.setDatabaseName("f.sqlite");
            QVERIFY(other.open() && QSqlQuery(other).exec("BEGIN IMMEDIATE"));
            store.add(event("2"));
            QVERIFY(!store.flush() && told.isEmpty());  // another panel may be writing just now
            pass(3LL * EventStore::retryMs);
            QCOMPARE(told.size(), 1);
            QCOMPARE(projects(&store), QStringList({"2", "1"}));
            other.close();
        }
        QSqlDatabase::removeDatabase("other");
        pass(EventStore::retryMs);
        QVERIFY(store.waiting().isEmpty());
        QVERIFY(QFile::remove("f.sqlite"));
        store.add(event("3"));
        QVERIFY(store.flush() && QFile::exists("f.sqlite"));
        QCOMPARE(projects(&store), QStringList("3"));

        test::writeFile("g.sqlite", QByteArray(5000, 'x'));
        EventStore damaged("g.sqlite");
        QSignalSpy said(&damaged, &EventStore::problem);
        damaged.add(event("4"));
        QVERIFY(damaged.flush() && said.size() == 1 && QFile::exists("g.sqlite.damaged"));
        QCOMPARE(projects(&damaged), QStringList("4"));

        EventStore nowhere("/proc/events/e.sqlite");
        QSignalSpy once(&nowhere, &EventStore::problem);
        for (int i = 0; i < EventStore::mostWaiting + 10; ++i) {
            nowhere.add(event(QString::number(i)));
        }
        pass(3LL * EventStore::retryMs);
        QVERIFY(once.size() == 1 && nowhere.waiting().size() == EventStore::mostWaiting);
    }
};

LUMO_TEST(AppEvents)
#include "test_events.moc"
