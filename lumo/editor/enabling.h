#pragma once

#include <QList>

class QWidget;

namespace lumo {

/// The editor's buttons, in the groups of the enabling rules.
struct EditorButtons {
    QList<QWidget*> statementGroup;  ///< insert statements; the line jump
    QList<QWidget*> editingGroup;    ///< change the program, the batch buttons among them
    QList<QWidget*> runTools;        ///< start, move to point, pause, reset
    QWidget* pause = nullptr;
    QWidget* multi = nullptr;
    QWidget* batchSpeed = nullptr;
    QWidget* batchZone = nullptr;
};

/// Enables and disables the editor's buttons by the executor's state, the robot's drive power, the selection
/// mode and whether a project is open. Each rule changes only the buttons it names. Pause is always enabled
/// while anything runs.
class EnablingRules {
public:
    explicit EnablingRules(EditorButtons buttons);

    /// The executor is busy (false) or idle (true). Does nothing before a project is open.
    void refreshUIEnable(bool enable);
    /// A project is open (true) or not.
    void refreshMoveOrderEnable(bool enable);
    /// `power`: "on" or "off"; other texts change nothing.
    void rcPower(const QString& power, bool multiSelection);
    /// `state`: "busy" or "idle"; other texts change nothing.
    void executorState(const QString& state);
    /// Whether anything runs: a program, also of a station, a single step, or the closing of a pause.
    void running(bool anything);
    void enterMultiSelection();
    void leaveMultiSelection();

private:
    void enableBatch(bool enable);
    void enablePause(bool byRule);

    EditorButtons buttons_;
    bool pauseByRule_ = true;
    bool running_ = false;
};

}  // namespace lumo
