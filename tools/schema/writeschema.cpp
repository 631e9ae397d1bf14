// writeschema [--check] FOLDER: writes the schemas of the package's files from the rows that say what a
// record holds. With --check it only tells whether the files there are those.

#include "program/parameters.h"
#include "program/ports.h"
#include "program/statement.h"
#include "program/words.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

namespace {

using prog::FieldKind;
using prog::FieldRow;
using prog::FieldRows;

const QJsonObject emptyMap{{"type", "object"}, {"maxProperties", 0}, {"description", "an empty list"}};

QJsonObject reference(const char* definition) {
    return {{"$ref", QStringLiteral("#/$defs/") + definition}};
}

QJsonObject listOfNumbers(int least, int most) {
    return {{"type", "array"},
            {"items", QJsonObject{{"type", "number"}}},
            {"minItems", least},
            {"maxItems", most}};
}

QJsonObject kindSchema(FieldKind kind) {
    constexpr int coordinates = 3;
    constexpr int fewestAxes = 6;
    constexpr int mostAxes = 7;
    switch (kind) {
        case FieldKind::Text:
            return {{"type", "string"}};
        case FieldKind::Flag:
            return {{"type", "boolean"}};
        case FieldKind::Number:
            return {{"type", "number"}, {"minimum", 0}};
        case FieldKind::Entry:
            return reference("numberOrText");
        case FieldKind::Whole:
            return {{"type", "integer"}, {"minimum", 0}};
        case FieldKind::Set:
            return {{"type", "integer"}, {"minimum", -1}};
        case FieldKind::Count:
            return {{"type", QJsonArray{"integer", "string"}}, {"minimum", 0}, {"pattern", "^[0-9]*$"}};
        case FieldKind::State:
            return {{"enum", QJsonArray{prog::word::trueText, prog::word::falseText, ""}}};
        case FieldKind::Coordinates:
            return listOfNumbers(coordinates, coordinates);
        case FieldKind::Joints:
            return listOfNumbers(fewestAxes, mostAxes);
        case FieldKind::Map:
            break;
    }
    return {{"type", "object"}};
}

/// The fields right below a path, which is empty or ends in a dot; `required` is the list of the schema.
QJsonObject properties(const FieldRows& rows, const QString& below, QJsonArray* required) {
    QJsonObject found;
    for (const FieldRow& row : rows) {
        const QString path = row.path;
        const QString name = path.mid(below.size());
        if (!path.startsWith(below) || name.contains(QLatin1Char('.'))) {
            continue;
        }
        QJsonObject schema = kindSchema(row.kind);
        if (row.kind == FieldKind::Map) {
            QJsonArray inner;
            schema["properties"] = properties(rows, path + QLatin1Char('.'), &inner);
            if (!inner.isEmpty()) {
                schema["required"] = inner;
            }
        } else if (row.standard) {
            const QByteArray list = QByteArray("[") + row.standard + "]";
            schema["default"] = QJsonDocument::fromJson(list).array().first();
        }
        if (row.meaning) {
            schema["description"] = QString::fromUtf8(row.meaning);
        }
        if (row.presence == prog::Presence::Required) {
            required->append(name);
        }
        found[name] = schema;
    }
    return found;
}

QJsonObject record(const FieldRows& rows) {
    QJsonArray required;
    QJsonObject schema{{"properties", properties(rows, QString(), &required)}};
    if (!required.isEmpty()) {
        schema["required"] = required;
    }
    return schema;
}

QJsonObject statement() {
    QJsonArray types, branches;
    for (const prog::StatementRow& row : prog::statementRows()) {
        types.append(row.word);
        const QJsonObject ofType{{prog::field::type, QJsonObject{{"const", row.word}}}};
        branches.append(
            QJsonObject{{"if", QJsonObject{{"properties", ofType}}}, {"then", record(row.fields)}});
    }
    QJsonObject schema = record(prog::commonFields());
    QJsonObject common = schema["properties"].toObject();
    common[prog::field::type] = QJsonObject{{"enum", types}};
    schema["properties"] = common;
    schema["type"] = "object";
    schema["allOf"] = branches;
    return schema;
}

QJsonObject project() {
    QJsonObject toolset = record(prog::toolsetFields());
    toolset["type"] = "object";
    toolset["description"] = "The last element: tool and work object in force.";
    toolset["not"] = QJsonObject{{"required", QJsonArray{prog::field::type}}};
    const QJsonObject number{{"type", "number"}, {"minimum", 0}};
    const QJsonObject digits{{"type", "string"}, {"pattern", "^([0-9]+([.][0-9]+)?)?$"}};
    const QJsonObject numberOrText{
        {"anyOf", QJsonArray{number, digits}},
        {"description",
         "A number that is not negative, or its digits as text, which dialogs store. An empty "
         "text counts as 0."}};
    return {{"title", "lumo project"},
            {"description",
             "A welding program, first line first, and after it the tool and work object it "
             "is taught with. A new project is the empty list."},
            {"type", "array"},
            {"items", QJsonObject{{"anyOf", QJsonArray{reference("statement"), reference("toolset")}}}},
            {"$defs",
             QJsonObject{{"statement", statement()}, {"toolset", toolset}, {"numberOrText", numberOrText}}}};
}

QJsonObject parameterSets() {
    QJsonObject values{{prog::field::name, QJsonObject{{"type", "string"}}},
                       {prog::field::note, QJsonObject{{"type", "string"}, {"description", "remark"}}}};
    for (const prog::ParameterRow& row : prog::parameterRows()) {
        const QString unit = row.isPercentage() ? QStringLiteral("%") : QStringLiteral("ms");
        values[row.name] = QJsonObject{
            {"type", QJsonArray{"number", "string"}},
            {"default", row.standard},
            {"description", QStringLiteral("%1, 0 to %2; %3").arg(unit).arg(row.most()).arg(row.meaning)}};
    }
    const QJsonObject set{
        {"type", "object"}, {"required", QJsonArray{prog::field::name}}, {"properties", values}};
    return {{"title", "lumo parameter sets"},
            {"description",
             "lumo_param.json: the welding parameter sets; statements name them by their "
             "place."},
            {"anyOf", QJsonArray{emptyMap, QJsonObject{{"type", "array"}, {"items", set}}}}};
}

QJsonObject ports() {
    QJsonArray rows;
    QStringList names;
    for (int port = 0; port < prog::portCount; ++port) {
        const prog::Port& row = prog::portInfo(static_cast<I_PORT>(port));
        names.append(QStringLiteral("%1 %2").arg(port).arg(QString(row.word)));
        rows.append(
            QJsonObject{{"allOf", QJsonArray{reference("port")}},
                        {"properties", QJsonObject{{prog::field::type, QJsonObject{{"const", row.kind}}}}}});
    }
    const QJsonObject list{{"type", "array"},
                           {"description",
                            "one row for each port; a file with other rows is not applied, and "
                            "no port is in use"},
                           {"minItems", prog::portCount},
                           {"maxItems", prog::portCount},
                           {"prefixItems", rows}};
    const QJsonObject name{{"type", "string"},
                           {"description",
                            "an input or output of the controller, REGISTER.#BIT of a "
                            "register, or the register of an analogue output"}};
    const QJsonObject enable{{"type", "boolean"}, {"description", "a disabled port is never driven"}};
    const QJsonObject port{
        {"type", "object"},
        {"required", QJsonArray{prog::field::type}},
        {"properties", QJsonObject{{prog::field::name, name}, {prog::field::enable, enable}}}};
    return {{"title", "lumo ports"},
            {"description", QStringLiteral("lumo_port.json: what the logical ports are assigned to, by their "
                                           "place: ") +
                                names.join(QStringLiteral(", "))},
            {"anyOf", QJsonArray{emptyMap, list}},
            {"$defs", QJsonObject{{"port", port}}}};
}

/// Writes a file, or tells whether it is as it would be written.
bool deal(const QString& path, QJsonObject schema, bool onlyCheck) {
    schema["$schema"] = "https://json-schema.org/draft/2020-12/schema";
    const QByteArray text = QJsonDocument(schema).toJson(QJsonDocument::Indented);
    QFile file(path);
    if (onlyCheck) {
        return file.open(QIODevice::ReadOnly) && file.readAll() == text;
    }
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

}  // namespace

int main(int argc, char** argv) {
    const bool onlyCheck = argc == 3 && qstrcmp(argv[1], "--check") == 0;
    if (argc != 2 && !onlyCheck) {
        std::fputs("usage: writeschema [--check] FOLDER\n", stderr);
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[argc - 1]) + QLatin1Char('/');
    const std::pair<const char*, QJsonObject> schemas[] = {
        {"project", project()}, {"lumo_param", parameterSets()}, {"lumo_port", ports()}};
    int status = 0;
    for (const auto& [name, schema] : schemas) {
        const QString path = folder + name + QStringLiteral(".schema.json");
        if (!deal(path, schema, onlyCheck)) {
            std::fprintf(
                stderr,
                onlyCheck ? "%s is not what the rows say: run writeschema\n" : "%s cannot be written\n",
                qPrintable(path));
            status = 1;
        }
    }
    return status;
}
