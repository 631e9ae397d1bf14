#pragma once

#include <QMainWindow>

#include <functional>
#include <utility>

class QHBoxLayout;
class QStackedWidget;
class QToolButton;

namespace app {

class Navigation;
class NoticeBar;
class PanelBody;
class PartsBlock;
class RunStopButton;
class StateBlock;

/// The host's window: a header with the state, navigation and Stop, the pages, beside them the cell, and
/// below them a status line with notices.
class PanelWindow : public QMainWindow {
    Q_OBJECT
public:
    static constexpr int headerHeight = 50;
    static constexpr int statusHeight = 48;

    PanelWindow();

    Navigation* navigation() const { return navigation_; }
    NoticeBar* notices() const { return notices_; }
    StateBlock* state() const { return state_; }
    RunStopButton* stop() const { return stop_; }
    PartsBlock* parts() const { return parts_; }
    /// The central stacked widget, the home of every page.
    QStackedWidget* pages() const;
    /// Offers the views in the header, and by F6 (path), F7 (signals), F8 (results) and F10 (event log)
    /// anywhere.
    void offerViews();
    /// The header tells whether the views are open.
    void showViewsOpen(bool open);
    /// Puts a button before the counter of parts.
    void addToHeader(QWidget* button);
    /// Puts a button right before Stop.
    void addBeforeStop(QWidget* button);
    /// Takes over what stands in the status line: why the panel does not do what one may expect of it, how
    /// far a run is, and how long the last part took.
    void setStatus(QWidget* why, QWidget* progress, QWidget* times);
    /// What the strip of the cell is made in: what moves is styled again. Sheets lie over it.
    QWidget* stripParent() const;
    /// Shows the strip of the cell. Until the operator folds or unfolds it, it is unfolded where it fits
    /// beside the pages, and folded elsewhere.
    void setStrip(QWidget* strip);
    void unfoldStrip(bool unfolded);
    /// The strip's button tells when the cell does not run as fast as the wall clock.
    void showSpeed(double factor);
    void placeStrip();
    /// Asked before the window closes; false: not now.
    void setCloseGuard(std::function<bool()> mayClose) { mayClose_ = std::move(mayClose); }

signals:
    /// The window has been painted for the first time, and is on the screen.
    void painted();
    /// The views are wanted at a page: 0 for the path, 1 for the signals, 2 for the results, 3 for
    /// the event log.
    void viewsAsked(int page);
    void viewsDismissed();

protected:
    bool event(QEvent* event) override;
    /// Gives the keyboard back to the dialog that blocks the window: a click beside the dialog activates
    /// the window, where no key would be heard.
    void changeEvent(QEvent* event) override;
    /// Ends the program, unless the guard objects: what must be switched off is switched off then.
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* makeHeader();
    QWidget* makeStatusLine();

    StateBlock* state_;
    RunStopButton* stop_;
    PartsBlock* parts_;
    Navigation* navigation_;
    NoticeBar* notices_;
    QHBoxLayout* header_ = nullptr;
    QToolButton* viewsButton_;
    QToolButton* stripButton_;
    PanelBody* body_;
    QHBoxLayout* status_;
    std::function<bool()> mayClose_;
    bool operatorPlaces_ = false;
    bool painted_ = false;
};

}  // namespace app
