#pragma once

#include "files/projectfile.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>

class AddParamDialog;
class QFileDialog;
class QWidget;

namespace lumo {

/// The work behind the four project buttons: asks for a name or a file, then creates, opens, saves or copies
/// a project.
///
/// New and Open are refused while a program runs, at the press and at the answer. The host's file service
/// reports what fails; nothing changes then.
class ProjectDialogs : public QObject {
    Q_OBJECT
public:
    /// `page` is the parent of the dialogs.
    explicit ProjectDialogs(QWidget* page);
    ~ProjectDialogs() override;

    void newProject();
    void openProject();
    /// Saves the program as `path`; an empty path means that no project is open.
    void saveProject(const QString& path);
    void saveProjectAs();

signals:
    /// `path` is the open project now. Its program is loaded next.
    void projectChosen(const QString& path);
    /// The chosen project's program is in the tree.
    void projectLoaded();
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
    void askName(const Purpose& purpose);
    void nameAnswered(const Purpose& purpose, bool ok);
    void createProject(const QString& name);
    void copyProject(const QString& name);
    void fileSelected(const QString& path);
    void loadFile(const QString& path);
    [[nodiscard]] static bool refusedWhileRunning();

    QWidget* page_;
    QPointer<AddParamDialog> nameDialog_;
    QPointer<QFileDialog> fileDialog_;
};

}  // namespace lumo
