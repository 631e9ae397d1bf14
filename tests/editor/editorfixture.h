#pragma once

#include "editor/programtable.h"
#include "editor/programwidget.h"
#include "module/globals.h"
#include "support/executorbench.h"
#include "support/suite.h"
#include "support/text.h"

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>

using namespace test;

/// For tests of the program editor on the screen, with an open project, an idle executor and the robot's
/// power off, as an operator has it who edits.
class EditorTest : public QObject {
protected:
    ExecutorBench bench;
    std::unique_ptr<ProgramWidget> page;

    /// Everything back to the beginning, with a new editor.
    void reset(bool projectOpen = true);
    /// Makes another editor, as a newly opened panel has it.
    void makePage();
    void load(const QByteArray& statements) { bench.load(quoted(statements)); }
    void at(int ms, const std::function<void()>& action) { QTimer::singleShot(ms, this, action); }

    template <typename Widget = QWidget>
    Widget* find(const char* name) const {
        return child<Widget>(page.get(), name);
    }
    ProgramTable* table() const { return page->findChild<ProgramTable*>(); }
    /// Names of buttons to press with the mouse and numbers of rows to click, -1 leaves nothing selected.
    /// What a button leaves to the event loop is done: a run, to its end. A disabled one does not react.
    void act(const QString& steps) const;
    void doubleClick(int row) const { doubleClickCell(table(), row, ProgramTable::LineColumn); }
    /// Clicks a pendant key.
    void key(const QString& name) const { m("lumo.keypad." + name + ".clicked")->setValue(page.get(), true); }
    /// Types over what stands in the open dialog.
    static void type(const QString& text);
    /// Clicks OK or Cancel of the open dialog, or a button of the open box, with the mouse.
    void answer(bool ok) const;
    void answerBox(bool yes) const;

    static ModuleObject* program() { return m("lumo.program"); }
    static ModuleObject* line(int row) { return program()->c(row); }
    /// A field of every element of a list, as text.
    static QString values(const QString& field, const ModuleObject* list = program());
    /// The first selected row and the one that shows the running-line marker; -1 for none.
    int selected() const { return table()->selectedRow(); }
    int marked() const { return columnOf(table(), ProgramTable::MarkerColumn).indexOf("-->"); }
    /// Whether each row shows its statement: number, command, all lines of the details, note and run flag.
    bool tableTellsTheTruth() const;
};
