#include "bridge/linuxcnc/halport.h"

#include <QJsonArray>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace bridge::linuxcnc {

namespace {

constexpr int beatMs = 10;      // HAL waits 80 ms; a busy machine may delay one beat by some 60 ms
constexpr int silenceMs = 300;  // of the answers to beats
constexpr int digitalPins = 45, wordPins = 10;

/// A register, or a group of sixteen inputs or outputs ("DI" for DI1 to DI16), and its first pin.
struct Group {
    const char* name;
    const char* type;  ///< empty for inputs and outputs
    bool isOutput;
    int length;
    const char* pins;  ///< "di", "do", "ai" or "ao"
    int first;
};

constexpr Group groups[] = {
    {"DI", "", false, 16, "di", 16},           {"DO", "", true, 16, "do", 16},
    {"LUMO_DI", "bit", false, 16, "di", 0},    {"LUMO_DO", "bit", true, 16, "do", 0},
    {"LUMO_AO_0", "int16", true, 1, "ao", 0},  {"LUMO_AO_1", "int16", true, 1, "ao", 1},
    {"LUMO_AO_2", "int16", true, 1, "ao", 2},  {"LUMO_AO_3", "int16", true, 1, "ao", 3},
    {"LUMO_AO_4", "int16", true, 1, "ao", 4},  {"LUMO_AO_5", "int16", true, 1, "ao", 5},
    {"LUMO_AO_6", "int16", true, 1, "ao", 6},  {"LUMO_AO_7", "int16", true, 1, "ao", 7},
    {"FIXTURE_DI", "bit", false, 8, "di", 32}, {"FIXTURE_DO", "bit", true, 8, "do", 32},
    {"PLC_READY", "bool", false, 1, "di", 40}, {"PLC_REQUEST", "bool", true, 1, "do", 40},
    {"TABLE_DI", "bool", false, 4, "di", 41},  {"TABLE_DO", "bool", true, 4, "do", 41},
    {"PART_NUMBER", "int", false, 1, "ai", 0}, {"PART_COUNT", "int", true, 2, "ao", 8},
};

bool isDevice(const Group& group) {
    return *group.type == '\0';
}

/// The group of an element, and the element's place in it: "DI3" is 2 in "DI". Null for an unknown name.
const Group* findGroup(const QString& name, int bias, int* place) {
    for (const Group& group : groups) {
        bool isNumber = false;
        const QLatin1String word(group.name);
        *place = isDevice(group) && name.startsWith(word) ? name.mid(word.size()).toInt(&isNumber) - 1 : bias;
        if ((isNumber || (!isDevice(group) && name == word)) && *place >= 0 && *place < group.length) {
            return &group;
        }
    }
    return nullptr;
}

QJsonObject operation(const char* name) {
    return {{QStringLiteral("op"), QLatin1String(name)}};
}

/// The pin of an element: kind, number, value.
QJsonArray pinWrite(const SignalWrite& write) {
    int place = 0;
    const Group* group = findGroup(write.name, write.bias, &place);
    return {QLatin1String(group->pins), group->first + place, write.value};
}

QJsonObject setMessage(const QJsonArray& writes, int ticket) {
    QJsonObject message = operation("set");
    message[QStringLiteral("w")] = writes;
    message[QStringLiteral("id")] = ticket;
    return message;
}

}  // namespace

HalPort::HalPort(quint16 port, QObject* parent) : SignalPort(parent), link_(port, silenceMs, this) {
    beat_.setInterval(beatMs);
    beat_.setTimerType(Qt::PreciseTimer);
    connect(&beat_, &QTimer::timeout, this, &HalPort::beat);
    connect(&link_, &JsonLink::opened, this, &HalPort::onOpened);
    connect(&link_, &JsonLink::closed, this, &HalPort::onClosed);
    connect(&link_, &JsonLink::received, this, &HalPort::onMessage);
}

QVector<SignalRow> HalPort::rows() const {
    using Kind = SignalRow::Kind;
    QVector<SignalRow> rows;
    for (const Group& group : groups) {
        const QString name = QLatin1String(group.name);
        for (int i = 1; isDevice(group) && i <= group.length; ++i) {
            rows.append(
                {group.isOutput ? Kind::Output : Kind::Input, name + QString::number(i), {}, false, 1});
        }
        if (!isDevice(group)) {
            rows.append({Kind::Register, name, QLatin1String(group.type), group.isOutput, group.length});
        }
    }
    return rows;
}

void HalPort::write(const QVector<SignalWrite>& writes, int ticket) {
    if (!armed_ || !isOpen()) {
        emit written(ticket, false);
        return;
    }
    QJsonArray pins;
    for (const SignalWrite& write : writes) {
        const QJsonArray pin = pinWrite(write);
        const QString key = pin[0].toString() + QString::number(pin[1].toInt());
        on_.remove(key);
        if (write.value != 0) {
            on_.insert(key);
        }
        pins.append(pin);
    }
    tickets_.insert(ticket);
    link_.send(setMessage(pins, ticket));
}

void HalPort::arm() {
    if (!armed_) {
        armed_ = true;
        sendArm();
    }
}

void HalPort::sendArm() {
    allOff();
    QJsonObject message = operation("arm");
    message[QStringLiteral("on")] = true;
    link_.send(message);
}

void HalPort::allOff() {
    constexpr int nobodys = 0;
    QJsonArray writes;
    for (int bit = 0; bit < digitalPins; ++bit) {
        writes.append(QJsonArray{QStringLiteral("do"), bit, 0});
    }
    for (int word = 0; word < wordPins; ++word) {
        writes.append(QJsonArray{QStringLiteral("ao"), word, 0});
    }
    link_.send(setMessage(writes, nobodys));
}

bool HalPort::setInput(const QString& name, bool value) {
    const QStringList parts = name.split(QLatin1String(".#"));
    bool isNumber = parts.size() == 1;
    const int bias = isNumber ? 0 : parts[1].toInt(&isNumber);
    int place = 0;
    const Group* group = isNumber ? findGroup(parts[0], bias, &place) : nullptr;
    const bool isElement = group && isDevice(*group) == (parts.size() == 1);
    if (!isElement || group->pins != QLatin1String("di")) {
        return false;
    }
    simulated_.insert(group->first + place, value);
    sendInputs();
    return true;
}

void HalPort::sendInputs() {
    QJsonArray writes;
    for (auto input = simulated_.cbegin(); input != simulated_.cend(); ++input) {
        writes.append(QJsonArray{QStringLiteral("di"), input.key(), input.value() ? 1 : 0});
    }
    QJsonObject message = operation("sim");
    message[QStringLiteral("w")] = writes;
    link_.send(message);
}

void HalPort::onOpened() {
    longestGapMs_ = 0;
    sinceBeat_.start();
    beat_.start();
    beat();
    if (armed_) {
        sendArm();
    }
    sendInputs();
    emit opened();
}

void HalPort::onClosed(const LinkReason& reason) {
    beat_.stop();
    armed_ = follows_ = hasAnswered_ = false;
    tickets_.clear();
    on_.clear();
    emit closed(reason);
}

void HalPort::beat() {
    const int gapMs = int(sinceBeat_.restart());
    longestGapMs_ = std::max(gapMs, longestGapMs_ * 9 / 10);
    link_.send(operation("beat"));
}

void HalPort::onMessage(const QJsonObject& message) {
    const QString event = message[QLatin1String("ev")].toString();
    const int value = message[QLatin1String("value")].toInt();
    if (event == QLatin1String("di") || event == QLatin1String("ai")) {
        tellInput(event, message[QLatin1String("pin")].toInt(), value);
    } else if (event == QLatin1String("beat")) {
        if (!std::exchange(hasAnswered_, true)) {
            tellOutputsOff();  // rio.py has switched them off when the connection before ended
        }
    } else if (event == QLatin1String("ok")) {
        const bool isMissed = follows_ && value == 0;
        follows_ = value != 0;
        if (isMissed) {
            armed_ = false;
            const bool wasOn = !on_.isEmpty();
            on_.clear();
            emit heartbeatMissed(std::max(longestGapMs_, int(sinceBeat_.elapsed())), wasOn);
            tellOutputsOff();
        }
    } else if (tickets_.remove(message[QLatin1String("ack")].toInt())) {
        emit written(message[QLatin1String("ack")].toInt(), true);
    }
}

void HalPort::tellOutputsOff() {
    for (const SignalRow& row : rows()) {
        const bool isOutput = row.kind == SignalRow::Kind::Output || row.writable;
        for (int bias = 0; isOutput && bias < row.length; ++bias) {
            emit changed(row.kind, row.name, bias, 0);
        }
    }
}

void HalPort::tellInput(const QString& pins, int pin, int value) {
    for (const Group& group : groups) {
        const int place = pin - group.first;
        if (pins != QLatin1String(group.pins) || place < 0 || place >= group.length) {
            continue;
        }
        const QString name = QLatin1String(group.name);
        if (isDevice(group)) {
            emit changed(SignalRow::Kind::Input, name + QString::number(place + 1), 0, value);
        } else {
            emit changed(SignalRow::Kind::Register, name, place, value);
        }
    }
}

}  // namespace bridge::linuxcnc
