#include "runner/project.h"

#include "runner/findingtext.h"

#include "program/words.h"

namespace run {

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
        if (const auto fault = prog::findTypeFault(element)) {
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
        for (const prog::Finding& finding : prog::checkFields(statement, sets)) {
            if (finding.rule == prog::Rule::FieldMissing) {
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

}  // namespace run
