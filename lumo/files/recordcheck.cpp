#include "files/recordcheck.h"

#include "module/host.h"

namespace lumo {

namespace {

/// Whether the tree's typed values read it as the model's kind: then the default does not matter.
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

QString faultOf(const QString& field, const QJsonValue& model) {
    switch (model.type()) {
        case QJsonValue::Double:
            return QStringLiteral("'%1' is no number").arg(field);
        case QJsonValue::Bool:
            return QStringLiteral("'%1' is neither true nor false").arg(field);
        case QJsonValue::Object:
            return QStringLiteral("'%1' is no object").arg(field);
        default:
            return QStringLiteral("'%1' is no text").arg(field);
    }
}

/// Leaves out what cannot be read; the fault of the first such field, empty when all can.
QString mend(QJsonObject* record, const QJsonObject& model) {
    QString first;
    for (auto field = model.begin(); field != model.end(); ++field) {
        const QString name = field.key();
        const auto found = record->find(name);
        if (found == record->end()) {
            continue;
        }
        QString fault;
        if (!isReadAs(*field, *found)) {
            fault = faultOf(name, *field);
            record->erase(found);
        } else if ((*found).isObject()) {
            QJsonObject inner = (*found).toObject();
            fault = mend(&inner, (*field).toObject());
            record->insert(name, inner);
        }
        if (first.isEmpty()) {
            first = fault;
        }
    }
    return first;
}

}  // namespace

void CheckedRecords::note(int position, const QString& fault) {
    if (!faults.contains(position)) {
        faults.insert(position, fault);
    }
}

CheckedRecords checkRecords(const QJsonArray& records, const QJsonObject& model) {
    CheckedRecords checked;
    for (int position = 0; position < records.size(); ++position) {
        const bool isRecord = records[position].isObject();
        // Not toObject(model), which takes an empty record for none.
        QJsonObject record = isRecord ? records[position].toObject() : model;
        const QString fault = isRecord ? mend(&record, model) : QStringLiteral("this is no record");
        checked.records.append(record);
        if (!fault.isEmpty()) {
            checked.note(position, fault);
        }
    }
    return checked;
}

}  // namespace lumo
