#include "editor/wrapbutton.h"
#include "editorfixture.h"
#include "kord/thememanager.h"
#include "language.h"

#include <QHeaderView>
#include <QJsonArray>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QStyledItemDelegate>

/// Lays out every text of a program by itself.
class MeasuresEach : public QStyledItemDelegate {
public:
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        constexpr int air = 6;
        const bool isLong =
            index.column() == ProgramTable::DetailColumn || index.column() == ProgramTable::NoteColumn;
        return isLong ? QStyledItemDelegate::sizeHint(option, index) + QSize(0, air) : QSize(0, 0);
    }
};

/// The table follows the tree.
class TestProgramTable : public QObject {
    Q_OBJECT

    EditorFixture editor_;

    static QJsonObject statement(QRandomGenerator& random) {
        const QString note(random.bounded(0, 60), QLatin1Char('n'));
        QJsonObject result{{"note", note}, {"execute", random.bounded(2) == 1}};
        switch (random.bounded(5)) {
            case 0:
                result["type"] = "moveJ";
                result["point"] = QJsonObject{{"near", QJsonArray{random.generateDouble(), 1, 2, 3, 4, 5}}};
                result["speed"] = random.bounded(200);
                break;
            case 1:
                result["type"] = "open";
                result["index"] = random.bounded(3);
                result["laserPower"] = "50";
                result["weldspeed"] = QString::number(random.bounded(99));
                break;
            case 2:
                result["type"] = "setDO";
                result["doName"] = "DO1";
                result["DO_type"] = "IO";
                result["value"] = "true";
                break;
            case 3:
                result["type"] = "delay";
                result["delaytime"] = random.bounded(5000);
                break;
            default:
                result["type"] = "close";
        }
        return result;
    }

    void insertAnywhere(QRandomGenerator& random) {
        auto* const node = new ModuleObject(ModuleObject::generateId(EditorFixture::program()));
        node->loadJson(this, statement(random));
        EditorFixture::program()->insert(this, node, true,
                                         random.bounded(EditorFixture::program()->size() + 1));
    }

    /// One change to the program, made elsewhere or by the editor's own buttons.
    void change(QRandomGenerator& random) {
        ModuleObject* const program = EditorFixture::program();
        const int size = program->size();
        constexpr int most = 25;
        const int what = random.bounded(100);
        if (size == 0 || (what < 35 && size < most)) {
            insertAnywhere(random);
        } else if (what < 60) {
            program->remove(this, mIndex(random.bounded(size)));
        } else if (what < 70) {
            program->reorder(this, random.bounded(size), random.bounded(size));
        } else if (what < 80) {
            editor_.table()->moveStatement(this, random.bounded(size), random.bounded(size));
        } else if (what < 98) {
            editor_.table()->selectOnly(random.bounded(size));
            editor_.click("anotationBtn");
        } else {
            QJsonArray statements;
            for (int count = random.bounded(12); count > 0; --count) {
                statements.append(statement(random));
            }
            program->loadJson(this, statements);
        }
    }

    QVector<int> heights() const {
        QVector<int> result;
        for (int row = 0; row < editor_.table()->rowCount(); ++row) {
            result << editor_.table()->rowHeight(row);
        }
        return result;
    }

private slots:
    void init() { editor_.reset(); }

    void tellsTheTruth_afterThousandsOfChanges() {
        QRandomGenerator random(20240101);
        for (int step = 0; step < 2500; ++step) {
            change(random);
            if (!editor_.tableTellsTheTruth()) {
                QFAIL(qPrintable(QString("after change %1").arg(step)));
            }
        }
        editor_.bench.time.advance(1000);
        const QVector<int> followed = heights();
        editor_.table()->resizeRowsToContents();
        QCOMPARE(followed, heights());
    }

    /// The arrows go from row to row; Tab leads on to the buttons, with the row still chosen.
    void tab_leavesTheTable() {
        editor_.load(R"([{"type":"delay"},{"type":"close"},{"type":"delay"}])");
        editor_.select(0);
        QTest::keyClick(editor_.table(), Qt::Key_Down);
        QTest::keyClick(editor_.table(), Qt::Key_Tab);
        QCOMPARE(editor_.table()->selectedRow(), 1);
        QVERIFY(qobject_cast<QAbstractButton*>(editor_.page->focusWidget()));
    }

    void changesInsideANotification_areFollowed() {
        editor_.load(R"([{"type":"delay","delaytime":1}])");
        QRandomGenerator random(1);
        int left = 3;
        QObject scope;
        // Connected after the table: the program changes before others hear of the first change.
        connect(EditorFixture::program(), &ModuleObject::added, &scope, [&] {
            if (--left > 0) {
                insertAnywhere(random);
            }
        });
        insertAnywhere(random);
        QVERIFY(editor_.tableTellsTheTruth());
        QCOMPARE(editor_.table()->rowCount(), 4);
    }

    void whatWasInsertedInSilence_appearsWithTheNextChange() {
        EditorFixture::program()->insert(this, new ModuleObject("silent"), false);
        QRandomGenerator random(1);
        insertAnywhere(random);
        QVERIFY(editor_.tableTellsTheTruth());
        EditorFixture::program()->insert(this, new ModuleObject("silent too"), false);
        EditorFixture::program()->remove(this, mIndex(0));
        QVERIFY(editor_.tableTellsTheTruth());
    }

    void rebuild_keepsSelectionScrollAndMarker() {
        QJsonArray statements;
        QRandomGenerator random(5);
        for (int line = 0; line < 60; ++line) {
            statements.append(statement(random));
        }
        EditorFixture::program()->loadJson(this, statements);
        m("lumo.execute.line")->setValue(this, 30);
        editor_.select(31);
        const int scrolled = editor_.table()->verticalScrollBar()->value();
        QVERIFY(scrolled > 0);
        EditorFixture::program()->loadJson(this, statements);
        editor_.bench.time.advance(1000);
        QCOMPARE(editor_.selected(), QVector<int>{31});
        QCOMPARE(editor_.marked(), QVector<int>{30});
        QCOMPARE(editor_.table()->verticalScrollBar()->value(), scrolled);
    }

    void marker_isInOneRowOnly() {
        constexpr int lines = 400;
        QJsonArray statements;
        for (int line = 0; line < lines; ++line) {
            statements.append(QJsonObject{{"type", "close"}});
        }
        EditorFixture::program()->loadJson(this, statements);
        ModuleObject* const line = m("lumo.execute.line");
        const int children = editor_.table()->findChildren<QObject*>().size();
        for (int row = 0; row < lines; ++row) {
            line->setValue(this, row);
        }
        QCOMPARE(editor_.marked(), QVector<int>{lines - 1});
        // Nothing of the rows before is left to be deleted when the run is over.
        QCOMPARE(editor_.table()->findChildren<QObject*>().size(), children);
        EditorFixture::program()->remove(this, mIndex(0));
        QCOMPARE(editor_.marked(), QVector<int>{lines - 2});
        line->setValue(this, -1);
        QCOMPARE(editor_.marked(), QVector<int>());
    }

    /// Also beyond the selection's colour, in which the row is drawn.
    void marker_isGreen() {
        editor_.load(R"([{"type":"close"},{"type":"close"}])");
        m("lumo.execute.line")->setValue(this, 1);
        const auto colourOf = [this](int row) {
            const QRect cell =
                editor_.table()->visualItemRect(editor_.table()->item(row, ProgramTable::MarkerColumn));
            return editor_.table()->viewport()->grab(cell).toImage().pixelColor(2, 2);
        };
        QCOMPARE(colourOf(1), QColor(0, 255, 0));
        QVERIFY(colourOf(0) != QColor(0, 255, 0));
    }

    void pieceless_rowsKeepTheirTexts() {
        editor_.load(R"([{"type":"close","note":"n","execute":true}])");
        editor_.table()->item(0, ProgramTable::DetailColumn)->setText("kept");
        editor_.page->changeStatement(0);
        QCOMPARE(editor_.column(ProgramTable::DetailColumn), QStringList{"kept"});
        QCOMPARE(editor_.column(ProgramTable::CommandColumn), QStringList{"停止焊接"});
    }

    void rowsOfParameterSets_areFreshWhenTheEditorIsShownAgain() {
        editor_.load(R"([{"type":"delay"},{"type":"open","index":0,"laserPower":"50"}])");
        editor_.page->hide();
        editor_.bench.setParam("power", 77);
        editor_.page->show();
        QCOMPARE(editor_.column(ProgramTable::DetailColumn).at(1),
                 QString("1.参数名称：A;\n2.激光功率：77%;"));
    }

    void changedDetails_giveTheRowItsHeight() {
        editor_.load(R"([{"type":"moveL","note":""},{"type":"moveL","speed":1,"note":""}])");
        const int low = editor_.table()->rowHeight(0);
        EditorFixture::program()->c(0)->loadJson(this, QJsonObject{{"type", "moveL"},
                                                                   {"point", QJsonObject()},
                                                                   {"point1", QJsonObject()},
                                                                   {"speed", 1},
                                                                   {"zone", 2},
                                                                   {"delaytime", 3}});
        editor_.page->changeStatement(0);
        QVERIFY(editor_.table()->rowHeight(0) > low);
        QCOMPARE(editor_.table()->rowHeight(1), low);
    }

    void heights_areThoseOfEachText_howeverAlikeTheyAre_data() {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("family");
        for (const char* language : {"cn", "en", "ru"}) {
            for (const char* family : {"", "DejaVu Serif", "DejaVu Sans Mono"}) {
                QTest::addRow("%s %s", language, family) << QString(language) << QString(family);
            }
        }
    }

    /// Numbers of every length, so that the notes break at every place.
    void heights_areThoseOfEachText_howeverAlikeTheyAre() {
        QFETCH(QString, language);
        QFETCH(QString, family);
        const Language shown(language);
        editor_.makePage();
        ProgramTable* const table = editor_.table();
        if (!family.isEmpty()) {
            table->setFont(QFont(family));
        }
        QJsonArray statements;
        for (int line = 0; line < 300; ++line) {
            const QString digit = QString::number(line % 10);
            const QString note = QString("焊 seam ") + digit.repeated(line / 10) + " шов " +
                                 digit.repeated(5) + (line % 2 == 0 ? " iiiiii" : " WWWWWW");
            statements.append(
                QJsonObject{{"type", "moveL"},
                            {"point", QJsonObject{{"trans", QJsonArray{line, -line * 10, 0.1}}}},
                            {"speed", line},
                            {"note", note}});
        }
        EditorFixture::program()->loadJson(this, statements);
        const QVector<int> seen = heights();
        MeasuresEach each;
        table->setItemDelegate(&each);
        table->resizeRowsToContents();
        QCOMPARE(seen, heights());
    }

    void rowsThatDoNotExist_areLeftAlone() {
        editor_.load(R"([{"type":"delay"}])");
        editor_.page->changeStatement(-1);
        editor_.page->changeStatement(1);
        editor_.table()->selectOnly(0);
        editor_.table()->selectOnly(1);
        QCOMPARE(editor_.selected(), QVector<int>{0});
    }

    void everythingFits_inTheWidthOfASmallPanel_data() {
        QTest::addColumn<QString>("language");
        for (const char* language : {"cn", "en", "ru"}) {
            QTest::newRow(language) << QString(language);
        }
    }

    void everythingFits_inTheWidthOfASmallPanel() {
        QFETCH(QString, language);
        const Language shown(language);
        editor_.load(
            R"([{"type":"moveL","point":{},"note":"a remark that is quite a bit longer than others"}])");
        editor_.makePage();
        editor_.page->setStyleSheet(kord::ThemeManager::genStyleSheet(":/UI/style.json") +
                                    editor_.page->styleSheet());
        editor_.page->resize(910, 650);
        editor_.bench.time.advance(1000);
        QVERIFY(!editor_.table()->horizontalScrollBar()->isVisible());
        const auto buttons = editor_.page->findChildren<WrapButton*>();
        for (const WrapButton* button : buttons) {
            QVERIFY2(button->width() >= 60 && button->height() <= 40, qPrintable(button->objectName()));
            QVERIFY2(button->shownPixelSize() >= 10, qPrintable(button->objectName()));
        }
    }
};

LUMO_TEST_MAIN(TestProgramTable)
#include "test_programtable.moc"
