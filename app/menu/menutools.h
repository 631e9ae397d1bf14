#pragma once

#include "app/backup/support.h"

#include <QObject>
#include <QPointer>

#include <functional>

class QToolButton;

namespace app {

class BackupTools;
class ExampleLibrary;
class HelpPage;
class MenuSheet;
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

    /// Asked before a backup is restored, which replaces ports and stations, too; false: not now.
    void setRestoreGuard(const std::function<bool()>& mayRestore);
    /// Shows the first setup unless the operator has dismissed it for good or all is done.
    void offerSetup();
    void openHandbook();
    /// The handbook in its dock.
    HelpPage* help() const;

signals:
    void exampleChosen(const QString& name);
    void languageChosen(const QString& language);
    void rolesAsked();
    void telemetryAsked();
    /// Unsaved edits have to be settled before a backup is restored: call `goOn` then.
    void restoreAsked(const std::function<void()>& goOn);
    /// A backup or a support archive was written.
    void saved(const QString& message);
    /// Projects and settings were replaced.
    void restored();

private:
    void toggleMenu();
    void openMenu();
    void openSetup();
    void lead(const QString& button) const;
    [[nodiscard]] bool hasWelded();
    [[nodiscard]] SupportFacts facts() const;

    PanelWindow* window_;
    QPointer<QWidget> page_;
    const RunHistory* history_;
    QToolButton* button_;  ///< in the header
    QPointer<MenuSheet> menu_;
    BackupTools* backup_;
    bool welded_ = false;
    QString lookedAt_;  ///< the newest run when the history was read
};

}  // namespace app
