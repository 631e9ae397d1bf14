#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QStringList>

#include <optional>

class QObject;

namespace lumo {

/// A project file: a JSON array of the statements in their order and, usually last, the tool set. The tool
/// set is the first element that has an `end`, or a `ref` and no type.
struct Project {
    QJsonArray statements;
    QJsonObject toolset;      ///< empty where the file has none
    int toolsetElement = -1;  ///< its position in the file; -1: none

    /// Position in the file of a statement.
    [[nodiscard]] int elementOf(int statement) const {
        return toolsetElement >= 0 && statement >= toolsetElement ? statement + 1 : statement;
    }
};

/// Splits a file's content. Nothing when it is no array of objects, or when no object is a statement. An
/// `end` or `ref` that the tool set lacks is taken from the default tool set.
[[nodiscard]] std::optional<Project> projectFrom(const QJsonValue& content);
/// Reads a project file. Nothing, and one report by the host's file service, when the file is missing, cannot
/// be read, holds no project or is one of the package's settings files.
[[nodiscard]] std::optional<Project> readProject(const QString& path);
/// The same for a station. Its project runs without being shown first, so a statement of an unknown type is
/// refused, too.
[[nodiscard]] std::optional<Project> readStationProject(const QString& path);
/// Puts the statements into `lumo.program` and the tool set, where there is one, into `lumo.toolset`.
void loadProject(QObject* sender, const Project& project);

/// `lumo.program` and the tool set that belongs to it as a project file holds them.
[[nodiscard]] QJsonValue projectDocument();
/// Writes `content`, all or nothing. A file in its place that is no project is kept as NAME.damaged. False,
/// after a report by the host's file service, when nothing was written.
bool writeProject(const QString& path, const QJsonValue& content);
/// The same with projectDocument().
bool saveProject(const QString& path);

/// The name that the panel shows for a project: the file's name up to the first dot.
[[nodiscard]] QString projectName(const QString& path);
/// The file, in the working directory, of a project that New or Save As names.
[[nodiscard]] QString projectFileName(const QString& name);
/// Whether the path leads to one of the package's settings files in the working directory.
[[nodiscard]] bool isSettingsFile(const QString& path);

/// Why a name cannot be that of a new project.
enum class NameFault { None, Empty, TooLong, Taken };
/// `files`: names of the plain files in the folder, with any ending; `others`: of all its entries. The names
/// of the settings files and names that no file can have count as taken.
[[nodiscard]] NameFault projectNameFault(const QString& name, const QStringList& files,
                                         const QStringList& others);
/// The same for the working directory.
[[nodiscard]] NameFault projectNameFault(const QString& name);

}  // namespace lumo
