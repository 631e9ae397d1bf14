#pragma once

#include "program/collector.h"
#include "program/statement.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace prog {

/// What a check asks of the fields beyond their kinds.
struct FieldLimits {
    double highestSpeedMmPerS = 0.0;
    int sets = 0;
    int axes = 0;  ///< 0: not known
};

/// The fields that records have, arranged as their maps are.
class FieldShape {
public:
    FieldShape(std::initializer_list<const FieldRows*> rows, const QString& below = {});

    /// The kinds of all values in a record, fields that it should have and fields that nobody knows.
    /// `source`: the kind of its signal.
    void check(const Record& record, Source source, const FieldLimits& limits, Collector* found) const;

private:
    /// Fields with rules of their own.
    enum class Role { Plain, Point, Speed, WeldSpeed, Zone, Set };
    struct Entry {
        QLatin1String name;
        const FieldRow* row;
        Role role;
        std::unique_ptr<FieldShape> inner;  ///< of a map
    };
    class Pass;

    std::vector<Entry> entries_;
};

/// The shape of a statement's record; null for an unknown type.
[[nodiscard]] const FieldShape* statementShape(const QString& type);

}  // namespace prog
