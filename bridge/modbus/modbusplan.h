#pragma once

#include "bridge/modbus/modbusmap.h"

#include <QHash>
#include <QModbusDataUnit>

#include <vector>

namespace bridge {

/// A value for an element, by its place in ModbusMap::elements.
struct ModbusOrder {
    int element = 0;
    int value = 0;  ///< the package's
};

/// Neighbouring elements that one telegram writes, never empty: coils or registers with ascending addresses,
/// or bits of one register.
using ModbusWrite = std::vector<ModbusOrder>;

/// Registers read by one telegram.
struct ModbusPoll {
    QModbusDataUnit unit;  ///< table, first address, count
    int periodMs = 0;
    std::vector<int> elements;  ///< that lie in it
};

/// What the device's registers hold by its own answers, where outputs are bits of them.
using ModbusWords = QHash<int, quint16>;

/// Puts orders into telegrams, in their order: one joins the telegram before it only where it is the next
/// neighbour.
[[nodiscard]] std::vector<ModbusWrite> writesOf(const ModbusMap& map, const std::vector<ModbusOrder>& orders);
/// All outputs off: coils, then registers.
[[nodiscard]] std::vector<ModbusWrite> writesOff(const ModbusMap& map);
/// The telegram of a write whose values all fit. Other bits of a register keep what `words` has, 0 if
/// nothing.
[[nodiscard]] QModbusDataUnit unitOf(const ModbusMap& map, const ModbusWrite& write,
                                     const ModbusWords& words);

/// The telegrams that read all inputs: neighbours with one period in one. For a map without inputs the first
/// output, so that a lost connection is noticed.
[[nodiscard]] std::vector<ModbusPoll> pollsOf(const ModbusMap& map);

}  // namespace bridge
