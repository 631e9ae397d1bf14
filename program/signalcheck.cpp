#include "program/signalcheck.h"

#include "program/fieldcheck.h"
#include "program/settingsrows.h"
#include "program/words.h"

#include "mendo/moduleobject.h"

#include <algorithm>

namespace prog {

namespace {

I_PORT portOf(int row) {
    return static_cast<I_PORT>(row);
}

QString wordOf(I_PORT port) {
    return portInfo(port).word;
}

bool isInput(I_PORT port) {
    return portInfo(port).kind == word::portInput;
}

/// Whether rows stand for the ports, each at its place.
bool fitsPorts(const Record& ports) {
    if (ports.size() != portCount) {
        return false;
    }
    for (int row = 0; row < portCount; ++row) {
        if (ports.at(row).at(field::type).text() != portInfo(portOf(row)).kind) {
            return false;
        }
    }
    return true;
}

/// Whether the controller has the signal; true where that is not known.
bool exists(const Signal& signal, bool mustWrite, const CellFacts& cell) {
    if (signal.isIo) {
        const std::optional<QSet<QString>>& names = mustWrite ? cell.outputs : cell.inputs;
        return !names || names->contains(signal.ioName);
    }
    if (!cell.registers) {
        return true;
    }
    const auto reg = cell.registers->constFind(signal.registerName);
    return reg != cell.registers->constEnd() && reg->isDigital && (reg->isWritable || !mustWrite) &&
           signal.bit >= 0 && signal.bit < reg->length;
}

}  // namespace

PortTable::PortTable(const Record& ports) {
    misfit_ = (ports.exists() && !ports.isList() && ports.size() > 0) ||
              (ports.isList() && ports.size() > 0 && !fitsPorts(ports));
    for (int i = 0; i < portCount; ++i) {
        const Port& port = portInfo(portOf(i));
        Row& row = rows_[static_cast<std::size_t>(i)];
        const Record record = ports.at(i);
        const Record name = record.at(field::name);
        const Record enable = record.at(field::enable);
        row.name = name.isMissing() ? QString(port.defaultName) : name.text();
        row.isUsed = enable.isMissing() ? port.isUsedByDefault : enable.flag();
        row.isDefault = row.name == port.defaultName && row.isUsed == port.isUsedByDefault;
        isSetUp_ = isSetUp_ || !row.isDefault;
        if (misfit_) {
            row.isUsed = false;
        } else if (!isInput(portOf(i)) && !row.name.isEmpty()) {
            const QString key = PortTarget::of(row.name).key();
            // Of two ports at one bit the one that is in use is told.
            if (row.isUsed || !outputs_.contains(key)) {
                outputs_.insert(key, i);
            }
        }
    }
}

int PortTable::portAt(const Signal& output) const {
    return output.isIo || output.registerName.isEmpty() ? -1 : outputs_.value(output.address(), -1);
}

PortTarget PortTarget::of(const QString& portName) {
    return {portName.section(QLatin1Char('.'), 0, 0),
            std::max(0, mendo::ModuleObject::indexOfRname(portName))};
}

QString PortTarget::key() const {
    return QStringLiteral("%1.#%2").arg(registerName).arg(element);
}

bool existsFor(I_PORT port, const QString& name, const CellFacts& cell) {
    if (!cell.registers) {
        return true;
    }
    const PortTarget target = PortTarget::of(name);
    const auto reg = cell.registers->constFind(target.registerName);
    const bool isDigital = portInfo(port).kind != word::portAnalog;
    return reg != cell.registers->constEnd() && reg->isDigital == isDigital &&
           (reg->isWritable || isInput(port)) && target.element < reg->length;
}

QString pathOf(const Signal& signal, const SignalFields& fields) {
    return signal.isIo ? QString(fields.ioName) : fields.reg + QLatin1Char('.') + field::name;
}

void checkOutput(const Signal& output, const QString& path, const PortTable& ports, const CellFacts& cell,
                 Collector* found) {
    const int port = ports.portAt(output);
    if (port >= 0) {
        const QVariantList arguments{output.text(), wordOf(portOf(port))};
        if (ports.row(portOf(port)).isUsed) {
            found->add(Fault::OutputOfEquipment, path, arguments);
        } else {
            found->warn(Fault::OutputOfEquipment, path, arguments);
        }
    } else if (!output.name().isEmpty() && !exists(output, true, cell)) {
        found->add(Fault::OutputUnknown, path, {output.text()});
    }
}

void checkInput(const Signal& input, const QString& path, const CellFacts& cell, Collector* found) {
    if (!input.name().isEmpty() && !exists(input, false, cell)) {
        found->add(Fault::InputUnknown, path, {input.text()});
    }
}

void PortNeeds::add(const LaserParams& set, int line) {
    constexpr double continuous = 1.0;
    const bool hasWire = set.wireSpeed > 0;
    const bool hasGas = set.preFlowMs > 0 || set.postFlowMs > 0;
    const std::pair<I_PORT, bool> needs[] = {
        {DO_LASER_ENABLE, true},
        {AO_LASER_POWER, true},
        {DO_GAS, hasGas},
        {AO_LASER_DUTY_CYCLE, set.ratio < continuous},
        {AO_LASER_FREQUENCY, set.ratio < continuous},
        {DO_WIRE_ENABLE, hasWire},
        {AO_WIRE_SPEED, hasWire},
        {DO_WIRE_PULLBACK, hasWire && set.pullbackEndMs > 0},
    };
    for (const auto& [port, isNeeded] : needs) {
        if (isNeeded) {
            need(port, line);
        }
    }
}

void PortNeeds::need(I_PORT port, int line) {
    const PortTable::Row& row = ports_.row(port);
    bool& told = told_.at(static_cast<std::size_t>(port));
    if (told || ports_.isMisfit()) {
        return;
    }
    found_.lookAt(port, line);
    if (!row.isUsed && ports_.isSetUp()) {
        found_.add(Fault::PortOutOfUse, field::enable, {wordOf(port), line + 1});
        told = true;
    } else if (row.isUsed && row.isDefault && !existsFor(port, row.name, cell_)) {
        found_.add(Fault::PortNowhere, field::name, {wordOf(port), row.name});
        told = true;
    }
}

Findings checkPorts(const Record& ports, const CellFacts& cell) {
    Collector found(Document::Ports);
    const PortTable table(ports);
    if (table.isMisfit() && ports.size() != portCount) {
        found.add(Fault::PortRows, {}, {ports.size(), portCount});
    }
    static const FieldShape shape({&portFields()});
    QHash<QString, int> outputs, inputs;
    for (int i = 0; i < std::min(ports.size(), portCount); ++i) {
        const I_PORT port = portOf(i);
        const PortTable::Row& row = table.row(port);
        found.lookAt(i);
        if (!ports.at(i).isMap()) {
            found.add(Fault::NoRecord);
            continue;
        }
        shape.check(ports.at(i), Source::Any, {}, &found);
        const QString kind = ports.at(i).at(field::type).text();
        if (!kind.isEmpty() && kind != portInfo(port).kind) {
            found.add(Fault::PortOfAnotherKind, field::type, {wordOf(port), QString(portInfo(port).kind)});
        }
        if (!row.isUsed) {
            continue;
        }
        if (row.name.isEmpty()) {
            found.add(Fault::PortNotAssigned, field::name, {wordOf(port)});
            continue;
        }
        QHash<QString, int>& taken = isInput(port) ? inputs : outputs;
        const QString key = PortTarget::of(row.name).key();
        const int other = taken.value(key, -1);
        if (other >= 0) {
            found.add(Fault::PortsShare, field::name, {wordOf(port), wordOf(portOf(other)), row.name});
        } else if (!row.isDefault && !existsFor(port, row.name, cell)) {
            found.add(Fault::PortNowhere, field::name, {wordOf(port), row.name});
        }
        taken.insert(key, i);
    }
    return found.take();
}

Findings checkStations(const Record& stations, const Record& ports, const CellFacts& cell) {
    Collector found(Document::Stations);
    const PortTable table(ports);
    static const FieldShape shape({&stationFields()});
    QHash<QString, QString> starts;
    for (int i = 0; i < stations.size(); ++i) {
        const Record station = stations.at(i);
        found.lookAt(i);
        if (!station.isMap()) {
            found.add(Fault::NoRecord);
            continue;
        }
        const Signal start = Signal::from(station, startInput);
        shape.check(station, start.isIo ? Source::Io : Source::Register, {}, &found);
        const QString startPath = pathOf(start, startInput);
        const QString name = station.at(field::stationName).text();
        if (start.name().isEmpty()) {
            found.add(Fault::StationNoInput, startPath);
        } else if (starts.contains(start.address())) {
            found.add(Fault::StationSameInput, startPath, {start.text(), starts.value(start.address())});
        }
        starts.insert(start.address(), name);
        const Signal stop = Signal::from(station, stopInput);
        for (const auto& [input, edge, fields] : {std::make_tuple(start, field::type, startInput),
                                                  std::make_tuple(stop, "type2"_l1, stopInput)}) {
            const QString word = station.at(edge).text();
            if (!input.name().isEmpty() && !isEdgeWord(word)) {
                found.add(Fault::StationEdge, edge, {word});
            }
            checkInput(input, pathOf(input, fields), cell, &found);
        }
        for (const SignalFields& fields : {startOutput, stopOutput}) {
            const Signal output = Signal::from(station, fields);
            checkOutput(output, pathOf(output, fields), table, cell, &found);
        }
        if (station.at(field::filePath).text().isEmpty()) {
            found.add(Fault::StationNoProject, field::filePath);
        }
    }
    return found.take();
}

}  // namespace prog
