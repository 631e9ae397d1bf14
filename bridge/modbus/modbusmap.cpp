#include "bridge/modbus/modbusmap.h"

#include "json/jsonfile.h"
#include "json/jsonreader.h"

#include <QMap>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <limits>

namespace bridge {

namespace {

using Kind = mendo::FileProblem::Kind;
using Table = QModbusDataUnit::RegisterType;

constexpr int bitsOfWord = 16;
constexpr int addresses = 65536;
constexpr int longestMs = 60000;

struct TableRow {
    const char* word;
    Table table;
    bool isBits, isWritable;
};
constexpr TableRow tables[] = {
    {"coil", QModbusDataUnit::Coils, true, true},
    {"discrete_input", QModbusDataUnit::DiscreteInputs, true, false},
    {"holding_register", QModbusDataUnit::HoldingRegisters, false, true},
    {"input_register", QModbusDataUnit::InputRegisters, false, false},
};

/// An entry of `registers` or `signals`, as the file has it.
struct Entry {
    const TableRow* table = nullptr;
    int address = -1, length = 1, bit = -1, pollMs = 0;
    double scale = 1;
    std::optional<bool> isOutput;
    mendo::TextPlace place;

    bool isBit() const { return table->isBits || bit >= 0; }
};

bool comesBefore(const mendo::TextPlace& one, const mendo::TextPlace& other) {
    return std::make_pair(one.line, one.column) < std::make_pair(other.line, other.column);
}

/// "DI3" for "DI1" and 2; nothing for a name without a number at its end.
QString counted(const QString& name, int steps) {
    int digits = name.size();
    while (digits > 0 && name.at(digits - 1).isDigit()) {
        --digits;
    }
    bool isNumber = false;
    const int first = name.mid(digits).toInt(&isNumber);
    return isNumber ? name.left(digits) + QString::number(first + steps) : QString();
}

}  // namespace

QString ModbusElement::label() const {
    return kind == SignalRow::Kind::Register && isInRegister ? QStringLiteral("%1.#%2").arg(name).arg(bias)
                                                             : name;
}

std::optional<quint16> ModbusElement::toDevice(int value) const {
    if (isBit) {
        return value == 0 || value == 1 ? std::optional<quint16>(quint16(value)) : std::nullopt;
    }
    const double scaled = std::round(value * scale);
    using Limits = std::numeric_limits<qint16>;
    return scaled >= Limits::min() && scaled <= Limits::max()
               ? std::optional<quint16>(quint16(qint16(scaled)))
               : std::nullopt;
}

int ModbusElement::fromDevice(quint16 word) const {
    if (isBit) {
        return bit < 0 ? int(word != 0) : (word >> bit) & 1;
    }
    using Limits = std::numeric_limits<qint16>;
    return int(std::clamp<double>(std::round(qint16(word) / scale), Limits::min(), Limits::max()));
}

QString ModbusMap::place() const {
    return QStringLiteral("%1:%2").arg(host).arg(port);
}

/// Reads the document from the top down and stops at the first fault.
class ModbusMapReader : private mendo::JsonReader {
public:
    using JsonReader::JsonReader;

    bool read(ModbusMap* map) {
        map_ = map;
        if (const std::optional<mendo::JsonText::Duplicate> twice = text().duplicateInObject()) {
            return failAt(twice->place, QStringLiteral("'%1' is there twice").arg(twice->path));
        }
        const bool isRead = readObject(text().value(), [this](const QString& key, const QJsonValue& value) {
            return readTop(key, value);
        });
        return isRead && (!map->host.isEmpty() || missing(QStringLiteral("host"))) && place();
    }

private:
    bool readTop(const QString& key, const QJsonValue& value) {
        if (key == QLatin1String("host")) {
            map_->host = value.toString();
            return !map_->host.isEmpty() || fail(Kind::NoText);
        }
        if (key == QLatin1String("registers")) {
            return readEntries(value, &registers_);
        }
        if (key == QLatin1String("signals")) {
            return readEntries(value, &signals_);
        }
        if (key == QLatin1String("heartbeat")) {
            return readHeartbeat(value);
        }
        const struct {
            const char* key;
            int least, most;
            int* target;
        } numbers[] = {
            {"port", 1, addresses - 1, &map_->port},         {"unit", 0, 255, &map_->unit},
            {"timeout_ms", 10, longestMs, &map_->timeoutMs}, {"connect_ms", 10, longestMs, &map_->connectMs},
            {"late_ms", 10, longestMs, &map_->lateMs},       {"poll_ms", 1, longestMs, &pollMs_}};
        for (const auto& number : numbers) {
            if (key == QLatin1String(number.key)) {
                return whole(value, number.least, number.most, number.target);
            }
        }
        return fail(Kind::UnknownField);
    }

    bool readHeartbeat(const QJsonValue& value) {
        ModbusMap::Heartbeat beat{-1, 0, 0};
        const bool isRead = readObject(value, [&](const QString& key, const QJsonValue& number) {
            if (key == QLatin1String("address")) {
                return whole(number, 0, addresses - 1, &beat.address);
            }
            if (key == QLatin1String("watchdog_ms")) {
                return whole(number, 1, longestMs, &beat.watchdogMs);
            }
            return key == QLatin1String("period_ms") ? whole(number, 1, longestMs, &beat.periodMs)
                                                     : fail(Kind::UnknownField);
        });
        if (isRead && (beat.address < 0 || beat.periodMs == 0)) {
            return missing(beat.address < 0 ? QStringLiteral("address") : QStringLiteral("period_ms"));
        }
        map_->heartbeat = beat;
        return isRead;
    }

    bool readEntries(const QJsonValue& value, QMap<QString, Entry>* entries) {
        return readObject(value, [&](const QString& name, const QJsonValue& fields) {
            Entry& entry = (*entries)[name];
            entry.place = text().place(keys());
            const bool isRead = readObject(fields, [&](const QString& key, const QJsonValue& field) {
                return readField(key, field, &entry);
            });
            if (isRead && (!entry.table || entry.address < 0)) {
                return missing(entry.table ? QStringLiteral("address") : QStringLiteral("table"));
            }
            return isRead && fits(entry);
        });
    }

    bool readField(const QString& key, const QJsonValue& value, Entry* entry) {
        if (key == QLatin1String("table")) {
            const auto* found = std::find_if(std::begin(tables), std::end(tables), [&](const TableRow& row) {
                return value.toString() == QLatin1String(row.word);
            });
            entry->table = found == std::end(tables) ? nullptr : found;
            return entry->table || fail(QStringLiteral("'table' is none of coil, discrete_input, "
                                                       "holding_register, input_register"));
        }
        if (key == QLatin1String("direction")) {
            entry->isOutput = value.toString() == QLatin1String("out");
            return *entry->isOutput || value.toString() == QLatin1String("in") ||
                   fail(QStringLiteral("'direction' is neither \"in\" nor \"out\""));
        }
        if (key == QLatin1String("scale")) {
            entry->scale = value.toDouble();
            return entry->scale != 0 || fail(QStringLiteral("'scale' is no number other than 0"));
        }
        if (key == QLatin1String("address")) {
            return whole(value, 0, addresses - 1, &entry->address);
        }
        if (key == QLatin1String("bit")) {
            return whole(value, 0, bitsOfWord - 1, &entry->bit);
        }
        if (key == QLatin1String("length")) {
            return whole(value, 1, addresses, &entry->length);
        }
        return key == QLatin1String("poll_ms") ? whole(value, 1, longestMs, &entry->pollMs)
                                               : fail(Kind::UnknownField);
    }

    /// Whether the fields of an entry go together.
    bool fits(const Entry& entry) {
        if (entry.table->isBits && entry.bit >= 0) {
            return failIn(QStringLiteral("bit"), QStringLiteral("'bit' is for registers of the device only"));
        }
        if (entry.isBit() && entry.scale != 1) {
            return failIn(QStringLiteral("scale"), QStringLiteral("'scale' is for numbers only"));
        }
        if (entry.isOutput.value_or(false) && !entry.table->isWritable) {
            return failIn(
                QStringLiteral("direction"),
                QStringLiteral("a device's %1 cannot be written").arg(QLatin1String(entry.table->word)));
        }
        const int last = entry.bit < 0 ? entry.length - 1 : (entry.bit + entry.length - 1) / bitsOfWord;
        return entry.address + last < addresses ||
               failIn(QStringLiteral("length"), QStringLiteral("the addresses end at 65535"));
    }

    /// Places all entries, in the file's order.
    bool place() {
        QVector<QPair<QString, SignalRow::Kind>> names;
        for (const QString& name : registers_.keys()) {
            names.append({name, SignalRow::Kind::Register});
        }
        for (const QString& name : signals_.keys()) {
            names.append({name, SignalRow::Kind::Input});
        }
        const auto entryOf = [this](const QPair<QString, SignalRow::Kind>& name) {
            return name.second == SignalRow::Kind::Register ? registers_[name.first] : signals_[name.first];
        };
        std::sort(names.begin(), names.end(), [&](const auto& one, const auto& other) {
            return comesBefore(entryOf(one).place, entryOf(other).place);
        });
        if (map_->heartbeat) {
            written_.insert({QModbusDataUnit::HoldingRegisters, map_->heartbeat->address, -1},
                            QStringLiteral("the heartbeat"));
        }
        return std::all_of(names.begin(), names.end(), [&](const auto& name) {
            return name.second == SignalRow::Kind::Register ? placeRegister(name.first, entryOf(name))
                                                            : placeSignals(name.first, entryOf(name));
        });
    }

    bool placeRegister(const QString& name, const Entry& entry) {
        const bool isOutput = entry.isOutput.value_or(entry.table->isWritable);
        map_->rows.append({SignalRow::Kind::Register, name,
                           entry.isBit() ? QStringLiteral("bit") : QStringLiteral("int16"), isOutput,
                           entry.length});
        for (int i = 0; i < entry.length; ++i) {
            ModbusElement element = elementOf(entry, i);
            element.name = name;
            element.bias = i;
            element.isInRegister = element.isBit || entry.length > 1;
            if (!add(element, entry)) {
                return false;
            }
        }
        return true;
    }

    bool placeSignals(const QString& name, const Entry& entry) {
        if (!entry.isBit()) {
            return failAt(entry.place, QStringLiteral("'%1' is one bit: 'bit' is missing").arg(name));
        }
        for (int i = 0; i < entry.length; ++i) {
            ModbusElement element = elementOf(entry, i);
            element.kind = element.isOutput ? SignalRow::Kind::Output : SignalRow::Kind::Input;
            element.name = entry.length == 1 ? name : counted(name, i);
            const bool isTaken = signalNames_.contains(element.name);
            signalNames_.insert(element.name);
            if (element.name.isEmpty() || isTaken) {
                return failAt(entry.place,
                              isTaken ? QStringLiteral("'%1' is there twice").arg(element.name)
                                      : QStringLiteral("'%1' ends in no number to count from").arg(name));
            }
            map_->rows.append({element.kind, element.name, QString(), element.isOutput, 1});
            if (!add(element, entry)) {
                return false;
            }
        }
        return true;
    }

    ModbusElement elementOf(const Entry& entry, int i) const {
        ModbusElement element;
        element.isOutput = entry.isOutput.value_or(entry.table->isWritable);
        element.isBit = entry.isBit();
        element.table = entry.table->table;
        element.address = entry.address + (entry.bit < 0 ? i : (entry.bit + i) / bitsOfWord);
        element.bit = entry.bit < 0 ? -1 : (entry.bit + i) % bitsOfWord;
        element.scale = entry.scale;
        element.pollMs = entry.pollMs > 0 ? entry.pollMs : pollMs_;
        return element;
    }

    /// Two outputs on one cell of the device would overwrite each other.
    bool add(const ModbusElement& element, const Entry& entry) {
        const Cell cell{element.table, element.address, element.bit};
        if (element.isOutput) {
            for (const int bit : {element.bit, -1}) {
                if (written_.contains({cell.table, cell.address, bit})) {
                    return sharedCell(element, entry, written_[{cell.table, cell.address, bit}]);
                }
            }
            const auto next = written_.lowerBound({cell.table, cell.address, -1});
            if (element.bit < 0 && next != written_.end() && next.key().table == cell.table &&
                next.key().address == cell.address) {
                return sharedCell(element, entry, *next);
            }
            written_.insert(cell, element.label());
        }
        map_->elements.push_back(element);
        return true;
    }

    bool sharedCell(const ModbusElement& element, const Entry& entry, const QString& other) {
        return failAt(entry.place, QStringLiteral("%1 and %2 are written to the same address %3")
                                       .arg(other, element.label())
                                       .arg(element.address));
    }

    bool whole(const QJsonValue& value, int least, int most, int* target) {
        const double number = value.toDouble(least - 1.0);
        if (number < least || number > most || number != std::floor(number)) {
            return fail(QStringLiteral("'%1' is no whole number from %2 to %3")
                            .arg(keys().last())
                            .arg(least)
                            .arg(most));
        }
        *target = int(number);
        return true;
    }

    using JsonReader::fail;
    bool fail(const QString& words) { return fail(Kind::OtherFault, {words}); }
    bool missing(const QString& key) { return fail(Kind::FieldMissing, {key}); }
    bool failIn(const QString& key, const QString& words) {
        return failAt(text().place(keys() + QStringList(key)), words);
    }
    bool failAt(const mendo::TextPlace& place, const QString& words) {
        return JsonReader::failAt(place, {Kind::OtherFault, {words}});
    }

    struct Cell {
        Table table;
        int address, bit;
        bool operator<(const Cell& other) const {
            return std::tie(table, address, bit) < std::tie(other.table, other.address, other.bit);
        }
    };

    ModbusMap* map_ = nullptr;
    int pollMs_ = 20;
    QMap<QString, Entry> registers_, signals_;
    QSet<QString> signalNames_;    ///< of single inputs and outputs
    QMap<Cell, QString> written_;  ///< which output is written to a cell
};

std::optional<ModbusMap> ModbusMap::read(const QString& file, mendo::FileProblem* problem) {
    problem->file = file;
    const std::optional<mendo::JsonText> text = mendo::readJsonFile(file, problem);
    return text ? from(*text, problem) : std::nullopt;
}

QString ModbusMap::shown(const mendo::FileProblem& problem) {
    const auto& [line, column] = problem.place;
    const QString place = line > 0 ? QStringLiteral(":%1:%2").arg(line).arg(column) : QString();
    return problem.file + place + QStringLiteral(": ") + problem.text();
}

std::optional<ModbusMap> ModbusMap::from(const mendo::JsonText& text, mendo::FileProblem* problem) {
    ModbusMap map;
    return ModbusMapReader(text, problem).read(&map) ? std::optional<ModbusMap>(map) : std::nullopt;
}

}  // namespace bridge
