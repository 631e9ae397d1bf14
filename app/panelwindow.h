#pragma once

#include <QMainWindow>

#include <functional>
#include <utility>

class QHBoxLayout;
class QStackedWidget;
class QToolButton;

namespace app {

class DockArea;
class Header;
class NoticeBar;

/// The host's window: header, the package's page with the docks beside it, the rail, and a status line with
/// notices. Header, rail and status line are never covered.
class PanelWindow : public QMainWindow {
    Q_OBJECT
public:
    PanelWindow();

    Header* header() const { return header_; }
    DockArea* docks() const { return docks_; }
    NoticeBar* notices() const { return notices_; }
    /// The central stacked widget, the home of every page.
    QStackedWidget* pages() const { return pages_; }
    /// What sheets lie over: page and navigation of the package.
    QWidget* stage() const;
    /// Offers a dock by a button of the header.
    void offerDock(const QString& id, const QString& button, const QString& icon, const QString& text);
    /// Offers a dock by a button, which is down while the dock is open.
    void offer(QToolButton* button, const QString& dock);
    /// Opens a dock by a key, anywhere.
    void offerByKey(Qt::Key key, const QString& dock);
    /// Takes over the column at the right.
    void setRail(QWidget* rail);
    /// Takes over what stands in the status line: why the panel does not do what one may expect of it, how
    /// far a run is, and how long the last part took.
    void setStatus(QWidget* why, QWidget* progress, QWidget* times);
    /// Lays out the frame for its size before it is shown, so that a page that is made now is laid out once.
    void prepare();
    /// By what everything grows, whatever the window's size; 0: by its size.
    void setChosenFactor(double factor);
    /// painted() comes once more.
    void tellNextPaint() { painted_ = false; }
    /// Asked before the window closes; false: not now.
    void setCloseGuard(std::function<bool()> mayClose) { mayClose_ = std::move(mayClose); }

signals:
    /// The window has been painted, and is on the screen: the first time, and after tellNextPaint().
    void painted();

protected:
    bool event(QEvent* event) override;
    /// Gives the keyboard back to the dialog that blocks the window: a click beside the dialog activates
    /// the window, where no key would be heard.
    void changeEvent(QEvent* event) override;
    /// Ends the program, unless the guard objects: what must be switched off is switched off then.
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* makeStatusLine();
    void fit();

    Header* header_;
    QStackedWidget* pages_;
    DockArea* docks_;
    NoticeBar* notices_;
    QWidget* rail_ = nullptr;
    QHBoxLayout* body_;
    QHBoxLayout* status_;
    QWidget* statusLine_;
    std::function<bool()> mayClose_;
    bool painted_ = false;
};

}  // namespace app
