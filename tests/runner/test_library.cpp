#include "support/runnerfolder.h"
#include "support/suite.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

class RunnerLibrary : public QObject {
    Q_OBJECT
private slots:
    /// One project passes, one violates its limits, one cannot be read; one without limits is left out.
    void eachProjectWithLimits_isRun_andOneFileTellsOfAll() {
        const QByteArray dwell = "[{\"type\":\"delay\",\"delaytime\":2000}]";
        QVERIFY(QDir().mkpath("lib/sub"));
        const std::pair<const char*, QByteArray> files[] = {
            {"lib/a.json", dwell},
            {"lib/a.limits.json", "{\"cycle_s\":{\"max\":3}}"},
            {"lib/sub/b.json", dwell},
            {"lib/sub/b.limits.json", "{\"cycle_s\":{\"max\":1}}"},
            {"lib/sub/c.json", "[{\"type\""},
            {"lib/sub/c.limits.json", "{}"},
            {"lib/d.json", dwell}};
        for (const auto& [name, text] : files) {
            test::writeFile(name, text);
        }
        const QStringList outputs = {"--junit", "all.xml", "--summary", "all.json"};
        Result all = runIn(".", outputs + QStringList("lib"));
        QCOMPARE(all.status, 2);
        QVERIFY(all.out.contains("passed  a.json: finished, 2.0 s, 0 seams") &&
                all.out.contains("FAILED  sub/b.json: finished, 2.0 s, 0 seams, limits violated: 1") &&
                all.out.contains("FAILED  sub/c.json: not run") && !all.out.contains("d.json"));
        const QByteArray junit = test::contentOf("all.xml");
        QVERIFY2(junit.contains("<testsuite name=\"sub/c.json\" tests=\"1\" errors=\"1\"") &&
                     junit.contains("<testsuites tests=\"3\" failures=\"1\" errors=\"1\"") &&
                     junit.contains("classname=\"sub/b.json\""),
                 junit);
        const QJsonObject summary = QJsonDocument::fromJson(test::contentOf("all.json")).object();
        QCOMPARE(summary.value("failed").toArray(), (QJsonArray{"sub/b.json", "sub/c.json"}));
        QVERIFY(summary.value("seconds").toDouble() == 4 && summary.value("folder") == "lib" &&
                summary.value("projects").toArray().size() == 3);

        QVERIFY(QFile::remove("lib/sub/c.limits.json"));
        QCOMPARE(runIn(".", outputs + QStringList("lib")).status, 1);
        QVERIFY(QFile::remove("lib/sub/b.limits.json"));
        QCOMPARE(runIn(".", outputs + QStringList("lib")).status, 0);
        QVERIFY(QFile::remove("lib/a.limits.json"));
        QVERIFY(runIn(".", {"lib"}).err.contains("lib: no project has a NAME.limits.json"));
    }
};

LUMO_TEST_ON(RunnerLibrary, test::onWallClock)
#include "test_library.moc"
