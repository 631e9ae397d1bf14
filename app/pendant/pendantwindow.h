#pragma once

#include <QPoint>
#include <QPointer>
#include <QWidget>
#include <QWindow>

#include <optional>

namespace sim {
class Controller;
}

namespace app {

class StopBox;

/// The pendant in a window of its own, over all others: emergency stop and drive power, and, unfolded,
/// operating mode, jog and the end tool's keys. No dialog blocks it, because it belongs to no window.
///
/// A click does not take the keyboard from the window that has it, as the keys of a real pendant do not.
/// F9 gives the keyboard to the pendant, and back.
class PendantWindow : public QWidget {
    Q_OBJECT
public:
    /// The package's page has been made.
    explicit PendantWindow(sim::Controller* controller);

    /// Shows it where it was left, else in a corner of the screen: beside the panel (its rectangle with
    /// the frame), or folded in the lower left, where the panel has least to show.
    void showBeside(const QRect& panel);
    void setUnfolded(bool unfolded);
    bool isUnfolded() const;
    /// The stop, on the screen.
    QRect stopGeometry() const;
    /// To the pendant, or back to the window that had it, or to the dialog that blocks that one now.
    void passKeyboard();

protected:
    bool event(QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    /// An emergency stop is not closed, and not put away.
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QWidget* makeRest(sim::Controller* controller);
    void keepOnScreen();

    StopBox* stop_;
    QWidget* rest_;
    QPoint placed_;                    ///< where it was put, not by hand
    std::optional<QPoint> foldedPos_;  ///< where it stood before it was unfolded
    QPoint unfoldedPos_;               ///< where it stood then
    QPointer<QWindow> before_;         ///< had the keyboard
};

}  // namespace app
