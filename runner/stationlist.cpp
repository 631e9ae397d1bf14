#include "runner/stationlist.h"

#include "mendo/plainfile.h"

#include <QDir>
#include <QJsonDocument>

namespace run {

namespace {

const QString stationsFile = QStringLiteral("lumo_signalsConfig.json");

/// An empty list is written as an empty object.
bool isEmptyList(const QString& file) {
    QString ignored;
    const QJsonDocument document =
        QJsonDocument::fromJson(mendo::readPlainFile(file, &ignored).value_or(QByteArray()));
    return document.isObject() && document.object().isEmpty();
}

}  // namespace

std::optional<StationList> StationList::read(const QString& folder, const QString& shown, Problem* problem) {
    const QString file = QDir(folder).filePath(stationsFile);
    if (isEmptyList(file)) {
        return StationList();
    }
    const std::optional<JsonText> text = JsonText::read(file, QDir(shown).filePath(stationsFile), problem);
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
