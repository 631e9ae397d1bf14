#include "support/runnerfolder.h"
#include "support/suite.h"
#include "support/text.h"

#include <QXmlStreamReader>

#include <array>
#include <cmath>

namespace {

const QByteArray pulsedSet = QByteArray(parameterSets)
                                 .replace("\"thin\"", "\"pulsed\"")
                                 .replace("\"open_interval\":0", "\"open_interval\":60");
const QByteArray openPulsed = R"({"type":"open","execute":true,"index":1,"weldspeed":20})";
const QByteArray takePulsed = R"({"type":"param","execute":true,"index":1})";

/// 100 mm behind a move, and a retreat of 50 mm.
QByteArray seam(const QByteArray& open = openStatement, const QByteArray& close = closeStatement + ',') {
    return '[' + moveL(0.5, 0.35) + ',' + open + ',' + moveL(0.6, 0.35) + ',' + close + moveL(0.6, 0.4) + ']';
}

/// What the trace shows of the laser's emission: the sum of its path in mm and of its time in s.
struct Emission {
    explicit Emission(const Result& result) {
        std::array<double, 3> tool{};
        bool isLit = false, isEdge = false;
        int toolMs = -1, litMs = 0;
        for (const QJsonObject& line : result.trace) {
            const int now = line["t"].toInt();
            if (line["kind"] == "input" && line["name"] == "LUMO_DI.#5") {
                seconds += isLit ? (now - litMs) / 1000.0 : 0;
                litMs = now;
                isEdge = toolMs != now;  // its posture follows, unless it stands there already
                isLit = isEdge ? isLit : !isLit;
            } else if (line["kind"] == "posture") {
                const QJsonArray at = line["trans"].toArray();
                double squares = 0;
                for (int i = 0; i < 3; ++i) {
                    squares += toolMs < 0 ? 0 : std::pow(at[i].toDouble() - tool[size_t(i)], 2);
                    tool[size_t(i)] = at[i].toDouble();
                }
                mm += isLit ? std::sqrt(squares) * 1000 : 0;
                isLit = isEdge ? !isLit : isLit;
                isEdge = false;
                toolMs = now;
            }
        }
    }
    double mm = 0, seconds = 0;
};

/// "2-4 62.5/100 dark 40-77.5": lines, welded and programmed length, gaps, to half a millimetre.
QString textOf(const QJsonObject& seam) {
    const auto half = [](const QJsonValue& mm) { return QString::number(std::round(mm.toDouble() * 2) / 2); };
    QString text =
        QString("%1-%2 %3/%4")
            .arg(seam["open_line"].toInt())
            .arg(seam["close_line"].isNull() ? QString("x") : QString::number(seam["close_line"].toInt()))
            .arg(half(seam["welded_mm"]), half(seam["programmed_mm"]));
    for (const QJsonValue gap : seam["dark_gaps"].toArray()) {
        text += QString(" dark %1-%2").arg(half(gap["from_mm"]), half(gap["to_mm"]));
    }
    return text;
}

}  // namespace

/// What the built program says about the seams of a run, and how it judges them.
class RunnerEvidence : public QObject {
    Q_OBJECT
private slots:
    void seams_areThoseThatTheTraceShows_data() {
        QTest::addColumn<QByteArray>("project");
        QTest::addColumn<QString>("scenario");
        QTest::addColumn<QString>("seams");
        const auto row = [](const char* name, const QByteArray& project, const char* scenario,
                            const char* seams) {
            QTest::newRow(name) << project << QString(scenario) << QString(seams);
        };
        row("whole", seam(), "", "2-4 100/100");
        row("laser fault", seam(),
            "{'at':3000,'do':'fault','name':'laser','value':true},{'at':4500,'do':'fault','name':'laser','"
            "value':false}",
            "2-4 70/100 dark 43-73");
        row("weld switch", seam(), "{'at':3000,'do':'weld','value':false}", "2-x 47/100 dark 47-100");
        row("pause", seam(), "{'at':3000,'do':'pause'},{'at':5000,'do':'resume'}", "2-x 43/43, 2-4 57/57");
        row("overlap", seam(),
            "{'at':0,'do':'set','path':'lumo.execute.overlap','value':10},{'at':3000,'do':'pause'},{'at':"
            "5000,"
            "'do':'resume'},{'at':5600,'do':'pause'},{'at':7000,'do':'resume'}",
            "2-x 43/43, 2-x 0/0, 2-4 57/57");
        row("dry", seam(), "{'at':1000,'do':'set','path':'lumo.execute.dry','value':true}", "2-4 100/100");
        row("power", seam(), "{'at':3000,'do':'power','value':'off'}", "2-x 43/43 dark 43-43");
        row("motion error", seam(), "{'at':3000,'do':'motionError','code':-1}", "2-x 43/43");
        row("no close", seam(openStatement, {}), "", "2-x 150/150");
        row("close off", seam(openStatement, QByteArray(closeStatement).replace("true", "false") + ','), "",
            "2-x 150/100");
        row("two opens", seam(openStatement + ',' + moveL(0.55, 0.35) + ',' + openStatement), "",
            "2-x 50/50, 4-6 50/50");
        row("nothing to move", seam(openStatement + ',' + delayStatement + ',' + closeStatement), "",
            "2-4 0/0");
        row("pulsed", seam(openPulsed), "", "2-4 77/100");
        row("fault in pulses", seam(openPulsed),
            "{'at':3000,'do':'fault','name':'laser','value':true},{'at':3900,'do':'fault','name':'laser','"
            "value':false}",
            "2-4 64/100 dark 43-61");
        row("param", seam(openStatement + ',' + moveL(0.55, 0.35) + ',' + takePulsed), "", "2-6 89/100");
        row("lost in the zone",
            seam().replace("\"zone\":0,\"point\":{\"trans\":[0.6,0,0.35]",
                           "\"zone\":30,\"point\":{\"trans\":[0.6,0,0.35]"),
            "", "2-4 75/100 dark 75-100");
        row("switches off", seam(), "{'at':0,'do':'weld','value':false}", "");
    }
    void seams_areThoseThatTheTraceShows() {
        QFETCH(QByteArray, project);
        QFETCH(QString, scenario);
        QFETCH(QString, seams);
        const Folder folder;
        folder.write("lumo_param.json", parameterSets.chopped(1) + ',' + pulsedSet.mid(1));
        const Result result = folder.trace(project, test::quoted(('[' + scenario + ']').toUtf8()),
                                           {"--posture", "--summary", "sum.json", "--force"});
        const QJsonObject summary = QJsonDocument::fromJson(folder.read("sum.json")).object();
        QStringList texts;
        double mm = 0, seconds = 0;
        for (const QJsonValue of : summary["seams"].toArray()) {
            texts.append(textOf(of.toObject()));
            mm += of["welded_mm"].toDouble() + of["overlap_mm"].toDouble();
            seconds += of["laser_on_s"].toDouble();
        }
        QCOMPARE(texts.join(", "), seams);
        const Emission seen(result);
        QVERIFY2(std::abs(mm - seen.mm) < 0.01, qPrintable(QString("%1, seen %2").arg(mm).arg(seen.mm)));
        QVERIFY(std::abs(seconds - seen.seconds) < 1e-6);
        QCOMPARE(summary["laser_on_s"].toDouble(), seconds);
        QCOMPARE(summary["reason"], result.done()["reason"]);
        QCOMPARE(summary["lines"], result.done()["lines"]);
    }

    void judgements_decideTheExitStatus() {
        const Folder folder;
        folder.write("p.json", seam());
        folder.write("s.json", test::quoted("[{'at':3000,'do':'fault','name':'head','value':true},"
                                            "{'at':4500,'do':'fault','name':'head','value':false}]"));
        const std::tuple<const char*, const char*, int> limits[] = {
            {"{'seam':{'welded_ratio':{'min':0.99}}}",
             "seam 1 (lines 2 to 4): welded_ratio is 0.7, allowed is at least 0.99", 1},
            {"{'cycle_s':{'min':1,'max':3}}", "lumo-run: cycle_s is 7.01, allowed is 1 to 3", 1},
            {"{'seam':{'heat_J_per_mm':{'max':99}}}", "heat_J_per_mm is not known, allowed is at most 99", 1},
            {"{'seam':{'welded_mm':{'min':200}},'seams':{'thin':{'welded_mm':{'max':70}}}}", "", 0},
            {"{'seams':{'thick':{}}}", "warning: l.json: no parameter set is called \"thick\"", 0},
            {"{'seam':\n {'speed':{}}}", "lumo-run: l.json:2:11: ", 2}};
        for (const auto& [text, error, status] : limits) {
            folder.write("l.json", test::quoted(text));
            const QStringList words{"p.json",   "--scenario", "s.json",    "--quiet",
                                    "--limits", "l.json",     "--summary", "sum.json"};
            const Result result = folder.run(words);
            QVERIFY2(result.status == status && result.err.contains(error), result.err.constData());
            QCOMPARE(QFile::remove(folder.path("sum.json")), status != 2);
        }
        const Result strict = folder.run({"p.json", "--scenario", "s.json", "--quiet", "--strict", "--junit",
                                          "-", "--rated-power", "2000"});
        QCOMPARE(strict.status, 1);
        QCOMPARE(
            strict.err,
            QByteArray(
                "lumo-run: seam 1 (lines 2 to 4) stayed dark for 30 of 100 mm\n"
                "lumo-run: line 3: the equipment \"head\" had a fault while the laser was on, at 3 s\n"));
        QStringList elements;
        QXmlStreamReader xml(strict.out);
        while (!xml.atEnd()) {
            if (xml.readNext() == QXmlStreamReader::StartElement) {
                elements << xml.name() + xml.attributes().value("tests") + xml.attributes().value("failures");
            }
        }
        QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
        QCOMPARE(elements.join(' '), "testsuites22 testsuite22 testcase failure testcase failure");
    }

    /// The package switches what its file says, the cell has its laser elsewhere.
    void wiring_ofTheCellShowsAWrongPortFile() {
        const Folder folder;
        folder.write("cell.json", QByteArray(portRecords).replace(test::portNames[9], "LUMO_DO.#9"));
        const QStringList words{"p.json", "--quiet", "--strict", "--wiring", "cell.json"};
        folder.write("p.json", seam());
        const Result dark = folder.run(words);
        QVERIFY2(dark.status == 1 && dark.err == "lumo-run: seam 1 (lines 2 to 4) stayed dark\n",
                 dark.err.constData());
        folder.write("cell.json", "{}");
        QCOMPARE(folder.run(words).status, 2);
        QCOMPARE(folder.run(words + QStringList{"--summary", "cell.json"}).status, 2);
        QCOMPARE(folder.read("cell.json"), QByteArray("{}"));
    }
};

LUMO_TEST_ON(RunnerEvidence, test::onWallClock)
#include "test_evidence.moc"
