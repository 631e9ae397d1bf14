#include "files/recordcheck.h"

#include <optional>

namespace lumo {

namespace {

using mendo::FileProblem;
using Kind = FileProblem::Kind;

/// Whether a node with this value has one of the model's kind: its typed value is then independent of the
/// default.
bool isReadAs(const QJsonValue& model, const QJsonValue& value) {
    const bool isEmptyNumber = model.isDouble() && value == QJsonValue(QString());
    if (value.isNull() || isEmptyNumber) {
        return true;  // missing
    }
    ModuleObject node;
    node.setValue(nullptr, value.toVariant());
    switch (model.type()) {
        case QJsonValue::Double:
            return node.getDouble(0.0) == node.getDouble(1.0);
        case QJsonValue::Bool:
            return node.getBool(false) == node.getBool(true);
        case QJsonValue::Object:
            return value.isObject();
        default:
            return node.getString() == node.getString(QStringLiteral("none"));
    }
}

Kind faultOf(QJsonValue::Type model) {
    switch (model) {
        case QJsonValue::Double:
            return Kind::NoNumber;
        case QJsonValue::Bool:
            return Kind::NoTruthValue;
        case QJsonValue::Object:
            return Kind::NoObject;
        default:
            return Kind::NoText;
    }
}

/// Removes the fields that cannot be read. Returns the fault of the first one.
std::optional<FileProblem::Reason> mend(QJsonObject* record, const QJsonObject& model) {
    std::optional<FileProblem::Reason> first;
    for (auto field = model.begin(); field != model.end(); ++field) {
        const QString name = field.key();
        const auto found = record->find(name);
        if (found == record->end()) {
            continue;
        }
        std::optional<FileProblem::Reason> fault;
        if (!isReadAs(*field, *found)) {
            fault = FileProblem::Reason{faultOf((*field).type()), {name}};
            record->erase(found);
        } else if ((*found).isObject()) {
            QJsonObject inner = (*found).toObject();
            fault = mend(&inner, (*field).toObject());
            record->insert(name, inner);
        }
        if (!first) {
            first = fault;
        }
    }
    return first;
}

}  // namespace

CheckedRecords checkRecords(const QJsonArray& records, const QJsonObject& model) {
    CheckedRecords checked;
    for (int position = 0; position < records.size(); ++position) {
        const bool isRecord = records[position].isObject();
        // Not toObject(model), which takes an empty record for none.
        QJsonObject record = isRecord ? records[position].toObject() : model;
        const std::optional<FileProblem::Reason> fault =
            isRecord ? mend(&record, model) : FileProblem::Reason{Kind::NoRecord};
        checked.records.append(record);
        if (fault) {
            checked.faults.insert(position, *fault);
        }
    }
    return checked;
}

}  // namespace lumo
