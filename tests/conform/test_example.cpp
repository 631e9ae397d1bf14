// The backend of the integrator's guide, loaded from its library in real time: it keeps the rules, and a
// project welds on it.

#include "support/suite.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>

class TestExample : public QObject {
    Q_OBJECT
private:
    static constexpr int patienceMs = 400000;

    /// Its output; the exit status in `status`.
    static QString run(const QString& program, const QStringList& arguments, int* status) {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(program, arguments);
        if (!process.waitForFinished(patienceMs)) {
            process.kill();
            process.waitForFinished();
        }
        *status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        return process.readAll();
    }

private slots:
    void itsGuide_showsIt() {
        const auto read = [](const char* name) {
            QFile file(QStringLiteral(DOCS "/") + name);
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        const QByteArray guide = read("integrator.md");
        for (const char* name : {"backend.cpp", "CMakeLists.txt"}) {
            const QByteArray text = read(qPrintable(QStringLiteral("bridge/") + name));
            QVERIFY2(!text.isEmpty() && guide.contains(QByteArray("bridge/") + name + '\n' + text + "```\n"),
                     name);
        }
    }

    void it_keepsTheRules() {
        const QTemporaryDir folder;
        const QString junit = folder.filePath("junit.xml");
        int status = 0;
        const QString out =
            run(LUMO_CONFORM,
                {MYBRIDGE, "--loop", "LUMO_DO.#15=LUMO_DI.#15", "--repeats", "3", "--junit", junit}, &status);
        QVERIFY2(status == 0, qPrintable(out));
        QVERIFY2(out.contains("command to motion: min"), qPrintable(out));
        QFile file(junit);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QXmlStreamReader xml(&file);
        int cases = 0;
        while (!xml.atEnd()) {
            cases +=
                xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("testcase");
        }
        QVERIFY(!xml.hasError() && cases > 30);
    }

    void whatCannotBeLoaded_isToldWithTheReason() {
        const std::pair<QStringList, const char*> rows[] = {
            {{"nowhere"}, "there is no library lumo-nowhere.so"},
            {{"/nowhere/backend.so"}, "/nowhere/backend.so"},
            {{LUMO_LIBRARY}, "does not export"},
            {{}, "name one backend"},
            {{MYBRIDGE, "--quirk", "late"}, "--quirk is for the simulator"},
        };
        for (const auto& [arguments, reason] : rows) {
            int status = 0;
            const QString out = run(LUMO_CONFORM, arguments, &status);
            QVERIFY2(status == 2 && out.contains(reason), qPrintable(out));
        }
    }

    void aProject_runsOnIt() {
        const QTemporaryDir folder;
        QJsonArray project;
        for (const double x : {0.52, 0.54, 0.56}) {
            const QJsonObject point{{"trans", QJsonArray{x, 0, 0.4}},
                                    {"rot", QJsonArray{3.14159265358979, 0, 0}},
                                    {"near", QJsonArray{0, 0, 0, 0, 0, 0}}};
            project.append(QJsonObject{
                {"type", "moveL"}, {"point", point}, {"speed", 50}, {"zone", 0}, {"execute", true}});
        }
        QFile file(folder.filePath("part.json"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QJsonDocument(project).toJson());
        file.close();
        const QString trace = folder.filePath("part.jsonl");
        int status = 0;
        const QString out =
            run(LUMO_RUN, {"--controller", MYBRIDGE, "--force", "--trace", trace, file.fileName()}, &status);
        QVERIFY2(status == 0, qPrintable(out));
        QFile traced(trace);
        QVERIFY(traced.open(QIODevice::ReadOnly));
        const QByteArray text = traced.readAll();
        QCOMPARE(text.count("\"kind\":\"result\",\"name\":\"move.l\""), 3);
        QCOMPARE(text.count("\"event\":\"passed\""), 3);
        QVERIFY(text.contains("\"reason\":\"finished\""));
    }
};

LUMO_TEST_ON(TestExample, test::onWallClock)
#include "test_example.moc"
