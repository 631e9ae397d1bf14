#pragma once

#include "files/recoveryfile.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

class QMessageBox;

namespace lumo {

class StoredState;

/// Keeps what is not saved yet in a recovery file, and offers such files.
///
/// The file is written a moment after an edit, whole, and at the end of the process; never while nothing is
/// unsaved, and not during a run, which writing could hold up: then after it. It is removed when the project
/// is saved, and when another project takes its place or the operator discards the changes. A file that was
/// left by a crash is offered when its project is opened or the panel starts. Where the operator decides
/// later, it stays, and gives way to a new one under another name.
///
/// Files are written and offered only for a host that sets `lumo_recovery`.
class Recovery : public QObject {
    Q_OBJECT
public:
    /// `page` is the parent of the questions.
    Recovery(StoredState* stored, QWidget* page);
    ~Recovery() override;

    /// Another project is open now; the changes of the one before are saved or discarded.
    void setProjectPath(const QString& path);
    /// Whether something would be lost now: compares.
    [[nodiscard]] bool isUnsaved();
    /// The changes are not to be kept. Counts until the next edit.
    void discard();
    /// Offers the recovery file of the open project, if there is one.
    void offer();

signals:
    /// The operator wants this content of a project; its path is empty for a program without a file.
    void restored(const QString& path, const lumo::Project& project);

private:
    void onTouched();
    void onHistory();
    void onStored();
    void onTimer();
    void keep();
    bool giveWay(const QString& file) const;
    void removeOwn();
    void offerAtStart();
    void offerNext();
    void ask(const QString& file, const Recovered& recovered, int lines);
    void answered(const QString& file, const Project& project, int answer);
    void setAside(const QString& file) const;

    StoredState* stored_;
    QWidget* page_;
    QString path_;
    QString ownFile_;           ///< the recovery file that holds the program in the tree
    QByteArray written_;        ///< its program
    bool isEdited_ = false;     ///< a program without a file was edited by hand
    bool isLeft_ = false;       ///< the changes were discarded
    bool isToldFault_ = false;  ///< that the file cannot be written
    QTimer timer_;
    QStringList offers_;  ///< files still to be offered
    QPointer<QMessageBox> question_;
};

}  // namespace lumo
