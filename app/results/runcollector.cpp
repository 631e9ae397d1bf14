#include "app/results/runcollector.h"

#include "app/path/seamtrack.h"
#include "app/results/programline.h"
#include "kord/kordservice.h"
#include "mendo/clock.h"
#include "mendo/modulemanager.h"
#include "program/parameters.h"
#include "program/words.h"
#include "workcell/cellsignals.h"
#include "workcell/evidence.h"
#include "workcell/runwatch.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace app {

using mendo::ModuleObject;
using prog::StatementType;

namespace {

const ModuleObject* programOf(bool byStation) {
    return m(byStation ? prog::key::stationProgram : prog::key::program);
}

/// What the package's editor says.
bool isProgramStored(const QWidget* page) {
    const auto* editor = page ? page->findChild<QWidget*>(QStringLiteral("ProgramWidget")) : nullptr;
    const QObjectList parts = editor ? editor->children() : QObjectList();
    return std::all_of(parts.begin(), parts.end(), [](const QObject* part) {
        return !part->inherits("lumo::StoredState") || part->property("stored").toBool();
    });
}

FileDigest digestOf(const QString& path) {
    FileDigest digest{QFileInfo(path).fileName(), {}};
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    // Reading a pipe might never end.
    if (QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) && hash.addData(&file)) {
        digest.sha256 = QString::fromLatin1(hash.result().toHex());
    }
    return digest;
}

SetValues valuesOf(const ModuleObject* set) {
    SetValues values{set->c(prog::field::name)->getString(), {}};
    for (const prog::ParameterRow& row : prog::parameterRows()) {
        values.values.append(set->c(row.name)->getDouble());
    }
    return values;
}

/// Leaves out points until the moves have at most `most` between their ends.
void thin(std::vector<PathMove>* moves, std::size_t most) {
    std::size_t count = 0;
    for (const PathMove& move : *moves) {
        count += move.path.size() + move.corner.size();
    }
    const std::size_t step = count / most + 1;
    const auto thinned = [step](const Polyline& line) {
        Polyline kept;
        for (std::size_t i = 0; i < line.size(); ++i) {
            if (i % step == 0 || i + 1 == line.size()) {
                kept.push_back(line[i]);
            }
        }
        return kept;
    };
    if (step > 1) {
        for (PathMove& move : *moves) {
            move.path = thinned(move.path);
            move.corner = thinned(move.corner);
        }
    }
}

}  // namespace

RunCollector::RunCollector(const workcell::WorkCell* cell, const workcell::CellSignals* cellSignals,
                           workcell::RunWatch* watch, workcell::EvidenceRecorder* evidence, QObject* parent)
    : QObject(parent), cell_(cell), signals_(cellSignals), evidence_(evidence) {
    connect(watch, &workcell::RunWatch::begun, this, [this, watch] {
        if (!watch->isStep()) {
            begin();
        }
    });
    connect(evidence, &workcell::EvidenceRecorder::finished, this, &RunCollector::finish);
    connect(cellSignals, &workcell::CellSignals::changed, this, &RunCollector::onSignal);
    connect(cell->controller(), &sim::Controller::postureMoved, this, &RunCollector::onMoved);
    connect(cell->controller(), &sim::Controller::cameToRest, this, &RunCollector::onMoved);
}

// --- Beginning ------------------------------------------------------------------------------------

void RunCollector::begin() {
    result_ = std::make_unique<RunResult>();
    result_->begun = mendo::Clock::current().now();
    result_->version = QStringLiteral(LUMO_VERSION);
    result_->byStation = cell_->flags().mode() == prog::runmode::byStation;
    result_->projectFile = projectFile();
    result_->isSaved = result_->byStation || isProgramStored(page_);
    start_ = postureNow();
    readProgram();
    readFiles();
    readLimits();
    beginTrack();
}

QString RunCollector::projectFile() const {
    if (!page_) {
        return {};
    }
    QString path = page_->property("projectFile").toString();
    if (result_->byStation) {
        const auto* stations = page_->findChild<QWidget*>(QStringLiteral("SignalsBindWidget"));
        const int row = stations ? stations->property("running").toInt() : -1;
        path =
            row < 0 ? QString() : m(prog::key::signalsConfig)->c(row)->c(prog::field::filePath)->getString();
    }
    return path.isEmpty() ? QString() : QFileInfo(path).absoluteFilePath();
}

/// The lines as values and the sets that they name. Of a longer program only the first lines: reading all of
/// it would delay the start.
void RunCollector::readProgram() {
    const ModuleObject* program = programOf(result_->byStation);
    const ModuleObject* sets = m(prog::key::param);
    result_->lineCount = program->cmobjCount();
    program_ =
        result_->lineCount <= RunResult::mostLines ? std::make_unique<prog::RunProgram>(program) : nullptr;
    QSet<int> named;
    const int count = std::min(result_->lineCount, RunResult::mostLines);
    for (int line = 0; line < count; ++line) {
        const prog::Statement statement = prog::Statement::from(program->c(line));
        const bool isOpen = statement.type == StatementType::Open;
        const bool namesSet = isOpen || statement.type == StatementType::Param;
        const QString set = namesSet ? sets->c(statement.set)->c(prog::field::name)->getString() : QString();
        result_->lines.append(programLine(statement, set));
        result_->hasWelds = result_->hasWelds || (isOpen && statement.executed);
        if (namesSet && statement.executed && statement.set < sets->cmobjCount() &&
            !named.contains(statement.set)) {
            named.insert(statement.set);
            result_->sets.append(valuesOf(sets->c(statement.set)));
        }
    }
}

void RunCollector::readFiles() {
    if (!result_->projectFile.isEmpty()) {
        result_->files.append(digestOf(result_->projectFile));
    }
    for (const QLatin1String file : {prog::file::ports, prog::file::parameters}) {
        result_->files.append(digestOf(file));
    }
    if (result_->byStation) {
        result_->files.append(digestOf(prog::file::stations));
    }
}

void RunCollector::readLimits() {
    mendo::FileProblem problem;
    if (!result_->projectFile.isEmpty() && !result_->readLimits(result_->projectFile, &problem)) {
        emit m()->fileProblem(problem);
    }
    if (!result_->limitsFile.isEmpty()) {
        result_->files.append(digestOf(QFileInfo(result_->projectFile).absolutePath() + QLatin1Char('/') +
                                       result_->limitsFile));
    }
}

void RunCollector::beginTrack() {
    beginMm_ = cell_->controller()->travelled() * prog::mmPerM;
    beginMs_ = mendo::Clock::current().elapsedMs();
    result_->track.add(tool(), 0);
    if (cell_->cell()->emitting()) {
        result_->track.setLit(true, tool(), 0);
    }
    profile_ = std::make_unique<ProfileRecorder>();
    speedSignal_ = signals_->indexOf(QStringLiteral("speed_mm_s"));
    powerSignal_ = signals_->indexOf(QStringLiteral("power_pct"));
    bandSignals_.clear();
    const QPair<SignalBand::Kind, QString> followed[] = {
        {SignalBand::Kind::Emission, workcell::signalname::emission},
        {SignalBand::Kind::Power, QStringLiteral("power_pct")},
        {SignalBand::Kind::Gas, cell_->cell()->wiring().gas},
        {SignalBand::Kind::Speed, QStringLiteral("speed_mm_s")},
    };
    for (const auto& band : followed) {
        const int signal = signals_->indexOf(band.second);
        if (signal >= 0) {
            bandSignals_.push_back(signal);
            result_->bands.append(SignalBand(band.first, signals_->all()[std::size_t(signal)].value));
        }
    }
}

// --- On the way -----------------------------------------------------------------------------------

/// At this moment; the tree has it every 10 ms.
Position RunCollector::tool() const {
    const auto trans = cell_->controller()->posture().pose.trans;
    return {trans[0], trans[1], trans[2]};
}

double RunCollector::travelledMm() const {
    return cell_->controller()->travelled() * prog::mmPerM - beginMm_;
}

qint64 RunCollector::elapsedMs() const {
    return mendo::Clock::current().elapsedMs() - beginMs_;
}

void RunCollector::onSignal(int signal, double value) {
    if (!result_) {
        return;
    }
    if (signal == powerSignal_) {
        sample();
    }
    for (std::size_t i = 0; i < bandSignals_.size(); ++i) {
        if (bandSignals_[i] == signal) {
            SignalBand& band = result_->bands[int(i)];
            band.set(elapsedMs(), value);
            if (band.kind() == SignalBand::Kind::Emission) {
                result_->track.setLit(value != 0, tool(), travelledMm());
            }
        }
    }
}

void RunCollector::onMoved() {
    if (result_) {
        result_->track.add(tool(), travelledMm());
        sample();
    }
}

/// Of welds only: the way between them may be long.
void RunCollector::sample() {
    const auto value = [this](int signal) {
        return signal < 0 ? 0.0 : signals_->all()[std::size_t(signal)].value;
    };
    if (cell_->cell()->emitting() || m(prog::key::weldOpen)->getBool()) {
        profile_->add({travelledMm(), value(speedSignal_), value(powerSignal_)});
    }
}

// --- End ------------------------------------------------------------------------------------------

void RunCollector::finishNow() {
    if (result_) {
        workcell::RunRecord record = evidence_->current();
        record.reason = QStringLiteral("quit");
        finish(record);
    }
}

void RunCollector::finish(const workcell::RunRecord& record) {
    if (!result_) {
        return;
    }
    const std::unique_ptr<RunResult> result = std::move(result_);
    result->record = record;
    for (SignalBand& band : result->bands) {
        band.extend(elapsedMs());
    }
    for (const workcell::SeamRecord& seam : record.seams) {
        const double length = std::max(seam.programmedMm, seam.weldedMm) + seam.overlapMm;
        result->profiles.append(partOf(profile_->samples(), seam.openedAtMm, seam.openedAtMm + length));
    }
    profile_.reset();
    if (program_) {
        constexpr std::size_t mostPoints = 6000;
        const sim::Arm arm(kordservice()->dataNode(prog::key::jointCount)->getInt());
        result->moves = layOutPath(*program_, arm, start_);
        thin(&result->moves, mostPoints);
    }
    program_.reset();
    emit collected(*result);
}

}  // namespace app
