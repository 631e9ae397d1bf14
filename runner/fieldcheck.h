#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <vector>

namespace run {

/// Statement types in the order in which help and documents list them.
const QStringList& statementTypes();

/// What is wrong with the type of a statement; empty when it is one that runs.
QString statementTypeFault(const QJsonObject& statement);

/// A field that is not as its statement type usually has it.
struct FieldRemark {
    QString path;    ///< dotted, empty for the statement as a whole
    QString remark;  ///< plain English
};

/// Looks at the fields that a run reads of a statement. `sets` is the number of parameter sets.
std::vector<FieldRemark> checkFields(const QJsonObject& statement, int sets);

}  // namespace run
