#pragma once

#include "executor/waiter.h"
#include "program/statement.h"

#include <QObject>

namespace lumo {

/// The statements that talk to the rest of the cell: set an output, wait for an input, wait a time.
class CellStatements : public QObject {
    Q_OBJECT
public:
    /// `sender` stands behind the commands.
    CellStatements(QObject* sender, Waiter& waiter) : sender_(sender), waiter_(waiter) {}

    void setDO(const prog::Statement& statement);
    void waitDI(const prog::Statement& statement);
    void delay(const prog::Statement& statement);

private:
    QObject* sender_;
    Waiter& waiter_;
};

}  // namespace lumo
