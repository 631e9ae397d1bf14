#include "workcell/limits.h"

#include "json/jsonfile.h"
#include "json/jsonreader.h"

#include <QFileInfo>

#include <algorithm>

namespace workcell {

namespace {

using Kind = mendo::FileProblem::Kind;

const QString cycleKey = QStringLiteral("cycle_s");
const QString seamKey = QStringLiteral("seam");
const QString seamsKey = QStringLiteral("seams");
const QString minKey = QStringLiteral("min");
const QString maxKey = QStringLiteral("max");

bool isQuantity(const QString& name) {
    const auto& all = limitedQuantities();
    return std::any_of(all.begin(), all.end(), [&name](const LimitedQuantity& quantity) {
        return name == QLatin1String(quantity.name);
    });
}

QJsonObject jsonOf(const Allowed& allowed) {
    QJsonObject json;
    if (allowed.min) {
        json.insert(minKey, *allowed.min);
    }
    if (allowed.max) {
        json.insert(maxKey, *allowed.max);
    }
    return json;
}

QJsonObject jsonOf(const QMap<QString, Allowed>& quantities) {
    QJsonObject json;
    for (auto quantity = quantities.begin(); quantity != quantities.end(); ++quantity) {
        json.insert(quantity.key(), jsonOf(*quantity));
    }
    return json;
}

}  // namespace

const QVector<LimitedQuantity>& limitedQuantities() {
    using Value = std::optional<double>;
    static const QVector<LimitedQuantity> all{
        {"welded_ratio", [](const SeamRecord& seam) { return seam.weldedRatio(); }},
        {"welded_mm", [](const SeamRecord& seam) { return Value(seam.weldedMm); }},
        {"standing_s", [](const SeamRecord& seam) { return Value(seam.standingS); }},
        {"gas_lead_s", [](const SeamRecord& seam) { return Value(seam.gasLeadS); }},
        {"gas_tail_s", [](const SeamRecord& seam) { return Value(seam.gasTailS); }},
        {"heat_J_per_mm", [](const SeamRecord& seam) { return seam.heatJPerMm; }},
        {"mean_speed_mm_s", [](const SeamRecord& seam) { return seam.meanSpeedMmPerS; }},
    };
    return all;
}

/// Reads the document from the top down and stops at the first fault.
class LimitsReader : private mendo::JsonReader {
public:
    using JsonReader::JsonReader;

    bool read(const QJsonValue& document, Limits* limits) {
        return readObject(document, [&](const QString& key, const QJsonValue& value) {
            if (key == cycleKey) {
                return readAllowed(value, &limits->cycle_.emplace());
            }
            if (key == seamKey) {
                return readQuantities(value, &limits->seam_);
            }
            return key == seamsKey ? readSeams(value, limits) : fail(Kind::UnknownField);
        });
    }

private:
    bool readSeams(const QJsonValue& value, Limits* limits) {
        return readObject(value, [&](const QString& set, const QJsonValue& quantities) {
            return readQuantities(quantities, &limits->seams_[set]);
        });
    }

    bool readQuantities(const QJsonValue& value, Limits::Quantities* quantities) {
        return readObject(value, [&](const QString& name, const QJsonValue& allowed) {
            return isQuantity(name) ? readAllowed(allowed, &(*quantities)[name]) : fail(Kind::UnknownField);
        });
    }

    bool readAllowed(const QJsonValue& value, Allowed* allowed) {
        const bool isRead = readObject(value, [&](const QString& key, const QJsonValue& number) {
            if (key != minKey && key != maxKey) {
                return fail(Kind::UnknownField);
            }
            if (!number.isDouble()) {
                return fail(Kind::NoNumber);
            }
            (key == minKey ? allowed->min : allowed->max) = number.toDouble();
            return true;
        });
        return isRead && (!allowed->min || !allowed->max || *allowed->min <= *allowed->max ||
                          fail(Kind::LeastAboveMost));
    }
};

std::optional<Limits> Limits::read(const QString& file, mendo::FileProblem* problem) {
    const std::optional<mendo::JsonText> text = mendo::readJsonFile(file, problem);
    return text ? from(*text, problem) : std::nullopt;
}

std::optional<Limits> Limits::from(const mendo::JsonText& text, mendo::FileProblem* problem) {
    Limits limits;
    return LimitsReader(text, problem).read(text.value(), &limits) ? std::optional<Limits>(limits)
                                                                   : std::nullopt;
}

QString Limits::fileFor(const QString& projectFile) {
    const QFileInfo file(projectFile);
    return file.path() + QLatin1Char('/') + file.completeBaseName() + QStringLiteral(".limits.json");
}

std::optional<Allowed> Limits::allowed(const QString& quantity, const QString& set) const {
    const Quantities ofSet = seams_.value(set);
    const Quantities& which = ofSet.contains(quantity) ? ofSet : seam_;
    return which.contains(quantity) ? std::optional<Allowed>(which.value(quantity)) : std::nullopt;
}

QJsonObject Limits::json() const {
    QJsonObject json;
    if (cycle_) {
        json.insert(cycleKey, jsonOf(*cycle_));
    }
    if (!seam_.isEmpty()) {
        json.insert(seamKey, jsonOf(seam_));
    }
    QJsonObject sets;
    for (auto set = seams_.begin(); set != seams_.end(); ++set) {
        sets.insert(set.key(), jsonOf(*set));
    }
    if (!sets.isEmpty()) {
        json.insert(seamsKey, sets);
    }
    return json;
}

QVector<Violation> violations(const RunRecord& run, const Limits& limits) {
    QVector<Violation> found;
    if (limits.cycle() && !limits.cycle()->contains(run.seconds)) {
        found.append({cycleKey, std::nullopt, run.seconds, *limits.cycle()});
    }
    for (std::size_t i = 0; i < run.seams.size(); ++i) {
        const SeamRecord& seam = run.seams[i];
        for (const LimitedQuantity& quantity : limitedQuantities()) {
            const QString name = QLatin1String(quantity.name);
            const std::optional<Allowed> allowed = limits.allowed(name, seam.set);
            const std::optional<double> value = quantity.value(seam);
            if (allowed && !(value && allowed->contains(*value))) {
                found.append({name, int(i) + 1, value, *allowed});
            }
        }
    }
    return found;
}

}  // namespace workcell
