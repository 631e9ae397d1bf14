#include "runner/junit.h"

#include <QFileInfo>
#include <QXmlStreamWriter>

#include <algorithm>

namespace run {

using workcell::SeamRecord;

namespace {

struct Case {
    QString name;
    double seconds = 0.0;
    QStringList faults;
};

struct Suite {
    QString project;
    std::vector<Case> cases;

    int failures() const {
        return int(
            std::count_if(cases.begin(), cases.end(), [](const Case& c) { return !c.faults.isEmpty(); }));
    }
    /// That of its run; the seams are welded within it.
    double seconds() const { return cases.empty() ? 0.0 : cases.front().seconds; }
};

/// Without the characters that XML cannot have.
QString xmlText(const QString& text) {
    QString clean;
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        const bool isPair = c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        const bool isControl = c < QLatin1Char(' ') && c != QLatin1Char('\n') && c != QLatin1Char('\t');
        if (isPair) {
            clean += c;
            clean += text[++i];
        } else if (!isControl && !c.isSurrogate() && c.unicode() < 0xfffe) {
            clean += c;
        }
    }
    return clean;
}

QString secondsText(double seconds) {
    constexpr int decimals = 3;
    return QString::number(seconds, 'f', decimals);
}

QString seamName(const ProjectResult& result, int seam) {
    const QString& set = result.record.seams[std::size_t(seam) - 1].set;
    const QString name = seamText(result.record, seam);
    return set.isEmpty() ? name : QStringLiteral("%1, %2").arg(name, set);
}

Case seamCase(const ProjectResult& result, int seam) {
    const SeamRecord& of = result.record.seams[std::size_t(seam) - 1];
    Case found{seamName(result, seam), of.start ? of.end->atS - of.start->atS : 0.0, {}};
    for (const workcell::Violation& violation : result.violations) {
        if (violation.seam == seam) {
            found.faults.append(violationText(violation));
        }
    }
    for (const Departure& departure : result.departures) {
        if (departure.seam == seam) {
            found.faults.append(departure.text);
        }
    }
    return found;
}

QString fileName(const ReportedFinding& finding) {
    return QFileInfo(finding.file).fileName();
}

/// What is wrong with the run as a whole. `project`: only what belongs to this one of a folder.
QStringList runFaults(const ProjectResult& result, const QString& project) {
    QStringList faults;
    for (const ReportedFinding& finding : result.findings) {
        if (!result.isFolder || fileName(finding) == project) {
            faults.append(findingText(finding));
        }
    }
    for (const Departure& departure : result.departures) {
        if (!departure.seam && (!result.isFolder || departure.project == project)) {
            faults.append(departure.text);
        }
    }
    return faults;
}

QStringList endFaults(const ProjectResult& result) {
    QStringList faults;
    if (!result.succeeded) {
        faults.append(QStringLiteral("the run ended with \"%1\"").arg(result.record.reason));
    }
    for (const workcell::Violation& violation : result.violations) {
        if (!violation.seam) {
            faults.append(violationText(violation));
        }
    }
    return faults;
}

Suite suiteOf(const ProjectResult& result) {
    Suite suite{result.name, {}};
    suite.cases.push_back(
        {QStringLiteral("run"), result.record.seconds, endFaults(result) + runFaults(result, result.name)});
    for (int seam = 1; seam <= int(result.record.seams.size()); ++seam) {
        suite.cases.push_back(seamCase(result, seam));
    }
    return suite;
}

/// The projects that are bound, each once, in the order of the stations; then others that welded, which had a
/// station before an edit.
QStringList projectsOf(const ProjectResult& result) {
    QStringList projects;
    for (const StationResult& station : result.stations) {
        projects.append(station.project);
    }
    for (const SeamRecord& seam : result.record.seams) {
        projects.append(seam.project);
    }
    projects.removeAll(QString());
    projects.removeDuplicates();
    return projects;
}

Suite suiteOfStations(const ProjectResult& result, const QString& project) {
    Case run{QStringLiteral("run"), 0.0, {}};
    for (const StationResult& station : result.stations) {
        if (station.project == project) {
            run.seconds += station.busyS;
        }
        if (station.project == project && station.failed() > 0) {
            run.faults.append(stationText(station));
        }
    }
    run.faults += runFaults(result, project);
    run.faults.removeDuplicates();  // --strict tells of stations, too
    Suite suite{project, {run}};
    for (int seam = 1; seam <= int(result.record.seams.size()); ++seam) {
        if (result.record.seams[std::size_t(seam) - 1].project == project) {
            suite.cases.push_back(seamCase(result, seam));
        }
    }
    return suite;
}

/// What belongs to no project of the folder: its settings files, the end of it all, weld statements.
QStringList folderFaults(const ProjectResult& result, const QStringList& projects) {
    QStringList faults = endFaults(result);
    for (const ReportedFinding& finding : result.findings) {
        if (!projects.contains(fileName(finding))) {
            faults.append(findingText(finding));
        }
    }
    for (const Departure& departure : result.departures) {
        if (!departure.seam && !projects.contains(departure.project)) {
            faults.append(departure.text);
        }
    }
    return faults;
}

void addSuites(const ProjectResult& result, std::vector<Suite>* suites) {
    if (!result.isFolder) {
        suites->push_back(suiteOf(result));
        return;
    }
    const QStringList projects = projectsOf(result);
    const QStringList faults = folderFaults(result, projects);
    if (!faults.isEmpty()) {
        suites->push_back({result.name, {{QStringLiteral("run"), result.record.seconds, faults}}});
    }
    for (const QString& project : projects) {
        suites->push_back(suiteOfStations(result, project));
    }
}

void writeCase(QXmlStreamWriter& xml, const Suite& suite, const Case& test) {
    xml.writeStartElement(QStringLiteral("testcase"));
    xml.writeAttribute(QStringLiteral("classname"), xmlText(suite.project));
    xml.writeAttribute(QStringLiteral("name"), xmlText(test.name));
    xml.writeAttribute(QStringLiteral("time"), secondsText(test.seconds));
    if (!test.faults.isEmpty()) {
        xml.writeStartElement(QStringLiteral("failure"));
        xml.writeAttribute(QStringLiteral("message"), xmlText(test.faults.first()).simplified());
        xml.writeAttribute(QStringLiteral("type"), QStringLiteral("failure"));
        xml.writeCharacters(xmlText(test.faults.join(QLatin1Char('\n'))));
        xml.writeEndElement();
    }
    xml.writeEndElement();
}

void writeCounts(QXmlStreamWriter& xml, int tests, int failures, double seconds) {
    xml.writeAttribute(QStringLiteral("tests"), QString::number(tests));
    xml.writeAttribute(QStringLiteral("failures"), QString::number(failures));
    xml.writeAttribute(QStringLiteral("errors"), QStringLiteral("0"));
    xml.writeAttribute(QStringLiteral("time"), secondsText(seconds));
}

}  // namespace

QByteArray junitText(const std::vector<ProjectResult>& results) {
    std::vector<Suite> suites;
    int tests = 0, failures = 0;
    double seconds = 0.0;
    for (const ProjectResult& result : results) {
        addSuites(result, &suites);
        seconds += result.record.seconds;
    }
    for (const Suite& suite : suites) {
        tests += int(suite.cases.size());
        failures += suite.failures();
    }
    QByteArray text;
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("testsuites"));
    xml.writeAttribute(QStringLiteral("name"), QStringLiteral("lumo-run"));
    writeCounts(xml, tests, failures, seconds);
    for (const Suite& suite : suites) {
        xml.writeStartElement(QStringLiteral("testsuite"));
        xml.writeAttribute(QStringLiteral("name"), xmlText(suite.project));
        writeCounts(xml, int(suite.cases.size()), suite.failures(), suite.seconds());
        for (const Case& test : suite.cases) {
            writeCase(xml, suite, test);
        }
        xml.writeEndElement();
    }
    xml.writeEndElement();
    xml.writeEndDocument();
    return text;
}

}  // namespace run
