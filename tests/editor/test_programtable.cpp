#include "editor/wrapbutton.h"
#include "editorfixture.h"
#include "kord/thememanager.h"
#include "support/language.h"

#include <QRandomGenerator>
#include <QScrollBar>

/// The table follows the tree.
class TestProgramTable : public EditorTest {
    Q_OBJECT

    QRandomGenerator random_{20240101};

    void insertAnywhere() {
        const QList<QByteArray> kinds{"{'type':'moveJ','point':{'near':[0.5,1,2,3,4,5]},'speed':20}",
                                      "{'type':'open','index':0,'laserPower':'50','weldspeed':'20'}",
                                      "{'type':'delay','delaytime':500}", "{'type':'close'}"};
        auto* const statement = new ModuleObject(ModuleObject::generateId(program()));
        statement->loadJson(this, json(kinds[random_.bounded(kinds.size())]));
        statement->set(this, "note", QString(random_.bounded(60), 'n'))
            ->set(this, "execute", random_.bounded(2) == 1);
        program()->insert(this, statement, true, random_.bounded(program()->size() + 1));
    }

    /// One change to the program, made elsewhere or by the editor's own buttons.
    void changeAnything() {
        const int size = program()->size(), row = random_.bounded(qMax(1, size));
        const int what = size == 0 ? 9 : random_.bounded(10);
        if (what == 0) {
            program()->remove(this, mIndex(row));
        } else if (what == 1) {
            program()->reorder(this, row, random_.bounded(size));
        } else if (what == 2) {
            table()->moveStatement(this, row, random_.bounded(size));
        } else if (what == 3) {
            act(QString("%1 anotationBtn").arg(row));
        } else if (what == 4) {
            page->hide();
            bench.setParam("power", random_.bounded(100));  // on another page
            page->show();
        } else if (what == 5) {
            line(row)
                ->set(this, "note", QString(random_.bounded(60), 'n'))
                ->set(this, "speed", 5)
                ->set(this, "zone", 1);
            page->changeStatement(row);
        } else if (what == 6) {
            QJsonArray statements = program()->exportToJson().toArray();
            statements.removeAt(row);
            program()->loadJson(this, statements);
        } else {
            insertAnywhere();
        }
    }

private slots:
    void init() { reset(); }

    void anyChangeOfTheProgram_isShown() {
        for (int step = 0; step < 500; ++step) {
            changeAnything();
            QVERIFY2(tableTellsTheTruth(), qPrintable(QString("after change %1").arg(step)));
        }
    }

    void rebuild_keepsSelectionAndMarker() {
        load("[" + QByteArray("{'type':'delay','delaytime':1},").repeated(60) + "{'type':'close'}]");
        m("lumo.execute.line")->setValue(this, 30);
        act("31 30");
        const QRect cell = table()->visualItemRect(table()->item(30, ProgramTable::MarkerColumn));
        QCOMPARE(table()->viewport()->grab(cell).toImage().pixelColor(2, 2), QColor(0, 255, 0));
        program()->loadJson(this, program()->exportToJson());
        QCOMPARE(marked(), 30);
        m("lumo.execute.line")->setValue(this, 61);
        QCOMPARE(marked(), -1);
        QTest::keyClick(table(), Qt::Key_Tab);  // leads on to the buttons
        QVERIFY(qobject_cast<QAbstractButton*>(page->focusWidget()));
        QCOMPARE(selected(), 30);
    }

    void everythingFits_inTheWidthOfASmallPanel() {
        load("[{'type':'moveL','point':{},'note':'a remark that is quite a bit longer than others'}]");
        for (const char* language : {"cn", "en", "ru"}) {
            const Language spoken(language);
            makePage();
            page->setStyleSheet(kord::ThemeManager::genStyleSheet(":/UI/style.json") + page->styleSheet());
            page->resize(910, 650);
            bench.time.advance(1000);
            QVERIFY(!table()->horizontalScrollBar()->isVisible());
            for (const WrapButton* button : page->findChildren<WrapButton*>()) {
                QVERIFY2(button->width() >= 60 && button->height() <= 40, qPrintable(button->objectName()));
                QVERIFY2(button->shownPixelSize() >= 10, qPrintable(button->objectName()));
            }
        }
    }
};

LUMO_TEST(TestProgramTable)
#include "test_programtable.moc"
