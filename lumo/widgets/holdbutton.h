#pragma once

#include "widgets/wrapbutton.h"

namespace lumo {

/// A button for what lasts while it is held. It lets go with the finger or the key, and also when the finger
/// leaves it, when it is hidden or disabled, and when another window gets the keyboard focus. Then only a new
/// press holds it again.
class HoldButton : public WrapButton {
    Q_OBJECT
public:
    explicit HoldButton(QWidget* parent = nullptr);

    [[nodiscard]] bool isHeld() const { return held_; }
    /// Lets go by itself, as when the finger is lifted.
    void letGo();

signals:
    /// When the state changes.
    void held(bool on);

protected:
    void mouseMoveEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void hold();

    bool held_ = false;
};

}  // namespace lumo
