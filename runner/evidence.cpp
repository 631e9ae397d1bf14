#include "runner/evidence.h"

#include "mendo/modulemanager.h"
#include "program/words.h"
#include "runner/junit.h"
#include "runner/summary.h"

#include <cstring>

namespace run {

namespace {

const char* const summaryOption = "--summary";
const char* const junitOption = "--junit";

Problem problemIn(const QString& name, const mendo::FileProblem& found) {
    return {name, found.place, found.text()};
}

}  // namespace

bool Evidence::read(Problem* problem) {
    mendo::FileProblem found;
    if (!options_.limits.isEmpty()) {
        limits_ = workcell::Limits::read(options_.limits, &found);
        *problem = problemIn(options_.limitsName, found);
        if (!limits_) {
            return false;
        }
    }
    if (!options_.wiring.isEmpty()) {
        wiring_ = workcell::readWiring(options_.wiring, &found);
        *problem = problemIn(options_.wiringName, found);
    }
    return options_.wiring.isEmpty() || wiring_;
}

void Evidence::attach(workcell::WorkCell* cell, workcell::TreeFollower* follower, workcell::RunWatch* watch,
                      const std::function<QString()>& projectName) {
    if (wiring_) {
        cell->wire(*wiring_);
    } else {
        cell->wire();
    }
    if (!options_.isJudged() && options_.mqtt.isEmpty()) {
        return;
    }
    recorder_ = std::make_unique<workcell::EvidenceRecorder>(
        cell->controller(), cell->cell(), follower, watch, workcell::EvidenceRecorder::Span::Process);
    recorder_->setProjectName(projectName);
    recorder_->setRatedPower(options_.ratedWatts);
}

bool Evidence::open() {
    return openFile(summaryOption, options_.summary, options_.summaryName) &&
           openFile(junitOption, options_.junit, options_.junitName);
}

bool Evidence::openFile(const char* option, const QString& file, const QString& name) {
    if (file.isEmpty()) {
        return true;
    }
    auto opened = std::make_unique<QFile>(file);
    const bool isOpen = file == QLatin1String("-") ? opened->open(stdout, QIODevice::WriteOnly)
                                                   : opened->open(QIODevice::WriteOnly);
    if (!isOpen) {
        printError(QStringLiteral("%1 %2: %3").arg(QLatin1String(option), name, opened->errorString()));
        return false;
    }
    outputs_.push_back({option, name, std::move(opened)});
    return true;
}

void Evidence::begin() {
    if (recorder_) {
        recorder_->begin();
        warnOfSets();
    }
}

/// A limit under a name that no set has would never be looked at.
void Evidence::warnOfSets() const {
    if (!limits_) {
        return;
    }
    QStringList sets;
    for (const mendo::ModuleObject* set : m(prog::key::param)->cmobjs()) {
        sets.append(set->c(prog::field::name)->getString());
    }
    for (const QString& named : limits_->setsNamed()) {
        if (!sets.contains(named)) {
            printWarning(
                QStringLiteral("%1: no parameter set is called \"%2\"").arg(options_.limitsName, named));
        }
    }
}

bool Evidence::finish(ProjectResult result) {
    if (!recorder_) {
        return true;
    }
    const QString reason = result.record.reason;
    result.record = recorder_->current();
    result.record.reason = reason;
    if (limits_) {
        result.violations = workcell::violations(result.record, *limits_);
    }
    if (options_.strict) {
        result.departures = departuresOf(result);
    } else if (limits_ && result.record.isDry) {
        result.departures.push_back({QStringLiteral("a dry run shows no limit as kept"), {}, {}});
    }
    for (const workcell::Violation& violation : result.violations) {
        const QString text = violationText(violation);
        printError(violation.seam
                       ? QStringLiteral("%1: %2").arg(seamText(result.record, *violation.seam), text)
                       : text);
    }
    for (const Departure& departure : result.departures) {
        printError(departure.text);
    }
    bool isWritten = true;
    for (const Output& output : outputs_) {
        const bool isSummary = std::strcmp(output.option, summaryOption) == 0;
        isWritten = write(output, isSummary ? summaryText(result) : junitText({result})) && isWritten;
    }
    const bool isStrict = result.departures.empty() && (!options_.strict || result.findings.empty());
    return isWritten && isStrict && result.violations.empty();
}

bool Evidence::write(const Output& output, const QByteArray& text) {
    const bool isWritten = output.file->write(text) == text.size() && output.file->flush();
    if (!isWritten) {
        printError(QStringLiteral("%1 %2: %3")
                       .arg(QLatin1String(output.option), output.name, output.file->errorString()));
    }
    output.file->close();
    return isWritten;
}

}  // namespace run
