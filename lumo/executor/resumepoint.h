#pragma once

#include "module/host.h"

#include <QObject>
#include <QPointer>
#include <QVector>

/// Where the hand program goes on, and whether that still lies in the weld that was left open.
///
/// Both belong to statements, not to numbers: while nothing runs, `lumo.current.line` follows its statement
/// through insertions, removals and moves, and the flag of the open weld is cleared in the moment in which
/// an edit takes the statement out of that weld. Mending the program afterwards does not set it again.
class ResumePoint : public QObject {
    Q_OBJECT
public:
    /// `program` is `lumo.program`; `sender` stands behind what is written.
    ResumePoint(ModuleObject* program, QObject* sender);

    /// A run writes the line itself: edits are not followed until `hold` or `release`.
    void suspend() { suspended_ = true; }
    /// A run was stopped or is over at this statement of the program (null: one that is no longer there, or
    /// another program's): from now on the line is its line.
    void hold(ModuleObject* statement);
    /// A run was stopped before it reached a statement: what was held before counts again.
    void release();
    /// The laser is being opened by this statement of the program; null: by another program's. It counts
    /// until the flag of the open weld is cleared.
    void weldOpened(ModuleObject* open);

    /// Whether a line lies in the weld that was opened last: the nearest executed start or stop of welding
    /// before it is that weld's start. Not for its stop, nor for a line that is switched off.
    [[nodiscard]] bool liesInWeld(int line) const;

private:
    void onLineWritten(const QVariant& line, const QVariant& old, QObject* sender);
    void onFlag(const QVariant& open);
    void onRemoved(const QString& name);
    /// `leaving`: a child that is still there, but about to go.
    void follow(const ModuleObject* leaving = nullptr);
    void recheck() { follow(); }
    [[nodiscard]] bool isHeld() const;
    [[nodiscard]] bool isInWeld(const ModuleObject* statement, const ModuleObject* leaving) const;
    void watch();
    void watchField(ModuleObject* statement, const QString& name);

    ModuleObject* program_;
    QObject* sender_;
    QPointer<ModuleObject> statement_;
    QPointer<ModuleObject> open_;
    bool weldIsOurs_ = false;  ///< the weld that was opened last is one of this program
    bool suspended_ = false;
    QVector<QMetaObject::Connection> watched_;  ///< fields that decide about the weld
};
