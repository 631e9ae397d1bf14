#pragma once

#include <QObject>

namespace lumo {

/// Offers no context menu while a run, a step or a pause is under way: a click that closes one is lost, also
/// one on Stop. One that is open already is closed when the wait below it ends. Lives as long as its parent.
class MenuGuard : public QObject {
    Q_OBJECT
public:
    explicit MenuGuard(QObject* parent);

    bool eventFilter(QObject* watched, QEvent* event) override;
};

/// Ends the event loops that Qt opens of its own accord: of context menus (scroll bars, spin boxes, the
/// file dialog), of drags, and of the warnings of a file dialog. Somebody who waits below one of them
/// could not go on before the operator has closed it.
void endLoopsOfQt();

}  // namespace lumo
