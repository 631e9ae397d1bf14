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

class RunStopButton;
class StopBox;

/// The pendant, a window above all others: emergency stop, drive power and Stop; unfolded also operating
/// mode, jogging and the end tool's keys. It has no parent window, so that no dialog blocks it.
///
/// A click on it leaves the keyboard focus with the other window. F9 moves the focus to the pendant and
/// back.
class PendantWindow : public QWidget {
    Q_OBJECT
public:
    /// Make it after the package's page.
    explicit PendantWindow(sim::Controller* controller);

    /// Shows it at the remembered position, else in a corner of the screen beside the panel (`panel` is its
    /// frame geometry), else folded over the panel's lower left corner.
    void showBeside(const QRect& panel);
    void setUnfolded(bool unfolded);
    bool isUnfolded() const;
    /// Stops a run; what that does is not the pendant's.
    RunStopButton* runStop() const { return runStop_; }
    /// The emergency stop and Stop in screen coordinates.
    QRect stopGeometry() const;
    /// Moves the keyboard focus to the pendant, or back to the former window or its modal dialog.
    void toggleKeyboardFocus();

protected:
    bool event(QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    /// The operator cannot close or minimise the window, because it has the emergency stop.
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QWidget* makeLowerPart(sim::Controller* controller);
    void keepOnScreen();

    StopBox* stop_;
    RunStopButton* runStop_;
    QWidget* lowerPart_;
    QPoint placed_;                    ///< the last position that was not chosen by the operator
    std::optional<QPoint> foldedPos_;  ///< position before it was unfolded
    QPoint unfoldedPos_;               ///< position after it was unfolded
    QPointer<QWindow> previousFocus_;  ///< window that had the keyboard focus before
};

}  // namespace app
