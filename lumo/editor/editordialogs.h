#pragma once

#include "module/host.h"

#include <QLatin1String>
#include <QList>
#include <QModelIndex>
#include <QObject>
#include <QPointer>

#include <functional>

class QDialog;
class QWidget;

/// Opens the dialogs of the editor, one at a time, and keeps the open one under its key of the tree.
///
/// No call waits for an answer: the caller hands in what to do with it. A dialog that is deleted without an
/// answer counts as cancelled.
class EditorDialogs : public QObject {
    Q_OBJECT
public:
    /// Writes what the operator chose into a statement.
    using Store = std::function<void(ModuleObject* statement)>;
    /// `store` may be called before it returns, not later.
    using Answered = std::function<void(bool ok, const Store& store)>;

    /// `page` is the parent of the dialogs and the sender of what they write.
    explicit EditorDialogs(QWidget* page);
    /// Clears the key of an open dialog; the page deletes the dialog itself.
    ~EditorDialogs() override;

    /// Whether statements of the type have a dialog.
    [[nodiscard]] static bool existFor(const QString& type);
    [[nodiscard]] bool isOpen() const { return !dialog_.isNull(); }

    /// Opens the dialog of the statement's type; `treeKey` holds it while it is open.
    void ask(ModuleObject* statement, QLatin1String treeKey, const Answered& answered);
    /// Open the batch dialogs, whose `store` ignores its argument and writes the chosen statements.
    void askSpeed(const QList<QModelIndex>& rows, const Answered& answered);
    void askZone(const QList<QModelIndex>& rows, const Answered& answered);

private:
    template <typename Dialog, typename Signal>
    void show(Dialog* dialog, Signal answeredSignal, QLatin1String treeKey, const Store& store,
              const Answered& answered);
    void askParameterSet(ModuleObject* statement, bool isStart, QLatin1String treeKey,
                         const Answered& answered);
    void finish(bool ok, const Store& store, const Answered& answered);
    void forget();

    QWidget* page_;
    QPointer<QDialog> dialog_;
    QLatin1String treeKey_;
};
