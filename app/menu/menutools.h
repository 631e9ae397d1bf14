#pragma once

#include "app/backup/support.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>

class QToolButton;

namespace app {

class BackupTools;
class ExampleLibrary;
class HelpWindow;
class NoticeBar;
class PanelWindow;
class RunHistory;

/// What the menu in the header offers, and what it opens.
class MenuTools : public QObject {
    Q_OBJECT
public:
    /// `page`: the package's page. `history`: where the first weld is looked for.
    MenuTools(PanelWindow* window, QWidget* page, const RunHistory* history, QObject* parent = nullptr);
    ~MenuTools() override;

    /// The button for the header.
    QToolButton* button() const { return button_; }
    /// Asked before a backup is restored, which replaces ports and stations, too; false: not now.
    void setRestoreGuard(const std::function<bool()>& mayRestore);
    /// Shows the first setup unless the operator has dismissed it for good or all is done.
    void offerSetup();
    void openHandbook();
    /// The window of the handbook; null before it was opened.
    HelpWindow* help() const { return help_.get(); }

signals:
    void exampleChosen(const QString& name);
    void languageChosen(const QString& language);
    /// Unsaved edits have to be settled before a backup is restored: call `goOn` then.
    void restoreAsked(const std::function<void()>& goOn);
    /// A backup or a support archive was written.
    void saved(const QString& message);
    /// Projects and settings were replaced.
    void restored();

private:
    void openMenu();
    void openSetup();
    void lead(const QString& button) const;
    [[nodiscard]] bool hasWelded();
    [[nodiscard]] SupportFacts facts() const;

    PanelWindow* window_;
    QPointer<QWidget> page_;
    const RunHistory* history_;
    QToolButton* button_;
    BackupTools* backup_;
    std::unique_ptr<HelpWindow> help_;
    bool welded_ = false;
    QString lookedAt_;  ///< the newest run when the history was read
};

}  // namespace app
