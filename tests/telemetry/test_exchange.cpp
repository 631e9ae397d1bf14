#include "support/suite.h"
#include "support/text.h"
#include "telemetry/exchange.h"

#include <QFileInfo>

using namespace telemetry;

/// What is told before it meets a network: the newest documents, and the settings.
class TelemetryExchange : public QObject {
    Q_OBJECT

    Exchange exchange_;

    void put(const QByteArray& topic, const QByteArray& text) {
        exchange_.put(topic, [text] { return text; });
    }
    /// What is due at a time: "line=3 state=1".
    QByteArray due(qint64 ms) {
        QByteArray all;
        while (const auto letter = exchange_.take(ms)) {
            all += letter->topic + '=' + letter->document() + ' ';
        }
        return all.trimmed();
    }
    static Settings good() {
        Settings settings;
        settings.isOn = true;
        settings.host = "broker";
        settings.cell = "cell-3";
        return settings;
    }

private slots:
    void newestOfEachTopic_isKept_andPaced() {
        exchange_.setState(LinkStatus::State::Connected);
        for (int i = 0; i <= 1000; ++i) {
            put("line", QByteArray::number(i));
        }
        put("state", "a");
        QCOMPARE(exchange_.status().replaced, 1000);
        QCOMPARE(due(0), "line=1000 state=a");
        put("line", "1001");
        QCOMPARE(due(1000), "");  // the one before is not yet acknowledged
        exchange_.acknowledge("line");
        QCOMPARE(exchange_.msUntilDue(150, 500), 50);
        QCOMPARE(due(199), "");
        QCOMPARE(due(200), "line=1001");
        exchange_.acknowledge("line");
        exchange_.acknowledge("state");
        QCOMPARE(exchange_.status().sent, 3);
        QVERIFY(!exchange_.hasUnsent() && exchange_.msUntilDue(201, 500) == 500);
        exchange_.resendAll();  // a new connection
        QCOMPARE(due(202), "line=1001 state=a");
    }

    void settings_areReadAndWritten_forTheirOwnerAlone() {
        Settings settings = good();
        settings.user = "u";
        settings.password = "s3cret";
        settings.tls = true;
        settings.port = 8883;
        mendo::FileProblem problem;
        QVERIFY(settings.write("a/telemetry.json", &problem));
        QCOMPARE(int(QFileInfo("a/telemetry.json").permissions() & 0x77), 0);
        const auto read = Settings::read("a/telemetry.json", &problem);
        QVERIFY(read && *read == settings && read->root() == "lumo/cell-3/");
        QVERIFY(!QJsonDocument(settings.jsonWithoutPassword()).toJson().contains("s3cret"));
        const QPair<QByteArray, QString> wrong[] = {
            {"{'host': 3}", "'host' is no text"},
            {"{'insecure': true}", "'insecure'"},
            {"[]", "no "},
        };
        for (const auto& [text, words] : wrong) {
            test::writeFile("wrong.json", test::quoted(text));
            QVERIFY2(!Settings::read("wrong.json", &problem), text);
            QVERIFY2(problem.text().contains(words), qPrintable(problem.text()));
        }
    }

    void flaws_keepItOff() {
        using Kind = Flaw::Kind;
        const QPair<Kind, void (*)(Settings*)> rows[] = {
            {Kind::NoHost, [](Settings* s) { s->host = " "; }},
            {Kind::BadPort, [](Settings* s) { s->port = 65536; }},
            {Kind::BadCell, [](Settings* s) { s->cell = "a/b"; }},
            {Kind::BadCell, [](Settings* s) { s->cell = "a#"; }},
            {Kind::BadPrefix, [](Settings* s) { s->prefix = "plant//hall"; }},
            {Kind::PasswordWithoutUser, [](Settings* s) { s->password = "x"; }},
            {Kind::FilesWithoutTls, [](Settings* s) { s->caFile = "ca.pem"; }},
            {Kind::CertificateWithoutKey, [](Settings* s) { s->tls = true, s->keyFile = "key.pem"; }},
            {Kind::NoFile, [](Settings* s) { s->tls = true, s->caFile = "none.pem"; }},
        };
        QVERIFY(!good().flaw());
        for (const auto& [kind, spoil] : rows) {
            Settings settings = good();
            spoil(&settings);
            QVERIFY(settings.flaw() && settings.flaw()->kind == kind);
            settings.isOn = false;
            QVERIFY(!settings.flaw());
        }
        Settings open = good();
        open.user = open.password = "x";
        QVERIFY(open.exposesPassword());
        open.host = "127.0.0.1";
        QVERIFY(!open.exposesPassword());
    }
};

LUMO_TEST(TelemetryExchange)
#include "test_exchange.moc"
