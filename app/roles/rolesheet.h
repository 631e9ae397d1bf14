#pragma once

#include "app/sheet/sheet.h"

#include <QTimer>

class QLineEdit;

namespace app {

class NumberKeys;
class RoleKeeper;

/// Asks for the integrator's code.
class CodeSheet : public Sheet {
    Q_OBJECT
public:
    /// `refused`: the title of the page that was refused; empty: none. `keeper` must outlive it.
    CodeSheet(RoleKeeper* keeper, const QString& refused, QWidget* over);

private:
    void enter();
    void refresh();

    RoleKeeper* keeper_;
    QLineEdit* code_;
    QLabel* answer_;
    QAbstractButton* enter_;
    QTimer tick_;  ///< while the next try has to wait
    bool wasWrong_ = false;
};

/// Sets the code, twice the same.
class NewCodeSheet : public Sheet {
    Q_OBJECT
public:
    NewCodeSheet(RoleKeeper* keeper, QWidget* over);

private:
    void store();

    RoleKeeper* keeper_;
    QLineEdit* code_;
    QLineEdit* again_;
    NumberKeys* keys_;
    QLabel* answer_;
    QAbstractButton* store_;
};

/// The integrator's session: end it, change or remove the code.
class SessionSheet : public Sheet {
    Q_OBJECT
public:
    SessionSheet(RoleKeeper* keeper, QWidget* over);

signals:
    void newCodeAsked();
};

}  // namespace app
