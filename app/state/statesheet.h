#pragma once

#include "app/sheet/sheet.h"
#include "app/state/panelstate.h"

namespace app {

/// Says why the panel is in its state, and leads to the place where that can be seen or changed.
class StateSheet : public Sheet {
    Q_OBJECT
public:
    /// `sentences`: those of the status line.
    StateSheet(const PanelState& state, const QStringList& sentences, QWidget* over);

signals:
    void placeAsked(app::Place place, int line);
};

}  // namespace app
