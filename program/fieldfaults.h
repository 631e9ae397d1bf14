#pragma once

#include "program/statement.h"

#include <QString>
#include <QVariant>

#include <optional>
#include <vector>

namespace prog::old {

/// What can be wrong with a statement, and the arguments of such a finding.
enum class Rule {
    TypeMissing,
    TypeIsNoText,
    TypeIsEmpty,
    TypeUnknown,   ///< the type
    FieldMissing,  ///< a field that runs read
    FieldKind,     ///< what is found is of another kind: the kind it should have (FieldKind), what is found
    Negative,      ///< a number that must not be: the number
    NoSuchSet,     ///< the position that is named, the number of sets
};

enum class Severity {
    Error,    ///< nothing can be run
    Warning,  ///< a run goes on with what it reads instead
};

/// Something that is wrong with a statement, as a value: words are put to it where a person reads them.
struct Finding {
    Rule rule;
    Severity severity;
    QString path;  ///< dotted, of the field in the record
    QVariantList arguments;
};

/// What is wrong with a record's type; nothing when it is one that runs.
[[nodiscard]] std::optional<Finding> findTypeFault(const Record& statement);

/// What is wrong with the fields of a statement that runs read, in the order of the type's rows. `sets` is
/// the number of parameter sets.
[[nodiscard]] std::vector<Finding> checkFields(const Record& statement, int sets);

}  // namespace prog::old
