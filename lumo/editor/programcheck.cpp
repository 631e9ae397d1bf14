#include "editor/programcheck.h"

#include "editor/programtable.h"
#include "equipment/handlit.h"
#include "executor/lumoexecutor.h"
#include "module/globals.h"
#include "module/host.h"
#include "program/runprogram.h"
#include "program/words.h"
#include "widgets/findingtext.h"

#include <QAbstractItemModel>

#include <algorithm>
#include <iterator>

using namespace prog;

namespace lumo {

namespace {

/// The program is checked when nothing has changed for this time.
constexpr int restMs = 200;
/// Moves whose reach is checked at a time: some milliseconds.
constexpr int movesOfSlice = 32;

bool isBefore(const Finding& a, const Finding& b) {
    return a.line < b.line;
}

bool isOfReach(const Finding& finding) {
    return finding.rule() == Rule::Reach;
}

}  // namespace

ProgramCheck::ProgramCheck(ProgramTable* table, QObject* parent) : QObject(parent), table_(table) {
    rest_.setSingleShot(true);
    connect(&rest_, &QTimer::timeout, this, &ProgramCheck::check);
    connect(&slices_, &QTimer::timeout, this, &ProgramCheck::advanceReach);
    const QAbstractItemModel* const rows = table->model();
    connect(rows, &QAbstractItemModel::rowsInserted, this,
            [this](const QModelIndex&, int first, int last) { linesAdded(first, last - first + 1); });
    connect(rows, &QAbstractItemModel::rowsRemoved, this,
            [this](const QModelIndex&, int first, int last) { linesRemoved(first, last - first + 1); });
    connect(table, &ProgramTable::rowMoved, this, &ProgramCheck::lineMoved);
    connect(table, &ProgramTable::rebuilt, this, &ProgramCheck::programReplaced);
    connect(table, &ProgramTable::programShown, this, &ProgramCheck::touch);
    for (const QLatin1String list : {key::param, key::port}) {
        connect(m(list), &ModuleObject::changed, this, &ProgramCheck::touch);
        connect(m(list), &ModuleObject::added, this, &ProgramCheck::touch);
        connect(m(list), &ModuleObject::removed, this, &ProgramCheck::touch);
    }
    if (executor) {
        connect(executor, &LumoExecutor::activityChanged, this, [this] {
            if (isDue_ && !isRunning()) {
                touch();
            }
        });
    }
    touch();
}

// --- Checking -------------------------------------------------------------------------------------

void ProgramCheck::touch() {
    slices_.stop();
    rest_.start(restMs);
}

void ProgramCheck::check() {
    isDue_ = isRunning();
    if (isDue_ || !table_->window()->isVisible()) {
        return;
    }
    if (isLitByHand(DO_LASER_ENABLE)) {
        touch();  // checking a long program takes long, and a stop would wait for it
        return;
    }
    checkProgram();
    if (lumo_arm) {
        beginReach();
        slices_.start();
    } else {
        emit checked();
    }
}

const Findings& ProgramCheck::checkNow() {
    rest_.stop();
    slices_.stop();
    isDue_ = false;
    checkProgram();
    if (lumo_arm) {
        beginReach();
        while (!reach_->advance(movesOfSlice)) {
        }
        takeReach();
    }
    emit checked();
    return findings_;
}

void ProgramCheck::checkProgram() {
    Findings findings =
        prog::checkProgram(ProgramTable::program(), m(key::param), m(key::port), CellFacts::ofHost());
    std::copy_if(findings_.begin(), findings_.end(), std::back_inserter(findings), isOfReach);
    take(std::move(findings));
}

void ProgramCheck::beginReach() {
    if (!reach_) {
        reach_ = std::make_unique<ReachCheck>(*lumo_arm);
    }
    reach_->begin(RunProgram(ProgramTable::program()));
}

void ProgramCheck::advanceReach() {
    if (isRunning()) {
        slices_.stop();
        isDue_ = true;
    } else if (reach_->advance(movesOfSlice)) {
        slices_.stop();
        takeReach();
        emit checked();
    }
}

void ProgramCheck::takeReach() {
    Findings findings = std::move(findings_);
    findings.erase(std::remove_if(findings.begin(), findings.end(), isOfReach), findings.end());
    findings.insert(findings.end(), reach_->findings().begin(), reach_->findings().end());
    take(std::move(findings));
}

// --- Following the lines --------------------------------------------------------------------------

void ProgramCheck::take(Findings findings) {
    findings_ = std::move(findings);
    std::stable_sort(findings_.begin(), findings_.end(), isBefore);
    index();
}

void ProgramCheck::index() {
    errors_ = 0;
    worst_.clear();
    for (const Finding& finding : findings_) {
        errors_ += finding.isError() ? 1 : 0;
        const auto known = worst_.constFind(finding.line);
        if (known == worst_.constEnd() || finding.isError()) {
            worst_.insert(finding.line, finding.severity);
        }
    }
    emit changed();
}

void ProgramCheck::linesAdded(int first, int count) {
    if (findings_.empty()) {
        return;
    }
    for (Finding& finding : findings_) {
        finding.line += finding.line >= first ? count : 0;
    }
    index();
}

void ProgramCheck::linesRemoved(int first, int count) {
    if (findings_.empty()) {
        return;
    }
    const auto isGone = [first, count](const Finding& finding) {
        return finding.line >= first && finding.line < first + count;
    };
    findings_.erase(std::remove_if(findings_.begin(), findings_.end(), isGone), findings_.end());
    for (Finding& finding : findings_) {
        finding.line -= finding.line >= first ? count : 0;
    }
    index();
}

void ProgramCheck::lineMoved(int from, int to) {
    const int passed = from < to ? -1 : 1;
    for (Finding& finding : findings_) {
        if (finding.line == from) {
            finding.line = to;
        } else if (finding.line >= std::min(from, to) && finding.line <= std::max(from, to)) {
            finding.line += passed;
        }
    }
    take(std::move(findings_));
}

void ProgramCheck::programReplaced() {
    if (!findings_.empty()) {
        take({});
    }
}

// --- What is shown --------------------------------------------------------------------------------

std::optional<Severity> ProgramCheck::worstAt(int line) const {
    const auto found = worst_.constFind(line);
    return found == worst_.constEnd() ? std::nullopt : std::make_optional(*found);
}

std::pair<ProgramCheck::Place, ProgramCheck::Place> ProgramCheck::findingsAt(int line) const {
    Finding sought;
    sought.line = line;
    return std::equal_range(findings_.begin(), findings_.end(), sought, isBefore);
}

bool ProgramCheck::isUntaught(int line) const {
    const auto [first, last] = findingsAt(line);
    return std::any_of(first, last, [](const Finding& finding) {
        return finding.fault == Fault::PointNotTaught || finding.fault == Fault::PointMissing;
    });
}

QString ProgramCheck::textAt(int line) const {
    const auto [first, last] = findingsAt(line);
    QStringList texts;
    for (auto finding = first; finding != last; ++finding) {
        texts << findingWithRemedy(*finding);
    }
    return texts.join(QLatin1Char('\n'));
}

QVariantList ProgramCheck::impossibleLines() const {
    QVariantList lines;
    for (const Finding& finding : findings_) {
        const Rule rule = finding.rule();
        const bool isOfPath =
            rule == Rule::Point || rule == Rule::Arc || rule == Rule::Circle || rule == Rule::Reach;
        if (isOfPath && finding.isError() && (lines.isEmpty() || lines.last() != finding.line)) {
            lines << finding.line;
        }
    }
    return lines;
}

}  // namespace lumo
