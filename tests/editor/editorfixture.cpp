#include "editorfixture.h"

#include "editor/statementtext.h"
#include "module/globals.h"

void EditorFixture::reset(bool projectOpen) {
    page.reset();
    bench.reset();
    isnew_pWgt = false;
    hand_or_signalbing = 0;
    isEnable_moveorder = projectOpen;
    m("lumo.dialog.statement")->setValue(nullptr, QVariant());
    bench.robot.setPower("off");
    kordservice()->dataNode("sys.info")->set(nullptr, "joint_num", 6);
    makePage();
}

void EditorFixture::makePage() {
    page = std::make_unique<ProgramWidget>();
    page->resize(1000, 700);
    page->show();
    QApplication::setActiveWindow(page.get());
    bench.time.advance(500);
}

void EditorFixture::click(const char* button) const {
    QTest::mouseClick(find<QAbstractButton>(button), Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
}

void EditorFixture::select(int row) const {
    if (row < 0) {
        table()->clearSelection();
        return;
    }
    table()->scrollTo(table()->model()->index(row, ProgramTable::LineColumn));
    QTest::mouseClick(table()->viewport(), Qt::LeftButton, {},
                      table()->visualItemRect(table()->item(row, ProgramTable::LineColumn)).center());
}

void EditorFixture::doubleClick(int row) const {
    select(row);
    QTest::mouseDClick(table()->viewport(), Qt::LeftButton, {},
                       table()->visualItemRect(table()->item(row, ProgramTable::LineColumn)).center());
}

void EditorFixture::key(const char* name) const {
    m(QStringLiteral("lumo.keypad.%1.clicked").arg(QString::fromLatin1(name)))->setValue(page.get(), true);
}

void EditorFixture::answer(bool ok) {
    auto* const box = dialog()->findChild<QDialogButtonBox*>();
    QTest::mouseClick(box->button(ok ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel), Qt::LeftButton);
    bench.time.settle();
}

void EditorFixture::answerBox(QMessageBox::StandardButton button) {
    QTest::mouseClick(dialog<QMessageBox>()->button(button), Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
}

QStringList EditorFixture::types() {
    QStringList result;
    for (const ModuleObject* statement : program()->cmobjs()) {
        result << statement->c("type")->getString();
    }
    return result;
}

QStringList EditorFixture::column(ProgramTable::Column column) const {
    QStringList texts;
    for (int row = 0; row < table()->rowCount(); ++row) {
        texts << table()->item(row, column)->text();
    }
    return texts;
}

QVector<int> EditorFixture::selected() const {
    QVector<int> rows;
    for (const QModelIndex& index : table()->selectedRows()) {
        rows << index.row();
    }
    return rows;
}

QVector<int> EditorFixture::marked() const {
    QVector<int> rows;
    for (int row = 0; row < table()->rowCount(); ++row) {
        if (table()->item(row, ProgramTable::MarkerColumn)->text() == QLatin1String("-->")) {
            rows << row;
        }
    }
    return rows;
}

bool EditorFixture::tableTellsTheTruth() const {
    const QList<ModuleObject*> statements = program()->cmobjs();
    if (table()->rowCount() != statements.size()) {
        qWarning("%d rows, %d statements", table()->rowCount(), int(statements.size()));
        return false;
    }
    for (int row = 0; row < statements.size(); ++row) {
        const ModuleObject* const statement = statements.at(row);
        const QString details = lumo::statementDetails(statement);
        const bool executed = statement->c("execute")->getBool(true);
        const QStringList expected{QString::number(row + 1), type2cn(statement->c("type")->getString()),
                                   details, details.isNull() ? QString() : statement->c("note")->getString(),
                                   executed ? QStringLiteral("运行") : QStringLiteral("不运行")};
        QStringList shown;
        for (int column = ProgramTable::LineColumn; column <= ProgramTable::RunColumn; ++column) {
            shown << table()->item(row, column)->text();
        }
        const QColor colour = table()->item(row, ProgramTable::RunColumn)->foreground().color();
        if (shown != expected || colour != QColor(executed ? Qt::black : Qt::red)) {
            qWarning() << "row" << row << "shows" << shown << colour << "instead of" << expected;
            return false;
        }
    }
    return true;
}
