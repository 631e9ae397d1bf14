#pragma once

#include "campaign/scenario.h"

#include <QPointer>
#include <QStackedWidget>
#include <QTemporaryDir>

#include <memory>

class LumoWidget;
class QAbstractButton;
class QTableWidget;
class SignalsBindWidget;

namespace campaign {

/// The panel around the executor: the host's central widget, the folder of the files, and the package's
/// page where a schedule has one.
class PageWorld {
public:
    PageWorld();
    ~PageWorld();

    /// Forgets what an earlier schedule left in the process, and writes the schedule's files.
    void prepare(const Scenario& scenario);
    /// Makes the page, as the host does.
    void make();
    /// Closes it; none is no error.
    void end();
    [[nodiscard]] bool exists() const { return !page_.isNull(); }

    [[nodiscard]] LumoWidget* page() const;
    /// The program's table; null without a page.
    [[nodiscard]] QTableWidget* table() const;
    [[nodiscard]] SignalsBindWidget* stations() const;

    /// Whether the switch of the stations is on.
    [[nodiscard]] bool isListening() const;
    /// Switches it off, whatever dialog is open.
    void stopListening() const;
    /// What the stations' page shows of stations that wait for nothing, but should not.
    [[nodiscard]] QString staleStation() const;

    /// What of the program the table shows otherwise than it is; empty when they agree.
    [[nodiscard]] QString disagreement() const;
    [[nodiscard]] static int dialogs();
    /// Below the host's central widget, besides its layout.
    [[nodiscard]] static int objects();

private:
    QTemporaryDir folder_;
    std::unique_ptr<QStackedWidget> center_;
    QPointer<LumoWidget> page_;
};

/// The dialogs and messages on the screen, the one that was opened last first.
QList<QWidget*> openDialogs();
/// Whether somebody could click the widget: it is seen, enabled and not behind a modal dialog.
bool isWithinReach(const QWidget* widget);
/// A click with the left button, when it is within reach. The widget may be gone afterwards.
bool click(QWidget* widget);

}  // namespace campaign
