#include "simulator/signalboard.h"

#include <algorithm>

namespace sim {

using Row = bridge::SignalRow;

namespace {

constexpr int deviceSignals = 16;

struct Register {
    const char* name;
    const char* type;
    bool writable;
    int length;
};

// The registers of the welding equipment, then of other machines in the cell.
constexpr Register registers[] = {
    {"LUMO_DI", "bit", false, 16},   {"LUMO_DO", "bit", true, 16},     {"LUMO_AO_0", "int16", true, 1},
    {"LUMO_AO_1", "int16", true, 1}, {"LUMO_AO_2", "int16", true, 1},  {"LUMO_AO_3", "int16", true, 1},
    {"LUMO_AO_4", "int16", true, 1}, {"LUMO_AO_5", "int16", true, 1},  {"LUMO_AO_6", "int16", true, 1},
    {"LUMO_AO_7", "int16", true, 1}, {"FIXTURE_DI", "bit", false, 8},  {"FIXTURE_DO", "bit", true, 8},
    {"PLC_READY", "bool", false, 1}, {"PLC_REQUEST", "bool", true, 1}, {"TABLE_DI", "bool", false, 4},
    {"TABLE_DO", "bool", true, 4},   {"PART_NUMBER", "int", false, 1}, {"PART_COUNT", "int", true, 2},
};

}  // namespace

QVector<Row> SignalBoard::rows() const {
    QVector<Row> rows;
    for (const auto& [kind, group] : {std::pair(Row::Kind::Input, "DI"), {Row::Kind::Output, "DO"}}) {
        for (int i = 1; i <= deviceSignals; ++i) {
            rows.append({kind, QStringLiteral("%1%2").arg(QLatin1String(group)).arg(i), {}, false, 1});
        }
    }
    for (const Register& entry : registers) {
        rows.append({Row::Kind::Register, QLatin1String(entry.name), QLatin1String(entry.type),
                     entry.writable, entry.length});
    }
    return rows;
}

void SignalBoard::write(const QVector<bridge::SignalWrite>&, int ticket) {
    emit written(ticket, true);
}

bool SignalBoard::setInput(const QString& name, bool value) {
    const int hash = name.indexOf(QLatin1String(".#"));
    const QString base = hash < 0 ? name : name.left(hash);
    bool isNumber = hash < 0;
    const int bias = hash < 0 ? 0 : name.mid(hash + 2).toInt(&isNumber);
    const QVector<Row> all = rows();
    const auto row = std::find_if(all.begin(), all.end(), [&](const Row& r) {
        const bool isRegister = r.kind == Row::Kind::Register && !r.writable && hash >= 0 &&
                                (r.type == QLatin1String("bit") || r.type == QLatin1String("bool"));
        return r.name == base && (isRegister || (r.kind == Row::Kind::Input && hash < 0));
    });
    if (!isNumber || row == all.end() || bias < 0 || bias >= row->length) {
        return false;
    }
    emit changed(row->kind, base, bias, value ? 1 : 0);
    return true;
}

}  // namespace sim
