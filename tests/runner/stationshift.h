#pragma once

#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>

/// What a scenario does to the inputs of stations, as somebody sees it who looks at them now and then.
/// It knows the two files alone, nothing of a run.
class StationShift {
public:
    enum class Input { Start, Stop };

    StationShift(const QJsonArray& stations, const QJsonArray& scenario)
        : stations_(stations), scenario_(scenario) {}

    /// The controller's name of a station's signal: "DI", "DI2", "DO" or "DO2".
    static QString signalOf(const QJsonObject& station, const QString& key) {
        if (station.value(key + QLatin1String("_type")) == QLatin1String("IO"))
            return station.value(key).toString();
        const QJsonObject reg = station.value(key + QLatin1String("_reg")).toObject();
        return QStringLiteral("%1.#%2")
            .arg(reg.value(QStringLiteral("name")).toString())
            .arg(reg.value(QStringLiteral("bias")).toInt());
    }

    /// When an input shows its active level, and showed the other one when the switch was last pressed,
    /// to a look every `everyMs` from that press on for as long as the switch is on.
    QList<int> seen(int row, Input input, int everyMs) const {
        const QJsonObject station = stations_[row].toObject();
        const bool start = input == Input::Start;
        const QString name = signalOf(station, start ? QStringLiteral("DI") : QStringLiteral("DI2"));
        const bool active =
            station.value(start ? QStringLiteral("type") : QStringLiteral("type2")) == "Rising Edge";
        bool level = atRest(name);
        QList<int> times;
        std::optional<int> look = 0;  // the next one; none while the switch or the baseline forbids it
        for (const QJsonValue& value : scenario_) {
            const QJsonObject entry = value.toObject();
            const int at = entry.value(QStringLiteral("at")).toInt();
            for (; look && *look < at; *look += everyMs) {
                if (level == active)
                    times.append(*look);
            }
            level = levelAfter(entry, name).value_or(level);
            if (entry.value(QStringLiteral("do")) == QLatin1String("monitor")) {
                const bool armed = entry.value(QStringLiteral("value")).toBool() && level != active;
                look = armed ? std::optional<int>(at + everyMs) : std::nullopt;
            }
        }
        return times;
    }

    /// How often a start input is pressed: looks without a gap are one press.
    int presses(int row, int everyMs) const {
        int count = 0, last = -1;
        for (const int t : seen(row, Input::Start, everyMs)) {
            count += last < 0 || t - last > everyMs ? 1 : 0;
            last = t;
        }
        return count;
    }

    /// What stops a run of that time, in words; empty when nothing does.
    QString causeBetween(int begin, int end, int stopEveryMs) const {
        for (int row = 0; row < stations_.size(); ++row) {
            for (const int t : seen(row, Input::Stop, stopEveryMs)) {
                if (t >= begin && t <= end)
                    return QStringLiteral("stop input");
            }
        }
        for (const QJsonValue& value : scenario_) {
            const QJsonObject entry = value.toObject();
            const int at = entry.value(QStringLiteral("at")).toInt();
            const QString action = entry.value(QStringLiteral("do")).toString();
            if (at < begin || at > end)
                continue;
            if (action == QLatin1String("pause"))
                return QStringLiteral("operator");
            if (action == QLatin1String("power"))
                return QStringLiteral("power");
        }
        return {};
    }

    bool hasPowerAt(int ms) const {
        bool on = true;
        for (const QJsonValue& value : scenario_) {
            const QJsonObject entry = value.toObject();
            if (entry.value(QStringLiteral("do")) == QLatin1String("power") &&
                entry.value(QStringLiteral("at")).toInt() <= ms)
                on = entry.value(QStringLiteral("value")) == QLatin1String("on");
        }
        return on;
    }

private:
    static QString gasSignal() { return QStringLiteral("LUMO_DI.#3"); }

    /// The cell is well at first.
    static bool atRest(const QString& name) { return name == gasSignal(); }

    static std::optional<bool> levelAfter(const QJsonObject& entry, const QString& name) {
        const QString action = entry.value(QStringLiteral("do")).toString();
        const QString what = entry.value(QStringLiteral("name")).toString();
        const bool value = entry.value(QStringLiteral("value")).toBool();
        if (action == QLatin1String("input") && what == name)
            return value;
        if (action == QLatin1String("fault") && what == QLatin1String("gas") && name == gasSignal())
            return !value;
        return std::nullopt;
    }

    QJsonArray stations_, scenario_;
};
