#pragma once

#include <QLatin1String>

class QWidget;
class SwitchButton;

namespace lumo {

/// Gives a switch of the program page its colours, and binds it to a node: it shows the node's state and
/// writes what the operator switches. `page` is the sender.
void setUpSwitch(SwitchButton* button, QWidget* page, QLatin1String path);

}  // namespace lumo
