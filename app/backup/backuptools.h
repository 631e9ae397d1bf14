#pragma once

#include "app/backup/backup.h"
#include "app/backup/support.h"

#include <QObject>

#include <functional>

class QWidget;

namespace app {

class ResultExport;

/// Makes backups and support archives at the operator's wish, and restores backups: asks for the file, tells
/// what would be replaced, refuses while a program runs. Nothing of it runs an event loop of its own.
class BackupTools : public QObject {
    Q_OBJECT
public:
    /// `window`: the panel's. `sheets`: what a question lies over.
    BackupTools(QWidget* window, QWidget* sheets, QObject* parent = nullptr);

    void backUp();
    void saveSupport(const SupportFacts& facts);
    void restore();
    /// Asked whenever something is to be restored; false: not now.
    void setRestoreGuard(const std::function<bool()>& mayRestore) { mayRestore_ = mayRestore; }
    /// Whether nothing may be restored now; tells why.
    [[nodiscard]] bool refuses();

signals:
    /// A file was written.
    void saved(const QString& message);
    /// Something could not be done.
    void told(const QString& message);
    /// Projects and settings were replaced: the panel has to be started anew.
    void restored();

private:
    void save(const QString& name, const QByteArray& bytes, const QString& error);
    void chosen(const QString& file);
    void carryOut(const RestorePlan& plan);

    QWidget* window_;
    QWidget* sheets_;
    ResultExport* export_;
    std::function<bool()> mayRestore_;
};

}  // namespace app
