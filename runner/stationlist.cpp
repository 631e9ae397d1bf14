#include "runner/stationlist.h"

#include "json/jsonfile.h"

#include <QDir>

namespace run {

namespace {

const QString stationsFile = QStringLiteral("lumo_signalsConfig.json");

}  // namespace

std::optional<StationList> StationList::read(const QString& folder, const QString& shown, Problem* problem) {
    const QString shownFile = QDir(shown).filePath(stationsFile);
    mendo::FileProblem found;
    const std::optional<mendo::JsonText> json =
        mendo::readJsonFile(QDir(folder).filePath(stationsFile), &found);
    if (json && json->value() == QJsonObject()) {
        return StationList();  // so an empty list is written
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
        const QString project = record.toObject().value(QStringLiteral("filePath")).toString();
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
