#include "bridge/modbus/modbusplan.h"

#include <algorithm>
#include <tuple>

namespace bridge {

namespace {

// The most that one telegram of the protocol holds.
constexpr int coilsWritten = 1968;
constexpr int registersWritten = 123;
constexpr int bitsRead = 2000;
constexpr int registersRead = 125;

/// Where nothing is polled.
constexpr int watchMs = 500;

bool isBits(QModbusDataUnit::RegisterType table) {
    return table == QModbusDataUnit::Coils || table == QModbusDataUnit::DiscreteInputs;
}

bool joins(const ModbusMap& map, const ModbusWrite& write, const ModbusElement& next) {
    const ModbusElement& last = map.elements[std::size_t(write.back().element)];
    if (last.table != next.table || (last.bit < 0) != (next.bit < 0)) {
        return false;
    }
    if (next.bit < 0) {
        const int most = isBits(next.table) ? coilsWritten : registersWritten;
        return next.address == last.address + 1 && int(write.size()) < most;
    }
    return next.address == last.address && std::none_of(write.begin(), write.end(), [&](const auto& order) {
               return map.elements[std::size_t(order.element)].bit == next.bit;
           });
}

auto placeOf(const ModbusElement& element) {
    return std::make_tuple(element.table, element.address, element.bit);
}

/// The inputs or outputs, by table and address.
std::vector<int> sorted(const ModbusMap& map, bool isOutput) {
    std::vector<int> found;
    for (int i = 0; i < int(map.elements.size()); ++i) {
        if (map.elements[std::size_t(i)].isOutput == isOutput) {
            found.push_back(i);
        }
    }
    std::sort(found.begin(), found.end(), [&map](int one, int other) {
        return placeOf(map.elements[std::size_t(one)]) < placeOf(map.elements[std::size_t(other)]);
    });
    return found;
}

/// Whether the element could be read by the telegram too, which becomes longer.
bool extend(ModbusPoll* poll, const ModbusElement& element) {
    const int end = poll->unit.startAddress() + int(poll->unit.valueCount());
    const int most = isBits(element.table) ? bitsRead : registersRead;
    if (poll->unit.registerType() != element.table || poll->periodMs != element.pollMs ||
        element.address > end || (element.address == end && int(poll->unit.valueCount()) == most)) {
        return false;
    }
    if (element.address == end) {
        // Not setValueCount(): Qt returns as many values as the unit has.
        const auto count = quint16(poll->unit.valueCount() + 1);
        poll->unit = QModbusDataUnit(element.table, poll->unit.startAddress(), count);
    }
    return true;
}

}  // namespace

std::vector<ModbusWrite> writesOf(const ModbusMap& map, const std::vector<ModbusOrder>& orders) {
    std::vector<ModbusWrite> writes;
    for (const ModbusOrder& order : orders) {
        if (writes.empty() || !joins(map, writes.back(), map.elements[std::size_t(order.element)])) {
            writes.emplace_back();
        }
        writes.back().push_back(order);
    }
    return writes;
}

std::vector<ModbusWrite> writesOff(const ModbusMap& map) {
    std::vector<ModbusOrder> orders;
    for (const int element : sorted(map, true)) {
        orders.push_back({element, 0});
    }
    return writesOf(map, orders);
}

QModbusDataUnit unitOf(const ModbusMap& map, const ModbusWrite& write, const ModbusWords& words) {
    const ModbusElement& first = map.elements[std::size_t(write.front().element)];
    if (first.bit < 0) {
        QVector<quint16> values;
        for (const ModbusOrder& order : write) {
            values.append(map.elements[std::size_t(order.element)].toDevice(order.value).value_or(0));
        }
        return QModbusDataUnit(first.table, first.address, values);
    }
    quint16 word = words.value(first.address);
    for (const ModbusOrder& order : write) {
        const auto mask = quint16(1U << map.elements[std::size_t(order.element)].bit);
        word = order.value ? quint16(word | mask) : quint16(word & ~mask);
    }
    return QModbusDataUnit(first.table, first.address, QVector<quint16>{word});
}

std::vector<ModbusPoll> pollsOf(const ModbusMap& map) {
    std::vector<ModbusPoll> polls;
    for (const int i : sorted(map, false)) {
        const ModbusElement& element = map.elements[std::size_t(i)];
        const auto found = std::find_if(polls.begin(), polls.end(),
                                        [&](ModbusPoll& poll) { return extend(&poll, element); });
        if (found != polls.end()) {
            found->elements.push_back(i);
        } else {
            polls.push_back({QModbusDataUnit(element.table, element.address, 1), element.pollMs, {i}});
        }
    }
    if (polls.empty() && !map.elements.empty()) {
        const ModbusElement& output = map.elements.front();
        polls.push_back({QModbusDataUnit(output.table, output.address, 1), watchMs, {}});
    }
    return polls;
}

}  // namespace bridge
