#pragma once

#include <QPushButton>

namespace app {

/// A button for what lasts as long as it is held. It is let go with the finger or the key, and also
/// when the finger leaves it, when it is hidden or disabled, and when the keyboard goes to another
/// window; after that only a new press takes hold again.
class HoldButton : public QPushButton {
    Q_OBJECT
public:
    explicit HoldButton(const QString& text, QWidget* parent = nullptr);

    bool isHeld() const { return held_; }
    /// As by a finger.
    void hold();
    void letGo();

signals:
    /// Only changes.
    void held(bool on);

protected:
    void mouseMoveEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    bool held_ = false;
};

}  // namespace app
