#include "runner/project.h"

#include "json/jsonfile.h"
#include "program/words.h"

#include <QDir>

namespace run {

using prog::FieldKind;
using prog::old::Rule;

namespace {

QString kindText(FieldKind kind, const QVariant& found) {
    switch (kind) {
        case FieldKind::Text:
            return QStringLiteral("is no text");
        case FieldKind::Flag:
            return QStringLiteral("is neither true nor false");
        case FieldKind::State:
            return QStringLiteral("is neither \"true\" nor \"false\"");
        case FieldKind::Map:
            return QStringLiteral("is no object");
        case FieldKind::Coordinates:
        case FieldKind::Joints:
            if (!found.isValid()) {
                return QStringLiteral("is no list of coordinates");
            }
            break;
        default:
            break;
    }
    if (found.userType() == QMetaType::QString) {
        return QStringLiteral("is the text \"%1\" where a number is usual").arg(found.toString());
    }
    return QStringLiteral("is no number");
}

}  // namespace

QString findingText(const prog::old::Finding& finding) {
    const QVariantList& arguments = finding.arguments;
    switch (finding.rule) {
        case Rule::TypeMissing:
            return QStringLiteral("statement without a type");
        case Rule::TypeIsNoText:
            return QStringLiteral("the statement's type is no text");
        case Rule::TypeIsEmpty:
            return QStringLiteral("the statement's type is empty");
        case Rule::TypeUnknown:
            return QStringLiteral("unknown statement type \"%1\"").arg(arguments.value(0).toString());
        case Rule::FieldMissing:
            return QStringLiteral("is missing");
        case Rule::FieldKind:
            return kindText(static_cast<FieldKind>(arguments.value(0).toInt()), arguments.value(1));
        case Rule::Negative:
            return QStringLiteral("is negative");
        case Rule::NoSuchSet:
            return QStringLiteral("names no parameter set (%1 of %2)")
                .arg(arguments.value(0).toInt())
                .arg(arguments.value(1).toInt());
    }
    return {};
}

std::optional<Project> Project::read(const QString& file, const QString& shown, Problem* problem) {
    const std::optional<InputArray> text = InputArray::read(file, shown, problem);
    return text ? fromText(*text, problem) : std::nullopt;
}

std::optional<Project> Project::fromText(const InputArray& text, Problem* problem) {
    Project project(text);
    bool toolsetSeen = false;
    for (int i = 0; i < text.array().size(); ++i) {
        const QJsonValue value = text.array().at(i);
        if (!value.isObject()) {
            *problem = text.problemAt(i, QStringLiteral("element %1 is no object").arg(i + 1));
            return std::nullopt;
        }
        const QJsonObject element = value.toObject();
        if (!toolsetSeen && element.contains(prog::field::end)) {
            toolsetSeen = true;
            continue;
        }
        if (const auto fault = prog::old::findTypeFault(element)) {
            const QString reason = QStringLiteral("element %1: %2").arg(i + 1).arg(findingText(*fault));
            *problem = text.problemAt(i, fault->path, reason);
            return std::nullopt;
        }
        project.statements_.push_back(i);
    }
    return project;
}

std::vector<Problem> Project::warnings(int sets) const {
    std::vector<Problem> found;
    int line = 0;
    for (const int element : statements_) {
        const QJsonObject statement = text_.array().at(element).toObject();
        const QString type = statement.value(prog::field::type).toString();
        const QString who = QStringLiteral("line %1 (%2)").arg(++line).arg(type);
        QStringList missing;
        for (const prog::old::Finding& finding : prog::old::checkFields(statement, sets)) {
            if (finding.rule == prog::old::Rule::FieldMissing) {
                missing.append(finding.path);
                continue;
            }
            const QString reason =
                QStringLiteral("%1: \"%2\" %3").arg(who, finding.path, findingText(finding));
            found.push_back(text_.problemAt(element, finding.path, reason));
        }
        if (!missing.isEmpty()) {
            found.push_back(text_.problemAt(
                element, QStringLiteral("%1 lacks %2").arg(who, missing.join(QStringLiteral(", ")))));
        }
    }
    return found;
}

std::optional<StationList> StationList::read(const QString& folder, const QString& shown, Problem* problem) {
    const QString shownFile = QDir(shown).filePath(prog::file::stations);
    mendo::FileProblem found;
    const std::optional<mendo::JsonText> json =
        mendo::readJsonFile(QDir(folder).filePath(prog::file::stations), &found);
    if (json && json->value() == QJsonObject()) {
        return StationList();  // the package writes an empty list so
    }
    *problem = {shownFile, found.place, found.text()};
    const std::optional<InputArray> text = json ? InputArray::from(*json, shownFile, problem) : std::nullopt;
    if (!text) {
        return std::nullopt;
    }
    StationList list;
    for (int i = 0; i < text->array().size(); ++i) {
        const QJsonValue record = text->array().at(i);
        if (!record.isObject()) {
            *problem = text->problemAt(i, QStringLiteral("element %1 is no object").arg(i + 1));
            return std::nullopt;
        }
        const QString project = record.toObject().value(prog::field::filePath).toString();
        if (!project.isEmpty() && !list.projects_.contains(project)) {
            list.projects_.append(project);
        }
    }
    return list;
}

std::vector<Problem> StationList::warnings(int sets) const {
    std::vector<Problem> found;
    for (const QString& name : projects_) {
        Problem problem;
        const std::optional<Project> project = Project::read(name, name, &problem);
        if (!project) {
            found.push_back(problem);
            continue;
        }
        const std::vector<Problem> remarks = project->warnings(sets);
        found.insert(found.end(), remarks.begin(), remarks.end());
    }
    return found;
}

}  // namespace run
