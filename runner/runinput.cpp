#include "runner/runinput.h"

#include "json/jsonfile.h"
#include "program/words.h"
#include "runner/outputfault.h"
#include "workcell/commandline.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <tuple>

namespace run {

using prog::Document;
using prog::Fault;
using prog::Finding;
using prog::Rule;

namespace {

/// What a finding is about, before its text: "line 3 (moveL): ".
QString subject(const Finding& finding, const QJsonValue& element) {
    const QJsonObject record = element.toObject();
    const QString number = QString::number(finding.element + 1);
    const auto named = [&number](const char* what, const QString& name) {
        return QStringLiteral("%1 %2%3: ")
            .arg(QLatin1String(what), number,
                 name.isEmpty() ? QString() : QStringLiteral(" \"%1\"").arg(name));
    };
    if (finding.element < 0) {
        return {};
    }
    switch (finding.document) {
        case Document::Project: {
            const QString type = record.value(prog::field::type).toString();
            return finding.line < 0
                       ? QStringLiteral("tool set: ")
                       : QStringLiteral("line %1%2: ")
                             .arg(finding.line + 1)
                             .arg(type.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(type));
        }
        case Document::Parameters:
            return named("set", record.value(prog::field::name).toString());
        case Document::Ports:
            return named("row", {});
        case Document::Stations:
            return named("station", record.value(prog::field::stationName).toString());
        case Document::Scenario:
            return named("entry", {});
    }
    return {};
}

bool isError(const PlacedFinding& placed) {
    return placed.finding.isError();
}

bool isOfStationsProject(const Finding& finding) {
    return finding.rule() == Rule::Station && finding.isError();
}

}  // namespace

ReportedFinding PlacedFinding::reported() const {
    return {QString(prog::ruleWord(finding.rule())),
            finding.isError() ? QStringLiteral("error") : QStringLiteral("warning"),
            file,
            std::max(1, place.line),
            std::max(1, place.column),
            text.simplified()};
}

prog::Record RunInput::File::content() const {
    return text ? prog::Record(*text) : prog::Record(QJsonValue(QJsonValue::Undefined));
}

bool RunInput::readProgram(Problem* problem) {
    if (options_.stations.isEmpty()) {
        project_ = Project::read(options_.project, options_.projectName, problem);
    } else {
        stations_ = StationList::read(options_.stations, options_.stationsName, problem);
    }
    if (!project_ && !stations_) {
        addUnreadable(*problem, options_.stations.isEmpty() ? Document::Project : Document::Stations);
    }
    return project_ || stations_;
}

void RunInput::check(const QStringList& inputs, const prog::CellFacts& cell, const prog::ArmModel& arm) {
    parameters_ = readSettings(prog::file::parameters);
    ports_ = readSettings(prog::file::ports);
    add(parameters_, prog::checkParameters(parameters_.content()));
    addDuplicates(parameters_, Document::Parameters);
    add(ports_, prog::checkPorts(ports_.content(), cell));
    addDuplicates(ports_, Document::Ports);
    if (!options_.scenario.isEmpty()) {
        readScenario(inputs);
    }
    if (project_) {
        checkProject(*project_, cell, arm);
    } else if (stations_) {
        checkStations(cell, arm);
    }
    sort();
}

/// A settings file; a missing one is the usual first start, and an empty list is stored as {}.
RunInput::File RunInput::readSettings(QLatin1String name) {
    File file;
    const QString given = !options_.settingsName.isEmpty()   ? options_.settingsName
                          : !options_.stationsName.isEmpty() ? options_.stationsName
                                                             : QFileInfo(options_.projectName).path();
    file.shown = QDir::cleanPath(QDir(given).filePath(name));
    const QString path = QDir(options_.settings).filePath(name);
    if (mendo::isMissing(path)) {
        return file;
    }
    mendo::FileProblem found;
    const std::optional<mendo::JsonText> json = mendo::readJsonFile(path, &found);
    if (json && json->value() == QJsonObject()) {
        return file;
    }
    Problem problem{file.shown, found.place, found.text()};
    file.text = json ? InputArray::from(*json, file.shown, &problem) : std::nullopt;
    if (!file.text) {
        addUnreadable(problem, name == prog::file::ports ? Document::Ports : Document::Parameters);
    }
    return file;
}

void RunInput::readScenario(const QStringList& inputs) {
    Problem problem;
    std::optional<Scenario> scenario =
        Scenario::read(options_.scenario, options_.scenarioName, inputs, options_.folder(), &problem);
    if (!scenario) {
        addUnreadable(problem, Document::Scenario);
        return;
    }
    scenario_ = *scenario;
    const File file{options_.scenarioName, scenario_.text()};
    add(file, scenario_.findings());
    addDuplicates(file, Document::Scenario);
}

void RunInput::checkProject(const Project& project, const prog::CellFacts& cell, const prog::ArmModel& arm) {
    const File file{project.text().shown(), project.text()};
    prog::Findings ofPorts, ofProject;
    for (Finding& finding :
         prog::checkProgram(project.text(), parameters_.content(), ports_.content(), cell, &arm)) {
        if (finding.document == Document::Ports && ports_.text) {
            ofPorts.push_back(finding);
            continue;
        }
        if (finding.document == Document::Ports) {  // told at the weld: there is no file
            finding.document = Document::Project;
            finding.element = project.elementOf(finding.line);
            finding.path.clear();
        }
        ofProject.push_back(finding);
    }
    add(ports_, ofPorts);
    add(file, ofProject);
    addDuplicates(file, Document::Project, &project);
}

void RunInput::checkStations(const prog::CellFacts& cell, const prog::ArmModel& arm) {
    const File file{stations_->shown(), stations_->text()};
    add(file, prog::checkStations(file.content(), ports_.content(), cell));
    addDuplicates(file, Document::Stations);
    for (const QString& name : stations_->projects()) {
        Problem problem;
        const QString path = QDir(options_.stations).filePath(name);
        const std::optional<Project> project =
            Project::read(path, QDir::cleanPath(QDir(options_.stationsName).filePath(name)), &problem);
        const std::size_t before = findings_.size();
        Finding told;
        told.document = Document::Stations;
        told.severity = prog::Severity::Error;
        told.path = prog::field::filePath;
        if (project) {
            checkProject(*project, cell, arm);
            const auto errors =
                std::count_if(findings_.begin() + std::ptrdiff_t(before), findings_.end(), isError);
            told.fault = Fault::ProjectFaulty;
            told.arguments = {name, int(errors)};
            if (errors == 0) {
                continue;
            }
        } else {
            told.fault = mendo::isMissing(path) ? Fault::ProjectMissing : Fault::ProjectUnreadable;
            told.arguments = {name,
                              problem.place.line > 0
                                  ? QStringLiteral("line %1: %2").arg(problem.place.line).arg(problem.reason)
                                  : problem.reason};
        }
        for (const int row : stations_->rowsOf(name)) {
            told.element = row;
            add(file, {told});
        }
    }
}

void RunInput::addUnreadable(const Problem& problem, Document document) {
    Finding finding;
    finding.document = document;
    finding.fault = Fault::Unreadable;
    // Without a settings file a run goes on: the package does not apply what it cannot read.
    const bool isSettings = document == Document::Parameters || document == Document::Ports;
    finding.severity = isSettings && !options_.check ? prog::Severity::Warning : prog::Severity::Error;
    finding.arguments = {problem.reason};
    findings_.push_back({finding, problem.file, problem.place, problem.reason});
    isUnreadable_ = true;
}

void RunInput::add(const File& file, const prog::Findings& findings) {
    for (const Finding& finding : findings) {
        PlacedFinding placed{finding, file.shown, {}, prog::englishText(finding)};
        if (file.text) {
            placed.place = file.text->place(finding.element, finding.path);
            placed.text = subject(finding, file.text->element(finding.element)) + placed.text;
        }
        findings_.push_back(placed);
    }
}

void RunInput::addDuplicates(const File& file, Document document, const Project* project) {
    if (!file.text) {
        return;
    }
    for (const mendo::JsonText::Duplicate& duplicate : file.text->duplicates()) {
        Finding finding;
        finding.fault = Fault::FieldDuplicate;
        finding.document = document;
        finding.element = duplicate.element;
        finding.line = project ? project->lineOf(duplicate.element) : -1;
        finding.path = duplicate.path;
        finding.arguments = {duplicate.path};
        findings_.push_back(
            {finding, file.shown, duplicate.place,
             subject(finding, file.text->element(duplicate.element)) + prog::englishText(finding)});
    }
}

/// What several projects say of one port is told once.
void RunInput::sort() {
    const auto key = [](const PlacedFinding& one) {
        return std::make_tuple(one.file, one.place.line, one.place.column);
    };
    std::stable_sort(findings_.begin(), findings_.end(),
                     [&key](const PlacedFinding& a, const PlacedFinding& b) { return key(a) < key(b); });
    const auto isRepeated = [&key](const PlacedFinding& a, const PlacedFinding& b) {
        return b.finding.document == Document::Ports && a.finding.fault == b.finding.fault &&
               key(a) == key(b) && a.finding.path == b.finding.path;
    };
    findings_.erase(std::unique(findings_.begin(), findings_.end(), isRepeated), findings_.end());
}

/// With --force only where it cannot be run.
bool RunInput::isRefused() const {
    return std::any_of(findings_.begin(), findings_.end(), [this](const PlacedFinding& placed) {
        const Finding& finding = placed.finding;
        if (!finding.isError() || isOfStationsProject(finding)) {
            return false;
        }
        if (finding.document == Document::Project) {
            return !stations_ &&
                   (!options_.force || finding.rule() == Rule::Type || finding.fault == Fault::Unreadable);
        }
        return !options_.force || finding.document == Document::Scenario || finding.fault == Fault::NoRecord;
    });
}

/// What does not fit the files that are read; empty when all does.
QString RunInput::optionFault() const {
    QStringList files = scenario_.files(options_.folder());
    for (const QString& name : stations_ ? stations_->projects() : QStringList()) {
        files.append(QDir(options_.folder()).absoluteFilePath(name));
    }
    return outputFault(options_, files);
}

bool RunInput::accept() const {
    for (const PlacedFinding& finding : findings_) {
        printError(finding.line());
    }
    const QString fault = isRefused() ? QString() : optionFault();
    if (!fault.isEmpty()) {
        printError(fault);
    }
    return !isRefused() && fault.isEmpty();
}

bool RunInput::hasFaultyStation() const {
    return std::any_of(findings_.begin(), findings_.end(),
                       [](const PlacedFinding& placed) { return isOfStationsProject(placed.finding); });
}

bool RunInput::hasToldOf(const QString& fileName) const {
    return std::any_of(findings_.begin(), findings_.end(), [&fileName](const PlacedFinding& placed) {
        return QFileInfo(placed.file).fileName() == fileName;
    });
}

int printFindings(const RunInput& input) {
    constexpr int errorsFound = 1;
    constexpr int unreadable = 2;
    const std::vector<PlacedFinding>& findings = input.findings();
    const auto errors = int(std::count_if(findings.begin(), findings.end(), isError));
    const int warnings = int(findings.size()) - errors;
    for (const PlacedFinding& finding : findings) {
        workcell::print(finding.line() + QLatin1Char('\n'));
    }
    workcell::print(QStringLiteral("%1 %2, %3 %4\n")
                        .arg(errors)
                        .arg(errors == 1 ? QStringLiteral("error") : QStringLiteral("errors"))
                        .arg(warnings)
                        .arg(warnings == 1 ? QStringLiteral("warning") : QStringLiteral("warnings")));
    return input.isUnreadable() ? unreadable : errors > 0 ? errorsFound : 0;
}

}  // namespace run
