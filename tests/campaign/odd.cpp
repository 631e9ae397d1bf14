// What a file may hold and no dialog would write.

#include "campaign/draw.h"

namespace campaign {

namespace {

QJsonValue oddValue(Random& random) {
    switch (random.below(14)) {
        case 0:
            return 1e9;
        case 1:
            return -1e9;
        case 2:
            return 2147483647.0;
        case 3:
            return 1e300;
        case 4:
            return QStringLiteral("500");
        case 5:
            return QStringLiteral("-60.5");
        case 6:
            return QStringLiteral("much");
        case 7:
            return QString();
        case 8:
            return QJsonValue();
        case 9:
            return true;
        case 10:
            return QJsonArray{1, QStringLiteral("x")};
        case 11:
            return QJsonObject{{"trans", 5}};
        case 12:
            return -1;
        default:
            return 0.001;
    }
}

/// Gives one field another value, or takes it away; now and then one inside it.
QJsonObject spoil(QJsonObject record, Random& random) {
    const QStringList fields = record.keys();
    if (fields.isEmpty()) {
        return record;
    }
    const QString field = fields[random.below(fields.size())];
    const QJsonValue value = record[field];
    if (random.chance(15)) {
        record.remove(field);
    } else if (value.isObject() && random.chance(60)) {
        record[field] = spoil(value.toObject(), random);
    } else if (value.isArray() && !value.toArray().isEmpty() && random.chance(60)) {
        QJsonArray list = value.toArray();
        list[random.below(list.size())] = oddValue(random);
        record[field] = list;
    } else {
        record[field] = oddValue(random);
    }
    return record;
}

/// A dwell keeps its length, whatever happens: one of days would take the whole schedule.
void shortenDwells(QJsonArray& sets) {
    constexpr double longestMs = 20000;
    for (int i = 0; i < sets.size(); ++i) {
        QJsonObject set = sets[i].toObject();
        if (set["stay_time"].toVariant().toDouble() > longestMs) {
            set["stay_time"] = longestMs;
        }
        sets[i] = set;
    }
}

QJsonArray spoilSome(QJsonArray records, int percent, Random& random) {
    for (int i = 0; i < records.size(); ++i) {
        if (records[i].isObject() && random.chance(percent)) {
            records[i] = spoil(records[i].toObject(), random);
        }
    }
    return records;
}

}  // namespace

void makeOdd(Scenario& scenario, Random& random) {
    scenario.program = spoilSome(scenario.program, 25, random);
    scenario.otherProgram = spoilSome(scenario.otherProgram, 25, random);
    for (int i = 0; i < 3; ++i) {
        scenario.sets = spoilSome(scenario.sets, 40, random);
    }
    shortenDwells(scenario.sets);
    scenario.stations = spoilSome(scenario.stations, 30, random);
    const QStringList files = scenario.projects.keys();
    for (const QString& file : files) {
        scenario.projects[file] = spoilSome(scenario.projects[file].toArray(), 20, random);
    }
    for (Action& action : scenario.actions) {
        const bool isDwell = action.text == QLatin1String("stay_time");
        if (action.kind == Action::Kind::Param && !isDwell && random.chance(50)) {
            action.mode = random.oneOf({-100, 1000000000, 2147483647, 100000});
        }
    }
}

}  // namespace campaign
