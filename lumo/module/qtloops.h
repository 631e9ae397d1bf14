#pragma once

#include <QObject>

namespace lumo {

/// Suppresses context menus while a run, a step or a pause is under way: the click that closes a menu is
/// lost, even a click on Stop. A menu that is already open is closed when the wait below it ends.
class MenuGuard : public QObject {
    Q_OBJECT
public:
    explicit MenuGuard(QObject* parent);

    bool eventFilter(QObject* watched, QEvent* event) override;
};

/// Ends the event loops that Qt itself opens: those of context menus (scroll bars, spin boxes, the file
/// dialog), of drags, and of a file dialog's warnings. A wait below such a loop could not end before the
/// operator closes it.
void endLoopsOfQt();

}  // namespace lumo
