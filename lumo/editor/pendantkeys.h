#pragma once

#include <QObject>

class QWidget;

/// Settings of the robot's hand guiding: the space in which the arm may be dragged, and the way. The robot
/// defines what the codes mean.
enum class DragSpace : int { Space0 = 0, Space1 = 1 };
enum class DragType : int { Type0 = 0, Type1 = 1, Type2 = 2 };

/// The same codes under the names of the program editor.
enum class DragSpace_E : int { Space0 = 0, Space1 = 1 };
enum class DragType_E : int { Type0 = 0, Type1 = 1, Type2 = 2 };

/// Sets the hand guiding: by the handle of the robot if it has one, else by the buttons at its side.
void setDrag(QWidget* sender, DragSpace space, DragType type);
void setDrag(QWidget* sender, DragSpace_E space, DragType_E type);

/// Connects a long press of the pendant's keys with the hand guiding of the key, while `page` exists.
void followDragKeys(QWidget* page);

namespace lumo {

/// Clicks of the pendant's keys for a page: those that come while the page is visible, its window is active
/// and no point page is open.
class PendantKeys : public QObject {
    Q_OBJECT
public:
    explicit PendantKeys(QWidget* page);

signals:
    void next();
    void last();
    void center();
    void enter();
    void remove();

private:
    void follow(const char* name, void (PendantKeys::*clicked)());

    QWidget* page_;
};

}  // namespace lumo
