#pragma once

#include <QList>

class QWidget;

namespace lumo {

/// The editor's buttons in the groups that its enabling rules speak of.
struct EditorButtons {
    QList<QWidget*> statementGroup;  ///< insert statements; the line jump
    QList<QWidget*> editingGroup;    ///< change the program, the batch buttons among them
    QList<QWidget*> runTools;        ///< start, move to point, pause, reset
    QWidget* pause = nullptr;
    QWidget* multi = nullptr;
    QWidget* batchSpeed = nullptr;
    QWidget* batchZone = nullptr;
};

/// Enables and disables the editor's buttons: by the executor's state, the robot's drive power, the
/// selection mode and whether a project is open. Each rule acts on its event and leaves what it does not
/// name as earlier events left it. Pause can be pressed whenever anything runs, whatever the rules say.
class EnablingRules {
public:
    explicit EnablingRules(EditorButtons buttons);

    /// Busy (false) or idle (true). Nothing before a project is open.
    void refreshUIEnable(bool enable);
    /// Whether a project is open.
    void refreshMoveOrderEnable(bool enable);
    /// The text of the drive power: "on" or "off", others change nothing.
    void rcPower(const QString& power, bool multiSelection);
    /// The text of the executor's state: "busy" or "idle", others change nothing.
    void executorState(const QString& state);
    /// Whether anything runs: a program, also a station's, a single step, or a pause's closing.
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
