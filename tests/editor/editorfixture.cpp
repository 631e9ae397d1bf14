#include "editorfixture.h"

#include "editor/statementtext.h"

void EditorTest::reset(bool projectOpen) {
    page.reset();
    bench.reset();
    isnew_pWgt = false;
    hand_or_signalbing = 0;
    isEnable_moveorder = projectOpen;
    m("lumo.dialog.statement")->setValue(nullptr, QVariant());
    bench.robot.setPower("off");
    kordservice()->dataNode("sys.info")->set(nullptr, "joint_num", 6);
    kordservice()->dataNode("device.io")->loadJson(nullptr, json("{'DO':{'DO1':0,'DO2':0},'DI':{'DI1':0}}"));
    const QByteArray registers =
        "[{'name':'OUT','type':'bit','rw':'rdwr','len':4},{'name':'BOOL','type':'bool','rw':'rdwr'},"
        "{'name':'INT','type':'int','rw':'rdwr'},{'name':'IN','type':'bit','rw':'rd','len':4}]";
    m("rova.robot.register._list")->loadJson(nullptr, json(registers));
    makePage();
}

void EditorTest::makePage() {
    page = std::make_unique<ProgramWidget>();
    page->resize(1000, 700);
    page->show();
    QApplication::setActiveWindow(page.get());
    bench.time.advance(500);
}

void EditorTest::act(const QString& steps) const {
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

void EditorTest::type(const QString& text) {
    child<QLineEdit>(shown(), "lineEdit")->clear();
    QTest::keyClicks(child<QLineEdit>(shown(), "lineEdit"), text);
}

void EditorTest::answer(bool ok) const {
    click(button(shown(), ok ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel));
    bench.time.settle();
}

void EditorTest::answerBox(bool yes) const {
    click(shown<QMessageBox>()->button(yes ? QMessageBox::Yes : QMessageBox::No));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
}

QString EditorTest::values(const QString& field, const ModuleObject* list) {
    QStringList result;
    for (const ModuleObject* element : list->cmobjs()) {
        result << element->c(field)->getString();
    }
    return result.join(' ');
}

bool EditorTest::tableTellsTheTruth() const {
    QStringList shown, expected;
    for (int row = 0; row < table()->rowCount(); ++row) {
        QStringList cells{table()->item(row, ProgramTable::RunColumn)->foreground().color().name()};
        for (int column = ProgramTable::LineColumn; column <= ProgramTable::RunColumn; ++column) {
            cells << table()->item(row, column)->text();
        }
        const int lines = table()->item(row, ProgramTable::DetailColumn)->text().count('\n') + 1;
        const bool isHighEnough = table()->rowHeight(row) >= lines * table()->fontMetrics().height();
        shown << cells.join('|') + (isHighEnough ? "" : "|too low");
    }
    for (const ModuleObject* statement : program()->cmobjs()) {
        const bool executed = statement->c("execute")->getBool(true);
        const QString details = lumo::statementDetails(statement);
        QStringList cells{executed ? "#000000" : "#ff0000", QString::number(expected.size() + 1)};
        cells << type2cn(statement->c("type")->getString()) << details;
        cells << (details.isNull() ? QString() : statement->c("note")->getString());
        cells << (executed ? "运行" : "不运行");
        expected << cells.join('|');
    }
    return sameLog(shown, expected);
}
