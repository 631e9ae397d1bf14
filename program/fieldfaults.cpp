#include "program/fieldfaults.h"

#include "program/words.h"

#include <algorithm>
#include <cmath>

namespace prog::old {

namespace {

bool isText(const QVariant& value) {
    return value.userType() == QMetaType::QString;
}

bool isFlag(const QVariant& value) {
    return value.userType() == QMetaType::Bool;
}

bool isNumber(const QVariant& value) {
    return !isText(value) && !isFlag(value) && value.canConvert<double>();
}

bool isDigits(const QVariant& value) {
    bool converts = false;
    value.toString().toDouble(&converts);
    return isText(value) && converts;
}

bool isState(const QVariant& value) {
    const QString text = value.toString();
    return isText(value) && (text.isEmpty() || text == word::trueText || text == word::falseText);
}

/// Whether a list has so many numbers; else what stands in the place of one, invalid for a list that is
/// too short or no list.
bool areNumbers(const Record& list, int least, QVariant* other) {
    *other = QVariant();
    if (!list.isList() || list.size() < least) {
        return false;
    }
    for (int i = 0; i < list.size(); ++i) {
        if (!isNumber(list.at(i).value())) {
            *other = list.at(i).value();
            return false;
        }
    }
    return true;
}

/// Whether a field holds what it should; else what it holds, invalid for a map or a list.
bool isOfKind(const Record& field, FieldKind kind, QVariant* other) {
    constexpr int coordinates = 3;
    constexpr int fewestAxes = 6;
    const QVariant value = field.value();
    *other = value;
    switch (kind) {
        case FieldKind::Text:
            return isText(value);
        case FieldKind::Flag:
            return isFlag(value);
        case FieldKind::Number:
        case FieldKind::Whole:
        case FieldKind::Count:
        case FieldKind::Set:
            return isNumber(value);
        case FieldKind::Entry:
            return isNumber(value) || isDigits(value);
        case FieldKind::State:
            return isState(value);
        case FieldKind::Coordinates:
            return areNumbers(field, coordinates, other);
        case FieldKind::Joints:
            return areNumbers(field, fewestAxes, other);
        case FieldKind::Map:
            return field.isMap();
    }
    return false;
}

/// Whether a run reads the field of a record whose signal is of this source.
bool isRead(const FieldRow& row, Source signal) {
    return row.presence != Presence::Shown && row.kind != FieldKind::Map &&
           (row.source == Source::Any || row.source == signal);
}

void checkField(const FieldRow& row, const Record& statement, int sets, std::vector<Finding>* findings) {
    const Record field = statement.at(row.path);
    if (field.isMissing()) {
        if (row.presence != Presence::Optional) {
            findings->push_back({Rule::FieldMissing, Severity::Warning, row.path, {}});
        }
        return;
    }
    QVariant other;
    if (!isOfKind(field, row.kind, &other)) {
        findings->push_back(
            {Rule::FieldKind, Severity::Warning, row.path, {static_cast<int>(row.kind), other}});
    }
    const bool isAmount =
        row.kind == FieldKind::Number || row.kind == FieldKind::Entry || row.kind == FieldKind::Whole;
    if (isAmount && field.number() < 0) {
        findings->push_back({Rule::Negative, Severity::Warning, row.path, {field.number()}});
    }
    const int set = field.integer();
    if (row.kind == FieldKind::Set && (set < 0 || set >= sets)) {
        findings->push_back({Rule::NoSuchSet, Severity::Warning, row.path, {set, sets}});
    }
}

}  // namespace

std::optional<Finding> findTypeFault(const Record& statement) {
    const Record type = statement.at(field::type);
    const auto fault = [](Rule rule, const QVariantList& arguments = {}) {
        return Finding{rule, Severity::Error, field::type, arguments};
    };
    if (!type.exists()) {
        return fault(Rule::TypeMissing);
    }
    if (!isText(type.value())) {
        return fault(Rule::TypeIsNoText);
    }
    if (type.text().isEmpty()) {
        return fault(Rule::TypeIsEmpty);
    }
    return statementRow(type.text()) ? std::nullopt
                                     : std::make_optional(fault(Rule::TypeUnknown, {type.text()}));
}

std::vector<Finding> checkFields(const Record& statement, int sets) {
    std::vector<Finding> findings;
    const StatementRow* const type = statementRow(statement.at(field::type).text());
    if (!type) {
        return findings;
    }
    const Source signal = Statement::from(statement).signal.isIo ? Source::Io : Source::Register;
    for (const FieldRows* rows : {&commonFields(), &type->fields}) {
        for (const FieldRow& row : *rows) {
            if (isRead(row, signal)) {
                checkField(row, statement, sets, &findings);
            }
        }
    }
    return findings;
}

}  // namespace prog::old
