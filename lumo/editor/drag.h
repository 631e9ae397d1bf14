#pragma once

class QWidget;

/// Codes of the robot's hand guiding, as its settings hold them: in which space the arm may be
/// dragged, and in which way. What they mean is the robot's affair.
enum class DragSpace : int { Space0 = 0, Space1 = 1 };
enum class DragType : int { Type0 = 0, Type1 = 1, Type2 = 2 };

/// The same codes under the names that the program editor uses.
enum class DragSpace_E : int { Space0 = 0, Space1 = 1 };
enum class DragType_E : int { Type0 = 0, Type1 = 1, Type2 = 2 };

/// Sets how the arm can be dragged by hand: with its handle where the robot has one, else with the
/// buttons at its side.
void setDrag(QWidget* sender, DragSpace space, DragType type);
void setDrag(QWidget* sender, DragSpace_E space, DragType_E type);

/// From now on, while `page` lives, a long press of the pendant's keys sets the hand guiding that
/// belongs to the key.
void followDragKeys(QWidget* page);
