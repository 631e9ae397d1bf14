#pragma once

#include "app/state/panelstate.h"

#include <QAbstractButton>

namespace app {

/// The block in the header that shows the panel's state on every page: sign, word and one line. A tap asks
/// why. The header gives it its size.
class StateBlock : public QAbstractButton {
    Q_OBJECT
public:
    explicit StateBlock(QWidget* parent = nullptr);

    void setState(const PanelState& state);
    const PanelState& state() const { return state_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    PanelState state_;
};

}  // namespace app
