#include "files/projectfile.h"

#include "files/settingsfile.h"
#include "files/stationrun.h"
#include "module/host.h"
#include "program/statement.h"
#include "program/words.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

using mendo::FileProblem;
using mendo::JsonText;
using mendo::ModuleManager;

using namespace prog;

namespace lumo {

namespace {

constexpr QLatin1String fileEnding = ".json"_l1;

void report(const QString& path, const FileProblem::Reason& reason, const mendo::TextPlace& place = {}) {
    emit m()->fileProblem({path, place, {reason}});
}

bool isToolset(const QJsonValue& element) {
    const QJsonObject object = element.toObject();
    return object.contains(field::end) || (object.contains(field::ref) && !object.contains(field::type));
}

QString typeOf(const QJsonValue& statement) {
    return statement.toObject().value(field::type).toString();
}

bool isStatement(const QJsonValue& element) {
    return statementRow(typeOf(element)) != nullptr;
}

bool isProject(const QJsonValue& content) {
    return projectFrom(content).has_value();
}

/// The selectors of tool and work object write into these parts.
QJsonObject completed(QJsonObject toolset) {
    for (const QLatin1String part : {field::end, field::ref}) {
        if (!toolset.value(part).isObject()) {
            toolset.insert(part, m(key::defaultToolset)->c(part)->exportToJson());
        }
    }
    return toolset;
}

/// A list of parameter sets, for instance, holds no statement at all. Single statements of an unknown type
/// are shown to the operator, and do nothing in a run.
bool areStatements(const QJsonArray& elements) {
    const auto isObject = [](const QJsonValue& element) { return element.isObject(); };
    return std::all_of(elements.begin(), elements.end(), isObject) &&
           (elements.isEmpty() || std::any_of(elements.begin(), elements.end(), isStatement));
}

/// Reports a file that is missing or holds settings, as the file service reports one that cannot be read.
std::optional<JsonText> readText(const QString& path) {
    if (mendo::isMissing(path)) {
        report(path, {FileProblem::Kind::NoSuchFile});
        return std::nullopt;
    }
    if (isSettingsFile(path)) {
        report(path, {FileProblem::Kind::IsSettings});
        return std::nullopt;
    }
    return ModuleManager::readJsonText(path);
}

std::optional<Project> projectIn(const std::optional<JsonText>& text, const QString& path) {
    std::optional<Project> project = text ? projectFrom(text->value()) : std::nullopt;
    if (text && !project) {
        report(path, {FileProblem::Kind::NoProject});
    }
    return project;
}

/// Whether a text can be the name of a file that is not hidden.
bool isFileName(const QString& name) {
    return !name.startsWith(QLatin1Char('.')) && std::none_of(name.begin(), name.end(), [](QChar c) {
        return c == QLatin1Char('/') || c.category() == QChar::Other_Control;
    });
}

/// The absolute path of a file, of a link its target's, whether it is there or not.
QString location(const QString& path) {
    const QFileInfo file(path);
    return file.exists() ? file.canonicalFilePath() : QDir::cleanPath(file.absoluteFilePath());
}

bool isSettingsName(const QString& name) {
    return std::any_of(std::begin(settingsNames), std::end(settingsNames), [&name](QLatin1String settings) {
        return name.compare(settings, Qt::CaseInsensitive) == 0;
    });
}

}  // namespace

std::optional<Project> projectFrom(const QJsonValue& content) {
    Project project;
    project.statements = content.toArray();
    const auto toolset = std::find_if(project.statements.begin(), project.statements.end(), isToolset);
    if (toolset != project.statements.end()) {
        project.toolset = completed((*toolset).toObject());
        project.toolsetElement = int(toolset - project.statements.begin());
        project.statements.erase(toolset);
    }
    return content.isArray() && areStatements(project.statements) ? std::make_optional(project)
                                                                  : std::nullopt;
}

std::optional<Project> readProject(const QString& path) {
    return projectIn(readText(path), path);
}

std::optional<Project> readStationProject(const QString& path) {
    const std::optional<JsonText> text = readText(path);
    std::optional<Project> project = projectIn(text, path);
    if (!project) {
        return std::nullopt;
    }
    const QJsonArray& statements = project->statements;
    const auto unknown = std::find_if_not(statements.begin(), statements.end(), isStatement);
    if (unknown != statements.end()) {
        report(path, {FileProblem::Kind::UnknownStatement, {typeOf(*unknown)}},
               text->place(project->elementOf(int(unknown - statements.begin()))));
        return std::nullopt;
    }
    return project;
}

void loadProject(QObject* sender, const Project& project) {
    m(key::program)->loadJson(sender, project.statements);
    if (!project.toolset.isEmpty()) {
        m(key::toolset)->loadJson(sender, project.toolset);
    }
}

QJsonValue projectDocument() {
    QJsonArray content = m(key::program)->exportToJson(true).toArray();
    content.append(projectToolset()->exportToJson(true));
    return content;
}

bool writeProject(const QString& path, const QJsonValue& content) {
    return ModuleManager::writeToJson(path, content, true, isProject);
}

bool saveProject(const QString& path) {
    mendo::JsonWriter text(mendo::JsonWriter::Layout::Document);
    text.beginArray().elements(m(key::program)).node(projectToolset()).endArray();
    return ModuleManager::writeText(path, text.take(), isProject);
}

QString projectName(const QString& path) {
    return path.section(QLatin1Char('/'), -1).section(QLatin1Char('.'), 0, 0);
}

QString projectFileName(const QString& name) {
    return name + fileEnding;
}

bool isSettingsFile(const QString& path) {
    const QString asked = location(path);
    return std::any_of(std::begin(settingsNames), std::end(settingsNames),
                       [&asked](QLatin1String name) { return asked == location(projectFileName(name)); });
}

NameFault projectNameFault(const QString& name, const QStringList& files, const QStringList& others) {
    constexpr int longest = 19;
    if (name.trimmed().isEmpty()) {
        return NameFault::Empty;
    }
    if (name.size() > longest) {
        return NameFault::TooLong;
    }
    const bool fileTaken = std::any_of(files.begin(), files.end(), [&name](const QString& file) {
        return QFileInfo(file).baseName() == name || file == projectFileName(name);
    });
    if (fileTaken || others.contains(projectFileName(name)) || isSettingsName(name) || !isFileName(name)) {
        return NameFault::Taken;
    }
    return NameFault::None;
}

NameFault projectNameFault(const QString& name) {
    const QDir folder;
    QStringList files = folder.entryList(QDir::Files, QDir::Unsorted);
    // What a crash has left of a project takes no name.
    const auto isLeft = [](const QString& file) {
        return file.contains(fileEnding + QLatin1String(".recovery"));
    };
    files.erase(std::remove_if(files.begin(), files.end(), isLeft), files.end());
    return projectNameFault(name, files,
                            folder.entryList(QDir::AllEntries | QDir::System | QDir::Hidden, QDir::Unsorted));
}

}  // namespace lumo
