#pragma once

#include "json/fileproblem.h"
#include "workcell/runrecord.h"

#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QVector>

#include <optional>

namespace mendo {
class JsonText;
}

namespace workcell {

/// The least and the most that a quantity may be; both ends are allowed.
struct Allowed {
    std::optional<double> min, max;

    [[nodiscard]] bool contains(double value) const {
        return (!min || value >= *min) && (!max || value <= *max);
    }
};

/// A quantity of a seam that can be limited.
struct LimitedQuantity {
    const char* name;  ///< as limits files have it: "welded_mm"
    /// None where the run did not show it, for example the speed of a seam that stayed dark.
    std::optional<double> (*value)(const SeamRecord& seam);
};

/// All of them, in the order in which they are judged.
[[nodiscard]] const QVector<LimitedQuantity>& limitedQuantities();

/// What must hold for a run, from a limits file:
///
///     {"cycle_s": {"max": 25}, "seam": {"welded_ratio": {"min": 0.99, "max": 1.02}},
///      "seams": {"Fillet": {"gas_lead_s": {"min": 0.3}}}}
///
/// `seam` is for all seams. What `seams` has for a seam's parameter set replaces it, quantity by quantity.
class Limits {
public:
    /// Nothing, with place and reason in `problem`, for a file that cannot be read, or that has an unknown
    /// key, a wrong kind, or a least value above the most.
    [[nodiscard]] static std::optional<Limits> read(const QString& file, mendo::FileProblem* problem);
    [[nodiscard]] static std::optional<Limits> from(const mendo::JsonText& text, mendo::FileProblem* problem);

    /// The file in which people keep the limits of a project: NAME.limits.json beside NAME.json.
    [[nodiscard]] static QString fileFor(const QString& projectFile);

    /// What is allowed for a quantity of the seams that are welded with a set; none: everything.
    [[nodiscard]] std::optional<Allowed> allowed(const QString& quantity, const QString& set) const;
    /// For the time of a whole run.
    [[nodiscard]] const std::optional<Allowed>& cycle() const { return cycle_; }
    /// The sets that `seams` names.
    [[nodiscard]] QStringList setsNamed() const { return seams_.keys(); }
    [[nodiscard]] bool isEmpty() const { return !cycle_ && seam_.isEmpty() && seams_.isEmpty(); }

    /// As a limits file holds it.
    [[nodiscard]] QJsonObject json() const;

private:
    friend class LimitsReader;
    using Quantities = QMap<QString, Allowed>;

    std::optional<Allowed> cycle_;
    Quantities seam_;
    QMap<QString, Quantities> seams_;  ///< by the name of the parameter set
};

/// A limit that a run did not keep.
struct Violation {
    QString limit;                ///< the quantity, or "cycle_s"
    std::optional<int> seam;      ///< from 1; none for the cycle
    std::optional<double> value;  ///< none: the run did not show that the limit was kept
    Allowed allowed;
};

/// The cycle first, then the seams in their order. A limited quantity without a value is a violation.
[[nodiscard]] QVector<Violation> violations(const RunRecord& run, const Limits& limits);

}  // namespace workcell
