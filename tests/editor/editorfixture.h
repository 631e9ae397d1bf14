#pragma once

#include "editor/programtable.h"
#include "editor/programwidget.h"
#include "editor/statementtext.h"
#include "module/globals.h"
#include "support/executorbench.h"
#include "support/suite.h"
#include "support/text.h"

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

    void reset(bool projectOpen = true, const char* power = "off") {
        page.reset();
        bench.reset();
        isnew_pWgt = false;
        hand_or_signalbing = 0;
        isEnable_moveorder = projectOpen;
        m("lumo.dialog.statement")->setValue(nullptr, QVariant());
        bench.robot.setPower(power);
        kordservice()->dataNode("device.io")->loadJson(this, json("{'DO':{'DO1':0,'DO2':0},'DI':{'DI1':0}}"));
        m("rova.robot.register._list")
            ->loadJson(this, json("[{'name':'OUT','type':'bit','rw':'rdwr','len':4},"
                                  "{'name':'BOOL','type':'bool','rw':'rdwr'},{'name':'INT','type':'int',"
                                  "'rw':'rdwr'},{'name':'IN','type':'bit','rw':'rd','len':4}]"));
        makePage();
    }
    void makePage() {
        page = std::make_unique<ProgramWidget>();
        page->resize(1000, 700);
        page->show();
        QApplication::setActiveWindow(page.get());
        bench.time.advance(500);
    }
    void load(const QByteArray& statements) { bench.load(statements); }
    void at(int ms, const std::function<void()>& action) { QTimer::singleShot(ms, this, action); }

    template <typename Widget = QWidget>
    Widget* find(const char* name) const {
        return child<Widget>(page.get(), name);
    }
    ProgramTable* table() const { return page->findChild<ProgramTable*>(); }
    void doubleClick(int row) const { doubleClickCell(table(), row, ProgramTable::LineColumn); }

    /// Names of buttons to press with the mouse and numbers of rows to click, -1 leaves nothing selected.
    /// What a button leaves to the event loop is done: a run, to its end. A disabled one does not react.
    void act(const QString& steps) const {
        for (const QString& step : steps.split(' ')) {
            bool isRow = false;
            const int row = step.toInt(&isRow);
            if (!isRow) {
                click(find(step.toLatin1()));
                QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
            } else if (row < 0) {
                table()->clearSelection();
            } else {
                clickCell(table(), row, ProgramTable::LineColumn);
            }
        }
    }
    static void typeIn(QLineEdit* line, const QString& text) {
        line->clear();
        QTest::keyClicks(line, text);
    }
    /// Clicks OK or Cancel of the open dialog, or a button of the open box, with the mouse.
    void answer(bool ok) const {
        click(button(shown(), ok ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel));
        bench.time.settle();
    }
    static void answerBox(bool yes) {
        click(shown<QMessageBox>()->button(yes ? QMessageBox::Yes : QMessageBox::No));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
    }

    static ModuleObject* program() { return m("lumo.program"); }
    static ModuleObject* line(int row) { return program()->c(row); }
    /// A field of every element of a list, as text.
    static QString values(const QString& field, const ModuleObject* list = program()) {
        QStringList result;
        for (const ModuleObject* element : list->cmobjs()) {
            result << element->c(field)->getString();
        }
        return result.join(' ');
    }
    /// The first selected row and the one that shows the running-line marker; -1 for none.
    int selected() const { return table()->selectedRow(); }
    int marked() const { return columnOf(table(), ProgramTable::MarkerColumn).indexOf("-->"); }

    /// Whether each row's cells tell its statement: number, command, details, note and run flag.
    bool tableTellsTheTruth() const {
        QStringList shown, expected;
        for (int row = 0; row < table()->rowCount(); ++row) {
            for (int column = ProgramTable::LineColumn; column <= ProgramTable::RunColumn; ++column) {
                shown << table()->item(row, column)->text();
            }
            shown << table()->item(row, ProgramTable::RunColumn)->foreground().color().name();
        }
        for (const ModuleObject* statement : program()->cmobjs()) {
            const bool runs = statement->c("execute")->getBool(true);
            const QString details = lumo::statementDetails(statement);
            expected << QString::number(statement->indexInPmobj() + 1)
                     << type2cn(statement->c("type")->getString()) << details
                     << (details.isNull() ? QString() : statement->c("note")->getString())
                     << (runs ? "运行" : "不运行") << (runs ? "#000000" : "#ff0000");
        }
        return sameLog(shown, expected);
    }
};
