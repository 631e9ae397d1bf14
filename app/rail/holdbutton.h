#pragma once

#include <QPointer>
#include <QPushButton>

class QWindow;

namespace app {

/// A button for actions that last while it is held. It is released by finger or key, and also when the
/// finger leaves it, when it is hidden or disabled, and when another window gets the keyboard focus; a
/// dialog that was open before only takes it back. Then only a new press holds it again.
class HoldButton : public QPushButton {
    Q_OBJECT
public:
    explicit HoldButton(const QString& text, QWidget* parent = nullptr);

    bool isHeld() const { return held_; }
    void hold();
    void release();

signals:
    /// When the state changes.
    void held(bool on);

protected:
    void mouseMoveEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void onFocusWindow(QWindow* window);

    bool held_ = false;
    QPointer<QWidget> dialog_;  ///< that blocked the window when it was pressed
};

}  // namespace app
