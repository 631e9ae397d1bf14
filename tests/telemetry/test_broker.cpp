#include "broker.h"
#include "support/suite.h"
#include "telemetry/client.h"

using namespace telemetry;
using test::Broker;
using test::Process;
using test::Subscriber;

/// A broker that is there, hangs, restarts and refuses.
class TelemetryBroker : public QObject {
    Q_OBJECT

    const QString example_ = QStringLiteral(EXAMPLES "/lap_seam/lap_seam.json");

    static Settings settingsFor(int port) {
        Settings settings;
        settings.isOn = true;
        settings.host = "127.0.0.1";
        settings.port = port;
        settings.cell = "cell-3";
        return settings;
    }
    static bool reaches(const Client& client, LinkStatus::State state) {
        return test::waitUntil([&] { return client.status().state == state; }, [] {});
    }
    static void put(Client* client, const QByteArray& topic, int number) {
        client->publish(topic, [number] { return QByteArray::number(number); });
    }
    /// Runs the example; the exit code. The trace is in NAME.
    int runExample(const QString& name, const QStringList& more) {
        Process runner;
        runner.start(LUMO_RUN, QStringList{"--quiet", "--trace", name} + more + QStringList{example_});
        return runner.finish();
    }
    /// Runs the example with a variable of the environment; what it writes to standard error.
    QByteArray wordsOf(const QString& variable, const QString& value, const QStringList& more) {
        Process runner;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(variable, value);
        runner.setProcessEnvironment(environment);
        runner.start(LUMO_RUN, QStringList{"--quiet"} + more + QStringList{example_});
        return runner.finish() == 0 ? runner.readAllStandardError() : "it has failed";
    }
    /// The last document that docs/telemetry.md shows of a topic.
    static QJsonObject documented(const QString& topic) {
        const QString text = test::contentOf(DOCS "/telemetry.md");
        const QString chapter = text.section("\n### " + topic + "\n", 1, 1).section("\n#", 0, 0);
        const QString example = chapter.section("```json\n", -1).section("\n```", 0, 0);
        return QJsonDocument::fromJson(example.toUtf8()).object();
    }
    static bool openssl(const QString& arguments) {
        Process openssl;
        openssl.start("openssl", arguments.split(' '));
        return openssl.finish() == 0;
    }

private slots:
    void initTestCase() {
        if (Broker::program().isEmpty()) {
            QSKIP("mosquitto is not installed");
        }
    }

    void run_leavesItsDocuments_andChangesNothing() {
        Broker broker;
        QVERIFY(broker.start());
        mendo::FileProblem problem;
        QVERIFY(settingsFor(broker.port()).write("mqtt.json", &problem));
        QCOMPARE(runExample("plain", {"--summary", "summary.json", "--rated-power", "3000"}), 0);
        QCOMPARE(runExample("told", {"--mqtt", "mqtt.json", "--rated-power", "3000"}), 0);
        QCOMPARE(test::contentOf("told"), test::contentOf("plain"));
        Subscriber late(broker.port());  // gets what is retained
        QVERIFY(late.sees("online", "false") && late.sees("seams", "welded_mm"));
        QCOMPARE(late.document("state")["state"].toString(), "finished");
        const QJsonObject run = late.document("run"), counters = late.document("counters");
        QVERIFY(run["over"].toBool() && run["reason"] == "finished" && run["run_mode"] == "hand");
        QVERIFY(QDateTime::fromString(run["at"].toString(), Qt::ISODateWithMs).isValid());
        QCOMPARE(counters["runs"].toInt(), 1);
        QCOMPARE(counters["welded_mm"].toDouble(), 300.0);
        QCOMPARE(late.document("ports")["ports"].toObject().size(), 19);
        QVERIFY(late.document("faults")["motion_error"].isNull());
        QCOMPARE(late.document("line")["line"].toInt(), 8);
        for (const char* topic : {"state", "line", "run", "seams", "counters", "faults", "ports"}) {
            QCOMPARE(late.document(topic).keys(), documented(topic).keys());
        }
        // The seams are those of the summary.
        const QJsonObject told = late.document("seams")["seams"].toArray().at(0).toObject();
        const QJsonObject summary = QJsonDocument::fromJson(test::contentOf("summary.json")).object();
        const QJsonObject seam = summary["seams"].toArray().at(0).toObject();
        QJsonObject shown = documented("seams")["seams"].toArray().at(0).toObject();
        shown.remove("overlap_mm");  // of resumed welds only
        QCOMPARE(told.keys(), shown.keys());
        for (const char* name : {"welded_mm", "energy_pct_s", "laser_on_s", "heat_J_per_mm", "set"}) {
            QVERIFY2(!seam[name].isUndefined() && told[name] == seam[name], name);
        }
    }

    /// It brings OpenSSL. Without it a run goes on, and says what is missing.
    void library_isLoadedWhenItIsNeeded() {
        mendo::FileProblem problem;
        QVERIFY(settingsFor(test::freePort()).write("mqtt.json", &problem));
        const QByteArray plain = wordsOf("LD_DEBUG", "files", {});
        QVERIFY(plain.contains("libQt5Core") && !plain.contains("libcrypto"));
        QVERIFY(wordsOf("LD_DEBUG", "files", {"--mqtt", "mqtt.json"}).contains("libcrypto"));
        test::writeFile("libmosquitto.so.1", "no library");
        const QByteArray missing = wordsOf("LD_LIBRARY_PATH", QDir::currentPath(), {"--mqtt", "mqtt.json"});
        QVERIFY2(missing.contains("install the package libmosquitto1"), missing);
    }

    void restartedBroker_getsTheWholeStateAgain() {
        Broker broker;
        QVERIFY(broker.start());
        Client client;
        put(&client, "state", 1);
        put(&client, "counters", 2);
        client.setSettings(settingsFor(broker.port()));
        QVERIFY(client.flush(test::patienceMs));
        broker.end();
        QVERIFY(reaches(client, LinkStatus::State::Failed));
        put(&client, "state", 3);
        QVERIFY(broker.start());
        QVERIFY(reaches(client, LinkStatus::State::Connected));
        Subscriber subscriber(broker.port());
        QVERIFY(subscriber.sees("online", "true") && subscriber.sees("counters", "2") &&
                subscriber.sees("state", "3"));
        // Other settings: the old cell goes offline, the new one has everything.
        Settings other = settingsFor(broker.port());
        other.prefix = "lumo/cell-3";  // within what is subscribed to
        client.setSettings(other);
        QVERIFY(subscriber.sees("online", "false") && subscriber.sees("cell-3/counters", "2"));
    }

    /// Neither the cell's thread nor a run waits for it, and it costs no memory.
    void hangingBroker_costsNoTime() {
        Broker broker;
        QVERIFY(broker.start());
        Client client;
        client.setSettings(settingsFor(broker.port()));
        QVERIFY(reaches(client, LinkStatus::State::Connected));
        broker.process()->signal(SIGSTOP);
        constexpr int count = 100000;
        qint64 longestNs = 0;
        QElapsedTimer all, one;
        all.start();
        for (int i = 0; i < count; ++i) {
            one.start();
            put(&client, i % 2 == 0 ? "state" : "line", i);
            longestNs = std::max(longestNs, one.nsecsElapsed());
        }
        const double meanUs = double(all.nsecsElapsed()) / count / 1000;
        qInfo("broker stopped: publish takes %.2f us on average, %.0f us at most", meanUs,
              double(longestNs) / 1000);
        QVERIFY(meanUs < 200);
        mendo::FileProblem problem;
        QVERIFY(settingsFor(broker.port()).write("mqtt.json", &problem));
        QCOMPARE(runExample("plain", {}), 0);
        QCOMPARE(runExample("told", {"--mqtt", "mqtt.json"}), 0);
        QCOMPARE(test::contentOf("told"), test::contentOf("plain"));
        broker.process()->signal(SIGCONT);
        Subscriber subscriber(broker.port());
        QVERIFY(subscriber.sees("line", QByteArray::number(count - 1)));
        QVERIFY(client.status().sent < count / 10);
    }

    void endWithAHangingBroker_isShort() {
        Broker broker;
        QVERIFY(broker.start());
        QElapsedTimer passed;
        {
            Client client;
            client.setSettings(settingsFor(broker.port()));
            QVERIFY(reaches(client, LinkStatus::State::Connected));
            broker.process()->signal(SIGSTOP);
            put(&client, "state", 1);
            passed.start();
        }
        QVERIFY2(passed.elapsed() < 10 * Client::endMs, qPrintable(QString::number(passed.elapsed())));
    }

    void refusals_areTold() {
        using Reason = LinkStatus::Reason;
        QVERIFY(openssl("req -x509 -newkey rsa:2048 -nodes -days 2 -keyout ca.key -out ca.pem -subj /CN=ca"));
        QVERIFY(openssl(
            "req -x509 -newkey rsa:2048 -nodes -days 2 -keyout other.key -out other.pem -subj /CN=other"));
        QVERIFY(openssl("req -newkey rsa:2048 -nodes -keyout broker.key -out broker.csr -subj /CN=broker"));
        test::writeFile("names", "subjectAltName=IP:127.0.0.1");
        QVERIFY(openssl(
            "x509 -req -in broker.csr -CA ca.pem -CAkey ca.key -CAcreateserial -days 2 -out broker.pem "
            "-extfile names"));
        test::writeFile("passwords", "me:secret\n");
        Process hashing;
        hashing.start("mosquitto_passwd", {"-U", "passwords"});
        QCOMPARE(hashing.finish(), 0);
        const QByteArray here = QDir::currentPath().toUtf8() + '/';
        Broker open, encrypted;
        QVERIFY(open.start("allow_anonymous false\npassword_file " + here + "passwords\n"));
        QVERIFY(encrypted.start("allow_anonymous true\ncafile " + here + "ca.pem\ncertfile " + here +
                                "broker.pem\nkeyfile " + here + "broker.key\n"));
        const struct {
            const char* name;
            int port;
            const char *password, *ca, *host;
            Reason reason;  ///< None: it is let in
        } rows[] = {
            {"login", open.port(), "secret", "", "127.0.0.1", Reason::None},
            {"wrong password", open.port(), "wrong", "", "127.0.0.1", Reason::BadLogin},
            {"no login", open.port(), "", "", "127.0.0.1", Reason::NotAllowed},
            {"encrypted", encrypted.port(), "", "ca.pem", "127.0.0.1", Reason::None},
            {"another authority", encrypted.port(), "", "other.pem", "127.0.0.1", Reason::Certificate},
            {"another name", encrypted.port(), "", "ca.pem", "localhost", Reason::Certificate},
            {"plain where it is encrypted", encrypted.port(), "", "", "127.0.0.1", Reason::Lost},
            {"nobody listens", test::freePort(), "", "", "127.0.0.1", Reason::Refused},
            {"nobody listens, encrypted", test::freePort(), "", "ca.pem", "127.0.0.1", Reason::Refused},
        };
        for (const auto& row : rows) {
            Settings settings = settingsFor(row.port);
            settings.host = row.host;
            settings.password = row.password;
            settings.user = settings.password.isEmpty() ? "" : "me";
            settings.caFile = row.ca;
            settings.tls = !settings.caFile.isEmpty();
            Client client;
            client.setSettings(settings);
            QVERIFY2(reaches(client, row.reason == Reason::None ? LinkStatus::State::Connected
                                                                : LinkStatus::State::Failed),
                     row.name);
            QVERIFY2(client.status().reason == row.reason,
                     qPrintable(row.name + (": " + client.status().text())));
        }
    }
};

LUMO_TEST_ON(TelemetryBroker, test::onWallClock)
#include "test_broker.moc"
