#include "module/recordcheck.h"

namespace lumo {

namespace {

bool isNumberText(const QString& text) {
    bool isNumber = false;
    text.toDouble(&isNumber);
    return isNumber || text.isEmpty();
}

bool isBooleanText(const QString& text) {
    return text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0 ||
           text.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0;
}

/// Whether the tree's typed values read it as the model's kind.
bool converts(const QJsonValue& value, const QJsonValue& model) {
    if (value.isNull() || value.type() == model.type()) {
        return true;
    }
    if (model.isDouble()) {
        return value.isString() && isNumberText(value.toString());
    }
    return model.isBool() && (value.isDouble() || (value.isString() && isBooleanText(value.toString())));
}

QString kindName(const QJsonValue& model) {
    switch (model.type()) {
        case QJsonValue::Double:
            return QStringLiteral("no number");
        case QJsonValue::Bool:
            return QStringLiteral("neither true nor false");
        case QJsonValue::Object:
            return QStringLiteral("no object");
        default:
            return QStringLiteral("no text");
    }
}

/// Leaves out what does not convert; the reason for the first such field, empty when all do.
QString mend(QJsonObject* record, const QJsonObject& model) {
    QString reason;
    for (auto field = model.begin(); field != model.end(); ++field) {
        const QString name = field.key();
        const auto found = record->find(name);
        if (found == record->end()) {
            continue;
        }
        QString fault;
        if (!converts(*found, *field)) {
            fault = QStringLiteral("'%1' is %2").arg(name, kindName(*field));
            record->erase(found);
        } else if ((*found).isObject()) {
            QJsonObject inner = (*found).toObject();
            fault = mend(&inner, (*field).toObject());
            record->insert(name, inner);
        }
        if (reason.isEmpty()) {
            reason = fault;
        }
    }
    return reason;
}

}  // namespace

CheckedRecords checkRecords(const QJsonArray& records, const QJsonObject& model,
                            const QJsonObject& substitute) {
    CheckedRecords checked;
    for (int position = 0; position < records.size(); ++position) {
        QJsonObject record = records[position].toObject(substitute);
        QString reason =
            records[position].isObject() ? mend(&record, model) : QStringLiteral("this is no record");
        checked.records.append(record);
        if (!reason.isEmpty() && checked.faults++ == 0) {
            checked.firstFault = position;
            checked.reason = reason;
        }
    }
    return checked;
}

}  // namespace lumo
