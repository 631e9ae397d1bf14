#include "runner/project.h"

#include "runner/fieldcheck.h"

namespace run {

namespace {

const QString type = QStringLiteral("type");

}  // namespace

std::optional<Project> Project::read(const QString& file, const QString& shown, Problem* problem) {
    const std::optional<JsonText> text = JsonText::read(file, shown, problem);
    return text ? fromText(*text, problem) : std::nullopt;
}

std::optional<Project> Project::fromText(const JsonText& text, Problem* problem) {
    Project project(text);
    bool toolsetSeen = false;
    for (int i = 0; i < text.array().size(); ++i) {
        const QJsonValue value = text.array().at(i);
        if (!value.isObject()) {
            *problem = text.problemAt(i, QStringLiteral("element %1 is no object").arg(i + 1));
            return std::nullopt;
        }
        const QJsonObject element = value.toObject();
        if (!toolsetSeen && element.contains(QStringLiteral("end"))) {
            toolsetSeen = true;
            continue;
        }
        const QString fault = statementTypeFault(element);
        if (!fault.isEmpty()) {
            *problem = text.problemAt(i, type, QStringLiteral("element %1: %2").arg(i + 1).arg(fault));
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
        const QString who = QStringLiteral("line %1 (%2)").arg(++line).arg(statement.value(type).toString());
        for (const FieldRemark& remark : checkFields(statement, sets)) {
            if (remark.path.isEmpty()) {
                found.push_back(text_.problemAt(element, who + QLatin1Char(' ') + remark.remark));
            } else {
                found.push_back(
                    text_.problemAt(element, remark.path,
                                    QStringLiteral("%1: \"%2\" %3").arg(who, remark.path, remark.remark)));
            }
        }
    }
    return found;
}

}  // namespace run
