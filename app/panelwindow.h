#pragma once

#include <QMainWindow>

class QStackedWidget;
class QToolButton;

namespace app {

class Navigation;
class NoticeBar;
class PanelBody;

/// The host's window: a header with navigation and notices, the pages, and beside them the cell.
class PanelWindow : public QMainWindow {
    Q_OBJECT
public:
    PanelWindow();

    Navigation* navigation() const { return navigation_; }
    NoticeBar* notices() const { return notices_; }
    /// The central stacked widget, the home of every page.
    QStackedWidget* pages() const;
    /// Takes over the strip of the cell. Until the operator folds or unfolds it, it is unfolded where
    /// it fits beside the pages, and folded elsewhere.
    void setStrip(QWidget* strip);
    void unfoldStrip(bool unfolded);
    void placeStrip();

protected:
    /// Gives the keyboard back to the dialog that blocks the window: a click beside the dialog activates
    /// the window, where no key would be heard.
    void changeEvent(QEvent* event) override;
    /// Ends the program, whatever waits below: what must be switched off is switched off then.
    void closeEvent(QCloseEvent* event) override;

private:
    QWidget* makeHeader();

    Navigation* navigation_;
    NoticeBar* notices_;
    QToolButton* stripButton_;
    PanelBody* body_;
    bool operatorPlaces_ = false;
};

}  // namespace app
