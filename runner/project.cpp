#include "runner/project.h"

#include "json/jsonfile.h"
#include "program/words.h"

#include <QDir>
#include <QJsonObject>

#include <algorithm>

namespace run {

namespace {

QString projectOf(const QJsonValue& station) {
    return station.toObject().value(prog::field::filePath).toString();
}

}  // namespace

Project::Project(const InputArray& text) : text_(text), elements_(prog::ProgramLines(text).elements()) {}

std::optional<Project> Project::read(const QString& file, const QString& shown, Problem* problem) {
    const std::optional<InputArray> text = InputArray::read(file, shown, problem);
    return text ? std::make_optional(Project(*text)) : std::nullopt;
}

QJsonArray Project::content() const {
    QJsonArray all;
    for (int element = 0; element < text_.elementCount(); ++element) {
        all.append(text_.element(element));
    }
    return all;
}

int Project::elementOf(int line) const {
    return line >= 0 && line < statementCount() ? elements_[std::size_t(line)] : -1;
}

int Project::lineOf(int element) const {
    const auto found = std::lower_bound(elements_.begin(), elements_.end(), element);
    return found == elements_.end() || *found != element ? -1 : int(found - elements_.begin());
}

std::optional<Problem> Project::structureFault() const {
    for (const int element : elements_) {
        const QJsonValue value = text_.element(element);
        const QString who = QStringLiteral("element %1: ").arg(element + 1);
        prog::Finding finding;
        if (!value.isObject()) {
            finding.fault = prog::Fault::NoStatement;
        } else if (const auto fault = prog::typeFault(value)) {
            finding.fault = *fault;
            finding.path = prog::field::type;
            finding.arguments = {value.toObject().value(prog::field::type).toString()};
        } else {
            continue;
        }
        return text_.problemAt(element, finding.path, who + prog::englishText(finding));
    }
    return std::nullopt;
}

QJsonValue Project::toolset() const {
    int element = 0;  // the one that is no statement
    while (element < statementCount() && elements_[std::size_t(element)] == element) {
        ++element;
    }
    return element < text_.elementCount() ? text_.element(element) : QJsonValue(QJsonValue::Undefined);
}

std::optional<StationList> StationList::read(const QString& folder, const QString& shown, Problem* problem) {
    StationList list;
    list.shown_ = QDir::cleanPath(QDir(shown).filePath(prog::file::stations));
    mendo::FileProblem found;
    const std::optional<mendo::JsonText> json =
        mendo::readJsonFile(QDir(folder).filePath(prog::file::stations), &found);
    if (json && json->value() == QJsonObject()) {
        return list;  // the package writes an empty list so
    }
    *problem = {list.shown_, found.place, found.text()};
    list.text_ = json ? InputArray::from(*json, list.shown_, problem) : std::nullopt;
    if (!list.text_) {
        return std::nullopt;
    }
    for (int row = 0; row < list.text_->elementCount(); ++row) {
        const QString project = projectOf(list.text_->element(row));
        if (!project.isEmpty() && !list.projects_.contains(project)) {
            list.projects_.append(project);
        }
    }
    return list;
}

std::vector<int> StationList::rowsOf(const QString& project) const {
    std::vector<int> rows;
    for (int row = 0; text_ && row < text_->elementCount(); ++row) {
        if (projectOf(text_->element(row)) == project) {
            rows.push_back(row);
        }
    }
    return rows;
}

}  // namespace run
