#pragma once

#include "editor/programtable.h"
#include "editor/programwidget.h"
#include "support/executorbench.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include <memory>

/// The program editor on the screen, with an open project, an idle executor and the robot's power off, as
/// an operator has it who edits.
class EditorFixture {
public:
    test::ExecutorBench bench;
    std::unique_ptr<ProgramWidget> page;

    /// Everything back to the beginning, with a new editor.
    void reset(bool projectOpen = true);
    /// Makes another editor, as a newly opened panel has it.
    void makePage();
    void load(const QByteArray& program) { bench.load(program); }

    [[nodiscard]] ProgramTable* table() const { return page->findChild<ProgramTable*>(); }
    template <typename Widget = QWidget>
    [[nodiscard]] Widget* find(const char* name) const {
        return page->findChild<Widget*>(QString::fromLatin1(name));
    }

    /// Clicks a button of the page with the mouse, and does what that leaves to the event loop: a run, to its
    /// end. A disabled button does not react.
    void click(const char* button) const;
    /// Clicks a row with the mouse; -1 leaves nothing selected.
    void select(int row) const;
    void doubleClick(int row) const;
    /// Reports a click of a pendant key, as the panel does.
    void key(const char* name) const;

    /// The dialog or box on the screen; null when there is none.
    template <typename Dialog = QDialog>
    [[nodiscard]] static Dialog* dialog() {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            auto* const found = qobject_cast<Dialog*>(window);
            if (found && found->isVisible()) {
                return found;
            }
        }
        return nullptr;
    }
    /// Clicks OK or Cancel of the open dialog, or a button of the open box, with the mouse.
    void answer(bool ok);
    void answerBox(QMessageBox::StandardButton button);

    [[nodiscard]] static ModuleObject* program() { return m("lumo.program"); }
    /// Types of the program's statements, first line first.
    [[nodiscard]] static QStringList types();
    /// Texts of a column, first row first.
    [[nodiscard]] QStringList column(ProgramTable::Column column) const;
    /// Rows that are selected.
    [[nodiscard]] QVector<int> selected() const;
    /// Rows that show the running-line marker.
    [[nodiscard]] QVector<int> marked() const;
    /// Whether each row shows its statement: number, command, details, note and run flag.
    [[nodiscard]] bool tableTellsTheTruth() const;
};
