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
        const bool isLong =
            index.column() == ProgramTable::DetailColumn || index.column() == ProgramTable::NoteColumn;
        return isLong ? QStyledItemDelegate::sizeHint(option, index) + QSize(0, 6) : QSize(0, 0);
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
                                      "{'type':'delay','delaytime':500}", "{'type':'close'}"};
        auto* const statement = new ModuleObject(ModuleObject::generateId(program()));
        statement->loadJson(this, json(kinds[random_.bounded(kinds.size())]));
        statement->set(this, "note", anyNote())->set(this, "execute", random_.bounded(2) == 1);
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
        const QStringList fonts{"DejaVu Sans", "DejaVu Serif", "DejaVu Sans Mono", "DejaVu Sans"};
        for (int step = 0; step < 400; ++step) {
            if (step % 100 == 50) {
                table()->setFont(QFont(fonts[step / 100]));
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
        QObject scope;
        // Connected after the table: the program changes before others hear of the first change.
        connect(program(), &ModuleObject::added, &scope, [this] {
            if (program()->size() < 3) {
                insertAnywhere();
            }
        });
        insertAnywhere();
        QVERIFY(tableTellsTheTruth());
        program()->insert(this, new ModuleObject("silent"), false);
        program()->remove(this, "#0");
        QVERIFY(tableTellsTheTruth());
    }

    void rebuild_keepsSelectionScrollAndMarker() {
        for (int count = 0; count < 60; ++count) {
            insertAnywhere();
        }
        m("lumo.execute.line")->setValue(this, 30);
        act("31 30");
        const QRect cell = table()->visualItemRect(table()->item(30, ProgramTable::MarkerColumn));
        QCOMPARE(table()->viewport()->grab(cell).toImage().pixelColor(2, 2), QColor(0, 255, 0));
        const int scrolled = table()->verticalScrollBar()->value();
        QVERIFY(scrolled > 0);
        program()->loadJson(this, program()->exportToJson());
        bench.time.advance(1000);
        QCOMPARE(marked(), 30);
        QCOMPARE(table()->verticalScrollBar()->value(), scrolled);
        m("lumo.execute.line")->setValue(this, 60);
        page->changeStatement(60);
        QCOMPARE(marked(), -1);
        QTest::keyClick(table(), Qt::Key_Tab);  // leads on to the buttons
        QVERIFY(qobject_cast<QAbstractButton*>(page->focusWidget()));
        QCOMPARE(selected(), 30);
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

    void captions_findTheirPlaceInNarrowButtons() {
        // Caption, width in widths of an M, lines.
        const std::tuple<QString, int, QString> cases[] = {{"MM MM MMMM", 20, "MM MM MMMM"},
                                                           {"MM MM MMMM", 6, "MM MM/MMMM"},
                                                           {"开始焊接开始焊接", 5, "开始焊接/开始焊接"},
                                                           {"MMMM\u00adMMMM", 6, "MMMM-/MMMM"},
                                                           {"MMMM\u00adMMMM", 20, "MMMMMMMM"},
                                                           {"MMMMMMMMMM", 8, "MMMMMMMMMM"}};
        WrapButton button;
        for (const auto& [caption, width, lines] : cases) {
            button.setText(caption);
            const QFontMetrics metrics(button.font());
            button.resize(width * metrics.horizontalAdvance('M') + 20, 3 * metrics.height());
            QCOMPARE(button.shownLines().join('/'), lines);
            QCOMPARE(button.shownPixelSize() < 14, width == 8);
        }
    }
};

LUMO_TEST(TestProgramTable)
#include "test_programtable.moc"
