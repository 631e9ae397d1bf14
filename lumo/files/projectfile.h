#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QStringList>

#include <optional>

class QObject;

namespace lumo {

/// What a project file holds: a JSON array of the statements, first line first, and behind them the
/// tool set: the first element that has an `end`, or a `ref` and no type.
struct Project {
    QJsonArray statements;
    QJsonObject toolset;      ///< empty where the file has none
    int toolsetElement = -1;  ///< its position in the file; negative: none

    /// The position in the file of a statement.
    [[nodiscard]] int elementOf(int statement) const {
        return toolsetElement >= 0 && statement >= toolsetElement ? statement + 1 : statement;
    }
};

/// Takes a file's content apart; nothing when it is no project: no array of objects, or one in which nothing
/// is a statement. The `end` or `ref` that a tool set lacks is the default one.
[[nodiscard]] std::optional<Project> projectFrom(const QJsonValue& content);
/// Reads a project file. Nothing, and one report by the host's file service, when the file is missing,
/// cannot be read, holds no project or is one of the package's settings files.
[[nodiscard]] std::optional<Project> readProject(const QString& path);
/// The same for a station, whose project runs without anybody having looked at it: a file with a statement of
/// an unknown type holds no project either.
[[nodiscard]] std::optional<Project> readStationProject(const QString& path);
/// Puts the statements into `lumo.program` and the tool set, where there is one, into `lumo.toolset`.
void loadProject(QObject* sender, const Project& project);

/// `lumo.program` and the tool set that belongs to it as a project file holds them.
[[nodiscard]] QJsonValue projectDocument();
/// Writes `content` whole. A file in its place that holds anything but a project is kept as
/// NAME.damaged. False, after the report of the host's file service, when nothing was written.
bool writeProject(const QString& path, const QJsonValue& content);
/// Writes the program of the tree and the tool set that belongs to it; as `writeProject`.
bool saveProject(const QString& path);

/// The name that the panel shows for a project: the file's name up to the first dot.
[[nodiscard]] QString projectName(const QString& path);
/// The file, in the working directory, of a project that New or Save As names.
[[nodiscard]] QString projectFileName(const QString& name);
/// Whether the path leads to one of the package's settings files in the working directory.
[[nodiscard]] bool isSettingsFile(const QString& path);

/// Why a name cannot become a new project file.
enum class NameFault { None, Empty, TooLong, Taken };
/// `files`: names of the plain files in the folder, any ending; `others`: of whatever else it holds.
/// What is no file name and the names of the settings files count as taken.
[[nodiscard]] NameFault projectNameFault(const QString& name, const QStringList& files,
                                         const QStringList& others);
/// The same for the working directory.
[[nodiscard]] NameFault projectNameFault(const QString& name);

}  // namespace lumo
