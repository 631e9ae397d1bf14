#pragma once

#include "editor/editordialogs.h"
#include "editor/enabling.h"
#include "module/host.h"

#include <QPointer>
#include <QString>
#include <QVariant>
#include <QVector>
#include <QWidget>

#include <memory>

class QPushButton;
class RunControls;
class StatementCreation;

namespace lumo {
class FieldAnswer;
class FindingList;
class HeldStep;
class ProgramCheck;
class ProjectFace;
class StartLine;
class StoredState;
}  // namespace lumo

namespace Ui {
class ProgramWidget;
}

/// The page on which the operator writes a welding program and runs it: the table of the statements in
/// `lumo.program`, the buttons that insert and change them, the line jump and the run controls.
///
/// It keeps no copy of the program: edits change the tree, and the table follows the tree's notifications.
/// "Selected" means the table's selection, not its current row.
class ProgramWidget : public QWidget {
    Q_OBJECT
    /// How many errors and warnings the last check of the program found.
    Q_PROPERTY(int errors READ errors NOTIFY findingsChanged)
    Q_PROPERTY(int warnings READ warnings NOTIFY findingsChanged)
    /// Lines, from 0, of the moves that it calls impossible, in their order.
    Q_PROPERTY(QVariantList impossibleLines READ impossibleLines NOTIFY findingsChanged)
public:
    explicit ProgramWidget(QWidget* parent = nullptr);
    /// Clears `lumo.dialog.program`. Deletes an open dialog, unanswered.
    ~ProgramWidget() override;

    [[nodiscard]] int errors() const;
    [[nodiscard]] int warnings() const;
    [[nodiscard]] QVariantList impossibleLines() const;

    [[nodiscard]] QSize minimumSizeHint() const override;

    /// The file of the open project, which a start saves; empty for none.
    void setProjectPath(const QString& path);
    /// Compares the program with its file. To be called when the project was opened or saved.
    void checkStored();
    [[nodiscard]] lumo::StoredState* stored() const { return stored_; }
    /// To be called when the tool set in force may have changed.
    void toolsetChanged();
    /// Moves the robot to the point of a line, as a single step does.
    void moveToLine(int row);
    /// Selects the first line and clears the running-line marker, for a program just opened.
    void showFromTheTop();

    /// Insert an empty row into the table, or remove one. Do not change the program.
    void addStatement(int row);
    void delStatement(int row);
    /// Shows the present texts of a statement.
    void changeStatement(int row);
    /// Makes `button` insert a statement of the template's type into `program`, which is
    /// `lumo.program`, for as long as `owner` lives.
    void initStatementBtn(QObject* owner, QPushButton* button, ModuleObject* program,
                          ModuleObject* templateRecord);

    /// Whether starts and stops of welding alternate, beginning with a start and ending with a stop.
    bool checkOpenMatchClose();
    /// Rows of the starts and of the stops, as the last check found them.
    [[nodiscard]] const QVector<int>& openRows() const { return openRows_; }
    [[nodiscard]] const QVector<int>& closeRows() const { return closeRows_; }

    /// Enables the editor for an idle executor, or disables it for a busy one.
    void refreshUIEnable(bool enable);
    /// Enables the editor if a project is open.
    void refreshMoveOrderEnable(bool enable);
    /// The robot's drive power was switched.
    void rcPower(const QVariant& power);

signals:
    /// Asks for the page on which a move statement is changed.
    void pointBtnClicked(int row, mendo::ModuleObject* statement, int jointCount);
    /// Asks for the selected tool and work object to be applied again, before a run.
    void updateUItoolwobj();
    void findingsChanged();

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    using AskBatch = void (EditorDialogs::*)(const QList<QModelIndex>& rows,
                                             const EditorDialogs::Answered& answered);
    void setUpJump();
    void connectStatementButtons();
    void connectEditing();
    void connectFindings();
    void connectRunControls();
    void connectKeys();
    void setUpWeldSwitch(QWidget* button, bool on, QLatin1String path);
    /// The buttons of the form that insert statements, in the order of the form.
    [[nodiscard]] QList<QPushButton*> statementButtons() const;
    [[nodiscard]] QList<QPushButton*> moveButtons() const;
    [[nodiscard]] lumo::EditorButtons buttons() const;

    void editSelected();
    void deleteSelected();
    void copySelected();
    void paste();
    void moveSelected(int by);
    void toggleRunFlags();
    void toggleMultiSelection();
    void changeSelected(AskBatch ask);
    void jump();
    void insertByKey();
    void deleteByKey();

    void onState(const QVariant& state);
    void onActivity();
    void onLine(const QVariant& line);
    void showFindings(bool done);
    [[nodiscard]] bool isMultiSelection() const;

    const std::unique_ptr<Ui::ProgramWidget> ui_;
    const std::unique_ptr<ModuleObject> clipboard_;
    QPointer<ModuleObject> copiedSet_;  ///< that the copied statement uses
    const int jointCount_;
    QVector<int> openRows_, closeRows_;
    int keyedMove_ = 0;  ///< position in moveButtons() of the move that the pendant's enter key inserts

    // Children of the page.
    EditorDialogs* dialogs_;
    StatementCreation* creation_;
    lumo::ProgramCheck* check_;
    lumo::FieldAnswer* jumpAnswer_ = nullptr;
    lumo::FindingList* findings_;
    RunControls* run_;
    lumo::StartLine* startLine_;
    lumo::ProjectFace* face_ = nullptr;
    lumo::StoredState* stored_;
    std::unique_ptr<lumo::EnablingRules> rules_;
};
