#pragma once

#include "files/projectfile.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>

class AddParamDialog;
class QFileDialog;
class QMessageBox;
class QWidget;

namespace lumo {

/// The work behind the four project buttons: asks for a name or a file, then creates, opens, saves or copies
/// a project. Before another project takes the place of one with unsaved changes it asks what becomes of
/// them.
///
/// New and Open are refused while a program runs, at the press and at the answer. The host's file service
/// reports what fails; nothing changes then.
class ProjectDialogs : public QObject {
    Q_OBJECT
public:
    using Action = std::function<void()>;
    /// `page` is the parent of the dialogs. `isUnsaved` tells whether there are changes to be asked about.
    ProjectDialogs(QWidget* page, std::function<bool()> isUnsaved);
    ~ProjectDialogs() override;

    void newProject();
    void openProject();
    /// Saves the program as `path`; an empty path means that no project is open.
    void saveProject(const QString& path);
    void saveProjectAs();
    /// Shows content that is not that of the project's file: what a recovery file has kept. An empty path: it
    /// belongs to no file.
    void restoreProject(const QString& path, const lumo::Project& project);

    /// Whether changes would be lost now.
    [[nodiscard]] bool isUnsaved() const { return isUnsaved_(); }
    /// Does `then` at once where nothing is unsaved. Else asks whether to save, and does it when the changes
    /// are saved or may go; not when the operator cancels or the file cannot be written.
    void settle(const Action& then);

signals:
    /// `path` is the open project now. Its program is loaded next.
    void projectChosen(const QString& path);
    /// The chosen project's program is in the tree.
    void projectLoaded();
    /// The chosen project is open, as its file has it.
    void projectOpened();
    /// The project's tool set is in the tree.
    void toolsetLoaded();
    /// The open project's file holds the program.
    void projectSaved();

private:
    /// What a name is asked for: New or Save As.
    struct Purpose {
        QString title;
        QString emptyText;
        const char* logText;
        bool needsIdle;
        std::function<void(const QString&)> accept;
    };
    void saveAnd(const Action& then);
    void askNewName();
    void askFile();
    void showProject(const QString& path, const Project& project);
    void askName(const Purpose& purpose);
    void nameAnswered(const Purpose& purpose, bool ok);
    void createProject(const QString& name);
    void copyProject(const QString& name);
    void fileSelected(const QString& path);
    void loadFile(const QString& path);
    [[nodiscard]] static bool refusedWhileRunning();

    QWidget* page_;
    const std::function<bool()> isUnsaved_;
    QPointer<QMessageBox> question_;
    QPointer<AddParamDialog> nameDialog_;
    QPointer<QFileDialog> fileDialog_;
};

}  // namespace lumo
