#include "runner/fieldcheck.h"

#include <QJsonArray>

#include <algorithm>

namespace run {

namespace {

/// `Entry`: a number, or the text of one, as the editor writes what was typed.
enum class Kind { Number, Entry, Text, Coordinates, Index };

struct Field {
    QLatin1String path;
    Kind kind;
};
using Fields = std::vector<Field>;

Fields joined(Fields a, const Fields& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

const Fields& moveFields(const QString& type) {
    static const Fields trajectory = {{QLatin1String("speed"), Kind::Number},
                                      {QLatin1String("zone"), Kind::Number}};
    static const Fields joint = joined({{QLatin1String("point.near"), Kind::Coordinates}}, trajectory);
    static const Fields linear = joined(
        {{QLatin1String("point.trans"), Kind::Coordinates}, {QLatin1String("point.rot"), Kind::Coordinates}},
        trajectory);
    static const Fields arc = joined({{QLatin1String("point1.trans"), Kind::Coordinates},
                                      {QLatin1String("point1.rot"), Kind::Coordinates}},
                                     linear);
    if (type == QLatin1String("moveJ")) {
        return joint;
    }
    return type == QLatin1String("moveL") ? linear : arc;
}

/// A statement that names an input or output by its own name, or else as a register bit.
Fields signalFields(const QJsonObject& statement, QLatin1String kind, const Fields& io, const Fields& bit) {
    Fields fields = {{kind, Kind::Text}};
    const bool isIo = statement.value(kind).toString() == QLatin1String("IO");
    return joined(fields, isIo ? io : bit);
}

/// The fields of a statement that a run reads.
Fields fieldsOf(const QJsonObject& statement) {
    const QString type = statement.value(QLatin1String("type")).toString();
    if (type.startsWith(QLatin1String("move"))) {
        return moveFields(type);
    }
    if (type == QLatin1String("open")) {
        return {{QLatin1String("index"), Kind::Index}, {QLatin1String("weldspeed"), Kind::Entry}};
    }
    if (type == QLatin1String("param")) {
        return {{QLatin1String("index"), Kind::Index}};
    }
    if (type == QLatin1String("delay")) {
        return {{QLatin1String("delaytime"), Kind::Entry}};
    }
    if (type == QLatin1String("setDO")) {
        return signalFields(statement, QLatin1String("DO_type"),
                            {{QLatin1String("doName"), Kind::Text}, {QLatin1String("value"), Kind::Text}},
                            {{QLatin1String("DO_reg.name"), Kind::Text},
                             {QLatin1String("DO_reg.type"), Kind::Text},
                             {QLatin1String("DO_reg.bias"), Kind::Number},
                             {QLatin1String("value"), Kind::Text}});
    }
    if (type == QLatin1String("waitDI")) {
        return signalFields(statement, QLatin1String("DI_type"),
                            {{QLatin1String("diName"), Kind::Text}, {QLatin1String("value1"), Kind::Text}},
                            {{QLatin1String("DI_reg.name"), Kind::Text},
                             {QLatin1String("DI_reg.bias"), Kind::Number},
                             {QLatin1String("value1"), Kind::Text}});
    }
    return {};
}

QJsonValue valueAt(const QJsonObject& statement, const QString& path) {
    QJsonValue value = statement;
    for (const QString& key : path.split(QLatin1Char('.'))) {
        value = value.toObject().value(key);
    }
    return value;
}

QString numberRemark(const QJsonValue& value) {
    if (value.isDouble()) {
        return {};
    }
    if (value.isString()) {
        return QStringLiteral("is the text \"%1\" where a number is usual").arg(value.toString());
    }
    return QStringLiteral("is no number");
}

QString entryRemark(const QJsonValue& value) {
    bool isNumber = false;
    value.toString().toDouble(&isNumber);
    return isNumber ? QString() : numberRemark(value);
}

QString coordinatesRemark(const QJsonValue& value) {
    constexpr int coordinates = 3;
    const QJsonArray numbers = value.toArray();
    if (!value.isArray() || numbers.size() < coordinates) {
        return QStringLiteral("is no list of coordinates");
    }
    for (const QJsonValue number : numbers) {
        if (!number.isDouble()) {
            return numberRemark(number);
        }
    }
    return {};
}

QString indexRemark(const QJsonValue& value, int sets) {
    const double number = value.isString() ? value.toString().toDouble() : value.toDouble();
    const int index = int(std::min(std::max(number, -1.0), 1e9));
    if (index >= 0 && index < sets) {
        return {};
    }
    return QStringLiteral("names no parameter set (%1 of %2)").arg(index).arg(sets);
}

}  // namespace

const QStringList& statementTypes() {
    static const QStringList types = {
        QStringLiteral("moveJ"),  QStringLiteral("moveL"), QStringLiteral("moveC"), QStringLiteral("moveCC"),
        QStringLiteral("open"),   QStringLiteral("close"), QStringLiteral("param"), QStringLiteral("setDO"),
        QStringLiteral("waitDI"), QStringLiteral("delay")};
    return types;
}

QString statementTypeFault(const QJsonObject& element) {
    const QJsonValue type = element.value(QStringLiteral("type"));
    if (type.isUndefined()) {
        return QStringLiteral("statement without a type");
    }
    if (!type.isString()) {
        return QStringLiteral("the statement's type is no text");
    }
    if (type.toString().isEmpty()) {
        return QStringLiteral("the statement's type is empty");
    }
    if (!statementTypes().contains(type.toString())) {
        return QStringLiteral("unknown statement type \"%1\"").arg(type.toString());
    }
    return {};
}

std::vector<FieldRemark> checkFields(const QJsonObject& statement, int sets) {
    std::vector<FieldRemark> remarks;
    QStringList missing;
    for (const Field& field : fieldsOf(statement)) {
        const QJsonValue value = valueAt(statement, field.path);
        QString remark;
        if (value.isUndefined() || value.isNull()) {
            missing.append(field.path);
        } else if (field.kind == Kind::Number || field.kind == Kind::Index) {
            remark = numberRemark(value);
        } else if (field.kind == Kind::Entry) {
            remark = entryRemark(value);
        } else if (field.kind == Kind::Coordinates) {
            remark = coordinatesRemark(value);
        }
        if (!remark.isEmpty()) {
            remarks.push_back({field.path, remark});
        }
        const QString index = field.kind == Kind::Index ? indexRemark(value, sets) : QString();
        if (!index.isEmpty()) {
            remarks.push_back({field.path, index});
        }
    }
    if (!missing.isEmpty()) {
        remarks.push_back({QString(), QStringLiteral("lacks ") + missing.join(QStringLiteral(", "))});
    }
    return remarks;
}

}  // namespace run
