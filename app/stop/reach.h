#pragma once

#include <memory>

class QWidget;

namespace app {

/// Lets mouse and finger reach parts of the panel's window where Qt would swallow them: while a dialog blocks
/// the window, or while a list or menu is open. Only one object at a time.
class Reach {
public:
    enum class Through {
        Dialogs,          ///< all of a part is used as if there were no dialog
        DialogsAndLists,  ///< a button, which is also pressed beside an open list
    };

    Reach();
    ~Reach();

    void add(QWidget* part, Through through);

private:
    class Handler;
    std::unique_ptr<Handler> handler_;
};

}  // namespace app
