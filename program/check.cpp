#include "program/check.h"

#include "program/collector.h"
#include "program/fieldcheck.h"
#include "program/parameters.h"
#include "program/settingsrows.h"
#include "program/signalcheck.h"
#include "program/weldcheck.h"
#include "program/words.h"

#include "kord/kordservice.h"
#include "mendo/modulemanager.h"

#include <algorithm>
#include <cmath>

namespace prog {

namespace {

std::optional<QSet<QString>> namesIn(QLatin1String group) {
    QSet<QString> names;
    for (const mendo::ModuleObject* signal : kordservice()->get(nullptr, key::deviceIo, group)->cmobjs()) {
        names.insert(signal->name());
    }
    return names.isEmpty() ? std::nullopt : std::make_optional(names);
}

std::optional<QHash<QString, RegisterFacts>> registersOfHost() {
    QHash<QString, RegisterFacts> registers;
    for (const mendo::ModuleObject* entry : m(key::registerList)->cmobjs()) {
        const QString type = entry->c(field::type)->getString();
        registers.insert(entry->c(field::name)->getString(),
                         {type == "bit"_l1 || type == "bool"_l1,
                          entry->c(field::rw)->getString() == "rdwr"_l1, entry->c(field::len)->getInt(1)});
    }
    return registers.isEmpty() ? std::nullopt : std::make_optional(registers);
}

/// The statement's copies of two values of its parameter set, which the table shows.
void checkCopies(const Record& record, int set, const Record& sets, Collector* found) {
    constexpr std::pair<QLatin1String, QLatin1String> copies[] = {{field::laserPower, field::power},
                                                                  {field::laserDutyCycle, field::ratio}};
    constexpr double same = 1e-9;
    if (set < 0 || set >= sets.size()) {
        return;
    }
    const Record values = sets.at(set);
    for (const auto& [copy, original] : copies) {
        const Record own = record.at(copy);
        if (own.isMissing() || own.isMap() || own.isList()) {
            continue;
        }
        const double shown = own.number();
        const double used = values.at(original).number();
        if (std::abs(shown - used) > same) {
            found->add(Fault::CopyDiffers, copy, {QString(copy), shown, used});
        }
    }
}

void checkSignals(const Statement& statement, const PortTable& ports, const CellFacts& cell,
                  Collector* found) {
    const Signal& signal = statement.signal;
    if (statement.type == StatementType::SetDO) {
        const QString path = pathOf(signal, setOutput);
        if (signal.name().isEmpty()) {
            found->add(Fault::OutputNotChosen, path);
        }
        checkOutput(signal, path, ports, cell, found);
    } else if (statement.type == StatementType::WaitDI) {
        const QString path = pathOf(signal, awaitedInput);
        if (signal.name().isEmpty()) {
            found->add(Fault::InputNotChosen, path);
        }
        checkInput(signal, path, cell, found);
    }
}

void checkToolset(const Record& program, int element, Collector* found) {
    static const FieldShape shape({&toolsetFields()});
    if (element >= 0) {
        found->lookAt(element);
        shape.check(program.at(element), Source::Any, {}, found);
    }
}

/// The rules of each line by itself.
void checkLine(const Record& record, const Statement& statement, const FieldLimits& limits,
               const Record& sets, const PortTable& ports, const CellFacts& cell, Collector* found) {
    if (!record.isMap()) {
        found->add(Fault::NoStatement);
        return;
    }
    const FieldShape* const shape = statementShape(statement.word);
    if (!shape) {
        const Fault fault = typeFault(record).value_or(Fault::TypeUnknown);
        found->add(fault, field::type, {statement.word});
        return;
    }
    shape->check(record, statement.signal.isIo ? Source::Io : Source::Register, limits, found);
    if (statement.type == StatementType::Open || statement.type == StatementType::Param) {
        checkCopies(record, statement.set, sets, found);
    }
    checkSignals(statement, ports, cell, found);
}

}  // namespace

Findings Collector::take() {
    std::stable_sort(findings_.begin(), findings_.end(),
                     [](const Finding& a, const Finding& b) { return a.element < b.element; });
    return std::move(findings_);
}

CellFacts CellFacts::ofHost() {
    CellFacts cell;
    cell.inputs = namesIn(word::portInput);
    cell.outputs = namesIn(word::portOutput);
    cell.registers = registersOfHost();
    cell.axes = kordservice()->get(nullptr, key::sysInfo, field::jointNum)->getInt(0);
    return cell;
}

std::optional<Fault> typeFault(const Record& statement) {
    const Record type = statement.at(field::type);
    if (type.isMissing()) {
        return Fault::TypeMissing;
    }
    if (type.value().userType() != QMetaType::QString) {
        return Fault::TypeIsNoText;
    }
    if (type.text().isEmpty()) {
        return Fault::TypeIsEmpty;
    }
    return statementRow(type.text()) ? std::nullopt : std::make_optional(Fault::TypeUnknown);
}

Findings checkProgram(const Record& program, const Record& sets, const Record& ports, const CellFacts& cell,
                      const ArmModel* arm) {
    const ProgramLines lines(program);
    const RunProgram values(lines);
    const std::vector<LaserParams> params = LaserParams::allFrom(sets);
    const PortTable table(ports);
    FieldLimits limits;
    limits.highestSpeedMmPerS = cell.highestSpeedMmPerS;
    limits.sets = static_cast<int>(params.size());
    limits.axes = cell.axes;
    Collector found(Document::Project);
    for (int line = 0; line < values.lineCount(); ++line) {
        found.lookAt(lines.elementOf(line), line, values.isExecuted(line));
        checkLine(lines.statement(line), values.statement(line), limits, sets, table, cell, &found);
    }
    checkToolset(program, lines.toolset(), &found);
    PortNeeds needs(table, cell);
    WeldCheck(values, lines.elements(), params, cell, &needs, &found).walk();
    Findings all = found.take();
    const Findings ofPorts = needs.take();
    all.insert(all.end(), ofPorts.begin(), ofPorts.end());
    for (Finding& finding : arm ? checkReach(values, *arm) : Findings()) {
        finding.element = lines.elementOf(finding.line);
        all.push_back(finding);
    }
    return all;
}

Findings checkParameters(const Record& sets) {
    Collector found(Document::Parameters);
    static const FieldShape shape({&parameterFields()});
    for (int i = 0; i < sets.size(); ++i) {
        const Record set = sets.at(i);
        found.lookAt(i);
        if (!set.isMap()) {
            found.add(Fault::NoRecord);
            continue;
        }
        shape.check(set, Source::Any, {}, &found);
        for (const ParameterRow& row : parameterRows()) {
            const double value = set.at(row.name).number();
            if (value > row.most()) {
                found.add(Fault::OutOfRange, row.name, {QString(row.name), value, 0, row.most()});
            }
        }
    }
    return found.take();
}

}  // namespace prog
