#include "app/scope/scoperow.h"

#include "mendo/modulemanager.h"
#include "program/ports.h"

#include <algorithm>
#include <set>

namespace app {

namespace {

ScopeRow rowOf(const workcell::CellSignals& cellSignals, int signal, const QString& label) {
    const workcell::CellSignal& source = cellSignals.all()[size_t(signal)];
    return {signal, source.name, label.isEmpty() ? source.name : label,
            source.kind == workcell::VcdWriter::Kind::Integer, false};
}

}  // namespace

double ScopeRow::level(double value) const {
    return analogue ? std::clamp(value / prog::analogueFullScale, 0.0, 1.0) : value;
}

QString ScopeRow::text(double value) const {
    if (!analogue) {
        return value != 0 ? QStringLiteral("1") : QStringLiteral("0");
    }
    return QStringLiteral("%1 %").arg(QString::number(value / prog::analogueFullScale * 100, 'f', 1));
}

std::vector<ScopeRow> rowsOf(const workcell::CellSignals& cellSignals, const SignalRecord& record) {
    std::vector<ScopeRow> rows;
    std::set<int> shown;
    const auto show = [&](int signal, const QString& label) {
        if (signal >= 0 && shown.insert(signal).second) {
            rows.push_back(rowOf(cellSignals, signal, label));
        }
    };
    show(cellSignals.indexOf(workcell::signalname::busy), ScopeRow::tr("程序运行"));
    const int emission = cellSignals.indexOf(workcell::signalname::emission);
    show(emission, ScopeRow::tr("激光出光"));
    const QList<mendo::ModuleObject*> ports = m(prog::key::port)->cmobjs();
    for (const mendo::ModuleObject* port : ports) {
        if (port->c(prog::field::enable)->getBool()) {
            show(cellSignals.indexOf(port->c(prog::field::name)->getString()),
                 port->c(prog::field::tag)->getString());
        }
    }
    std::set<int> changed;
    for (const SignalRecord::Change& change : record.changes()) {
        if (cellSignals.all()[size_t(change.signal)].source != workcell::CellSignal::Source::Run) {
            changed.insert(change.signal);
        }
    }
    for (const int signal : changed) {
        show(signal, {});
    }
    const int power =
        cellSignals.indexOf(m(prog::key::port)->c(AO_LASER_POWER)->c(prog::field::name)->getString());
    for (ScopeRow& row : rows) {
        row.laser = row.signal == emission || row.signal == power;
    }
    return rows;
}

}  // namespace app
