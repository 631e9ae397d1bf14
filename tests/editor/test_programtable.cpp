#include "editor/wrapbutton.h"
#include "editorfixture.h"
#include "kord/thememanager.h"
#include "support/language.h"

#include <QRandomGenerator>
#include <QScrollBar>
#include <QStyledItemDelegate>

/// Lays out every text of a program by itself.
class MeasuresEach : public QStyledItemDelegate {
public:
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        constexpr int air = 6;
        const int column = index.column();
        const bool isLong = column == ProgramTable::DetailColumn || column == ProgramTable::NoteColumn;
        return isLong ? QStyledItemDelegate::sizeHint(option, index) + QSize(0, air) : QSize(0, 0);
    }
};

/// The table follows the tree, and its rows have the height of their texts.
class TestProgramTable : public EditorTest {
    Q_OBJECT

    QRandomGenerator random_{20240101};

    /// Numbers of every length, so that the notes break at every place.
    QString anyNote() {
        const QString digits(random_.bounded(40), '0' + random_.bounded(10));
        return "焊 seam " + digits + (random_.bounded(2) == 0 ? " iiiiii" : " WWWWWW");
    }

    void insertAnywhere() {
        const QList<QByteArray> kinds{"{'type':'moveJ','point':{'near':[0.5,1,2,3,4,5]},'speed':20}",
                                      "{'type':'open','index':0,'laserPower':'50','weldspeed':'20'}",
                                      "{'type':'setDO','doName':'DO1','DO_type':'IO','value':'true'}",
                                      "{'type':'delay','delaytime':500}", "{'type':'close'}"};
        auto* const statement = new ModuleObject(ModuleObject::generateId(program()));
        statement->loadJson(this, json(kinds[random_.bounded(kinds.size())]));
        statement->set(this, "note", anyNote())->set(this, "execute", random_.bounded(2) == 1);
        program()->insert(this, statement, true, random_.bounded(program()->size() + 1));
    }

    /// One change to the program, made elsewhere or by the editor's own buttons.
    void changeAnything() {
        const int size = program()->size();
        const int row = random_.bounded(qMax(1, size)), other = random_.bounded(qMax(1, size));
        const int what = size == 0 ? 9 : random_.bounded(10);
        if (what == 0) {
            program()->remove(this, mIndex(row));
        } else if (what == 1) {
            program()->reorder(this, row, other);
        } else if (what == 2) {
            table()->moveStatement(this, row, other);
        } else if (what == 3) {
            act(QString("%1 anotationBtn").arg(row));
        } else if (what < 6) {
            line(row)->set(this, "note", anyNote());
            page->changeStatement(row);
        } else if (what == 6) {
            QJsonArray statements = program()->exportToJson().toArray();
            statements.removeAt(row);
            program()->loadJson(this, statements);
        } else {
            insertAnywhere();
        }
    }

    QVector<int> heights() const {
        QVector<int> result;
        for (int row = 0; row < table()->rowCount(); ++row) {
            result << table()->rowHeight(row);
        }
        return result;
    }

private slots:
    void init() { reset(); }

    void anyChangeOfTheProgram_isShownInRowsAsHighAsTheirTexts() {
        MeasuresEach each;
        QAbstractItemDelegate* const own = table()->itemDelegate();
        const QStringList fonts{"DejaVu Sans", "DejaVu Serif", "DejaVu Sans Mono"};
        for (int step = 0; step < 400; ++step) {
            if (step % 100 == 99) {
                table()->setFont(QFont(fonts[step / 100 % 3]));
                program()->loadJson(this, program()->exportToJson());
            }
            changeAnything();
            QVERIFY2(tableTellsTheTruth(), qPrintable(QString("after change %1").arg(step)));
            if (step % 10 == 9) {
                const QVector<int> seen = heights();
                table()->setItemDelegate(&each);
                table()->resizeRowsToContents();
                QCOMPARE(seen, heights());
                table()->setItemDelegate(own);
            }
        }
    }

    void changesInsideANotificationOrInSilence_areCaughtUpWith() {
        int left = 3;
        QObject scope;
        // Connected after the table: the program changes before others hear of the first change.
        connect(program(), &ModuleObject::added, &scope, [&] {
            if (--left > 0) {
                insertAnywhere();
            }
        });
        insertAnywhere();
        QCOMPARE(table()->rowCount(), 3);
        QVERIFY(tableTellsTheTruth());
        program()->insert(this, new ModuleObject("silent"), false);
        insertAnywhere();
        QVERIFY(tableTellsTheTruth());
        program()->insert(this, new ModuleObject("silent too"), false);
        program()->remove(this, mIndex(0));
        QVERIFY(tableTellsTheTruth());
    }

    void rebuild_keepsSelectionScrollAndMarker() {
        for (int count = 0; count < 60; ++count) {
            insertAnywhere();
        }
        m("lumo.execute.line")->setValue(this, 30);
        const auto colourOf = [this](int row) {
            const QRect cell = table()->visualItemRect(table()->item(row, ProgramTable::MarkerColumn));
            return table()->viewport()->grab(cell).toImage().pixelColor(2, 2);
        };
        QCOMPARE(colourOf(30), QColor(0, 255, 0));  // also beyond the selection's colour
        act("31");
        QVERIFY(colourOf(31) != QColor(0, 255, 0));
        const int scrolled = table()->verticalScrollBar()->value();
        QVERIFY(scrolled > 0);
        program()->loadJson(this, program()->exportToJson());
        bench.time.advance(1000);
        QCOMPARE(marked(), QVector<int>{30});
        QCOMPARE(table()->verticalScrollBar()->value(), scrolled);
        m("lumo.execute.line")->setValue(this, 60);
        page->changeStatement(60);
        QCOMPARE(marked(), QVector<int>());
        QTest::keyClick(table(), Qt::Key_Tab);  // leads on to the buttons
        QVERIFY(qobject_cast<QAbstractButton*>(page->focusWidget()));
        QCOMPARE(selected(), QVector<int>{31});
    }

    void valuesOfParameterSets_areFreshWhenTheEditorIsShownAgain() {
        load("[{'type':'delay'},{'type':'open','index':0,'laserPower':'50'}]");
        page->hide();
        bench.setParam("power", 77);
        page->show();
        QVERIFY(tableTellsTheTruth());
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
