// The page of the parameter sets, worked by mouse and keyboard: the list, its file and its reports.

#include "params/addparamdialog.h"
#include "params/paramconfigwidget.h"
#include "params/paramvaluesdialog.h"
#include "support/executorbench.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>

class TestParamConfig : public QObject {
    Q_OBJECT

    test::ExecutorBench bench_;
    std::unique_ptr<ParamConfigWidget> page_;
    std::unique_ptr<QSignalSpy> reports_;

    static constexpr auto fileName = "lumo_param.json";

    static ModuleObject* sets() { return m(QStringLiteral("lumo.param")); }

    /// Starts the page anew on sets of these names, with no file.
    void open(const QStringList& names) {
        QJsonArray list;
        for (const QString& name : names) {
            list << QJsonObject{{"name", name}, {"power", 50}, {"ratio", 50}};
        }
        sets()->loadJson(this, list);
        QFile::remove(fileName);
        page_ = std::make_unique<ParamConfigWidget>();
        page_->resize(800, 600);
        page_->show();
        reports_ = std::make_unique<QSignalSpy>(page_.get(),
                                                &ParamConfigWidget::signalparamconfigchangedProgramlist);
        bench_.time.settle();
    }

    QTableWidget* table() const { return page_->findChild<QTableWidget*>(QStringLiteral("tblWgtGroup")); }

    void press(const char* name) {
        QTest::mouseClick(page_->findChild<QPushButton*>(QLatin1String(name)), Qt::LeftButton);
        bench_.time.settle();
    }

    void select(int row) {
        QTest::mouseClick(table()->viewport(), Qt::LeftButton, {},
                          table()->visualItemRect(table()->item(row, 1)).center());
    }

    template <typename Dialog>
    Dialog* dialog() const {
        Dialog* shown = nullptr;
        for (Dialog* candidate : page_->findChildren<Dialog*>()) {
            shown = candidate->isVisible() ? candidate : shown;
        }
        return shown;
    }

    void answer(QDialog* dialog, QDialogButtonBox::StandardButton which) {
        QTest::mouseClick(dialog->findChild<QDialogButtonBox*>()->button(which), Qt::LeftButton);
        bench_.time.settle();
    }

    void add(const QString& name, QDialogButtonBox::StandardButton which = QDialogButtonBox::Ok) {
        press("btnAdd");
        auto* shown = dialog<AddParamDialog>();
        QVERIFY(shown);
        QTest::keyClicks(shown->findChild<QLineEdit*>(), name);
        answer(shown, which);
        QVERIFY(page_->findChildren<AddParamDialog*>().isEmpty());
    }

    void rename(int row, const QString& name) {
        select(row);
        QTest::mouseDClick(table()->viewport(), Qt::LeftButton, {},
                           table()->visualItemRect(table()->item(row, 1)).center());
        auto* editor = table()->viewport()->findChild<QLineEdit*>();
        QVERIFY(editor);
        editor->selectAll();
        QTest::keyClicks(editor, name);
        QTest::keyClick(editor, Qt::Key_Return);
        bench_.time.settle();
    }

    static QMessageBox* box() {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            auto* shown = qobject_cast<QMessageBox*>(window);
            if (shown && shown->isVisible()) {
                return shown;
            }
        }
        return nullptr;
    }

    void answerBox(QMessageBox::StandardButton which) {
        QTest::mouseClick(box()->button(which), Qt::LeftButton);
        bench_.time.settle();
    }

    static QJsonDocument file() {
        QFile stored(fileName);
        return stored.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(stored.readAll()) : QJsonDocument();
    }

    static QStringList names() {
        QStringList result;
        for (const ModuleObject* set : sets()->cmobjs()) {
            result << set->r(QStringLiteral("name"))->getString();
        }
        return result;
    }

    /// "number name" of every row.
    QStringList rows() const {
        QStringList result;
        for (int row = 0; row < table()->rowCount(); ++row) {
            const auto* number = qobject_cast<QLabel*>(table()->cellWidget(row, 0));
            result << number->text() + ' ' + table()->item(row, 1)->text();
            const bool centred = number->alignment() == Qt::AlignCenter &&
                                 table()->item(row, 1)->textAlignment() == Qt::AlignCenter;
            result.last() += centred ? "" : " not centred";
        }
        return result;
    }

    /// The file holds the sets that the tree holds.
    static bool fileIsCurrent() {
        return file().array() == sets()->exportToJson().toArray() && !file().isNull();
    }

    QList<int> reportedLines() const { return reports_->last()[0].value<QList<int>>(); }

private slots:
    void initTestCase() { qRegisterMetaType<QList<int>>(); }
    void init() { bench_.reset(); }
    void cleanup() { page_.reset(); }

    void opening_writesNothing() {
        sets()->loadJson(this, QJsonArray{QJsonObject{{"name", "A"}}, QJsonObject{{"name", "B"}}});
        QSignalSpy writes(sets()->c(0)->c(QStringLiteral("name")), &ModuleObject::changed);
        QFile::remove(fileName);
        ParamConfigWidget page;
        QSignalSpy reports(&page, &ParamConfigWidget::signalparamconfigchangedProgramlist);
        page.show();
        bench_.time.settle();
        QCOMPARE(writes.count(), 0);
        QCOMPARE(reports.count(), 0);
        QVERIFY(!QFile::exists(fileName));
    }

    void shows_theSetsInTheirOrder() {
        open({"B", "A"});
        QCOMPARE(rows(), QStringList({"1 B", "2 A"}));
    }

    void tab_leavesTheTable() {
        open({"A", "B", "C"});
        select(1);
        QTest::keyClick(table(), Qt::Key_Tab);
        QCOMPARE(table()->currentRow(), 1);
        QVERIFY(qobject_cast<QAbstractButton*>(page_->focusWidget()));
    }

    void add_makesASetOfDefaults() {
        open({"A"});
        add("Steel 2 mm");
        QCOMPARE(rows(), QStringList({"1 A", "2 Steel 2 mm"}));
        QJsonObject expected{{"name", "Steel 2 mm"}};
        for (const ModuleObject* definition : m(QStringLiteral("lumo.default.param"))->cmobjs()) {
            expected[definition->r(QStringLiteral("name"))->getString()] =
                QJsonValue::fromVariant(definition->r(QStringLiteral("value"))->value());
        }
        QCOMPARE(expected.size(), 16);
        QCOMPARE(sets()->c(1)->exportToJson().toObject(), expected);
        QVERIFY(fileIsCurrent());
        QCOMPARE(reports_->count(), 0);
    }

    void add_refuses_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<QStringList>("message");
        QTest::newRow("empty") << "" << true << QStringList{"请输入参数名称"};
        QTest::newRow("taken") << "A" << true << QStringList{"该参数名称已存在"};
        QTest::newRow("cancelled") << "C" << false << QStringList{};
    }

    void add_refuses() {
        QFETCH(QString, name);
        QFETCH(bool, ok);
        open({"A", "B"});
        add(name, ok ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel);
        QTEST(test::ExecutorBench::boxes(), "message");
        QCOMPARE(rows(), QStringList({"1 A", "2 B"}));
        QCOMPARE(names(), QStringList({"A", "B"}));
        QVERIFY(!QFile::exists(fileName));
    }

    void add_afterARefusal_works() {
        open({"A"});
        add("A");
        bench_.closeBoxes();
        add("a");
        QCOMPARE(names(), QStringList({"A", "a"}));
    }

    void rename_reportsTheStartsOfWelding() {
        open({"A", "B"});
        bench_.load(R"([{"type":"open","index":1},{"type":"open","index":0},{"type":"param","index":1},
                        {"type":"open","index":"1"},{"type":"open"}])");
        rename(1, "A");  // a name that exists is accepted
        QCOMPARE(names(), QStringList({"A", "A"}));
        QVERIFY(fileIsCurrent());
        QCOMPARE(reports_->count(), 1);
        QCOMPARE(reportedLines(), QList<int>({0, 3}));
        rename(0, "Z");
        QCOMPARE(reportedLines(), QList<int>({1, 4}));
    }

    void deleting_asksWithTheNumber() {
        open({"A", "B", "C"});
        select(1);
        press("btnDel");
        QCOMPARE(box()->windowTitle(), QString("删除确认"));
        QCOMPARE(box()->text(), QString("是否删除 2 ?"));
        answerBox(QMessageBox::No);
        QCOMPARE(names(), QStringList({"A", "B", "C"}));
        QVERIFY(!QFile::exists(fileName));
        press("btnDel");
        answerBox(QMessageBox::Yes);
        QCOMPARE(rows(), QStringList({"1 A", "2 C"}));
        QCOMPARE(names(), QStringList({"A", "C"}));
        QVERIFY(fileIsCurrent());
        QCOMPARE(reports_->count(), 0);
    }

    void deletingTheLast_leavesAnEmptyObject() {
        open({"A"});
        select(0);
        press("btnDel");
        answerBox(QMessageBox::Yes);
        QVERIFY(file().isObject() && file().object().isEmpty());
        add("B");
        QCOMPARE(names(), QStringList{"B"});
        QVERIFY(fileIsCurrent());
    }

    /// What the operator agreed to delete is what goes, whatever became of the list meanwhile.
    void deleting_meansTheSetThatWasAskedFor() {
        open({"A", "B"});
        select(1);
        press("btnDel");
        sets()->remove(this, mIndex(1));
        bench_.time.settle();
        answerBox(QMessageBox::Yes);
        QCOMPARE(names(), QStringList{"A"});
    }

    void withoutASelection_data() {
        QTest::addColumn<QByteArray>("button");
        QTest::addColumn<QStringList>("message");
        QTest::newRow("delete") << QByteArray("btnDel") << QStringList{};
        QTest::newRow("edit") << QByteArray("btnEdit") << QStringList{"请先选中行"};
    }

    void withoutASelection() {
        QFETCH(QByteArray, button);
        open({"A"});
        table()->setFocus();  // makes the first row the current one, though none is marked
        press(button);
        QTEST(test::ExecutorBench::boxes(), "message");
        QVERIFY(!dialog<ParamValuesDialog>());
    }

    void edit_data() {
        QTest::addColumn<QString>("power");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<int>("reports");
        QTest::addColumn<QList<int>>("lines");
        QTest::addColumn<int>("stored");
        QTest::newRow("power") << "60" << true << 1 << QList<int>{0, 2} << 60;
        QTest::newRow("nothing") << "" << true << 1 << QList<int>{} << 50;
        QTest::newRow("cancelled") << "60" << false << 0 << QList<int>{} << 50;
    }

    void edit() {
        QFETCH(QString, power);
        QFETCH(bool, ok);
        QFETCH(int, reports);
        open({"A", "B"});
        bench_.load(
            R"([{"type":"open","index":1,"laserPower":50},{"type":"open","index":0},{"type":"open","index":1}])");
        select(1);
        press("btnEdit");
        auto* shown = dialog<ParamValuesDialog>();
        QVERIFY(shown);
        auto* line = qobject_cast<QLineEdit*>(shown->findChild<QTableWidget*>()->cellWidget(0, 3));
        if (!power.isEmpty()) {
            line->selectAll();
            QTest::keyClicks(line, power);
        }
        answer(shown, ok ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel);
        QVERIFY(page_->findChildren<ParamValuesDialog*>().isEmpty());
        QCOMPARE(reports_->count(), reports);
        if (reports > 0) {
            QTEST(reportedLines(), "lines");
        }
        QTEST(sets()->c(1)->r(QStringLiteral("power"))->getInt(), "stored");
        QCOMPARE(QFile::exists(fileName), ok);
        QVERIFY(!ok || fileIsCurrent());
    }

    void everyEdit_reportsItsOwnLines() {
        open({"A", "B"});
        bench_.load(R"([{"type":"open","index":0},{"type":"open","index":1}])");
        for (const int row : {0, 1}) {
            select(row);
            press("btnEdit");
            auto* shown = dialog<ParamValuesDialog>();
            auto* line = qobject_cast<QLineEdit*>(shown->findChild<QTableWidget*>()->cellWidget(0, 3));
            line->selectAll();
            QTest::keyClicks(line, "33");
            answer(shown, QDialogButtonBox::Ok);
            QCOMPARE(reportedLines(), QList<int>{row});
        }
    }

    void pageThatGoesAway_takesItsDialogsAlong_data() {
        QTest::addColumn<QByteArray>("button");
        for (const QByteArray button : {"btnAdd", "btnEdit", "btnDel"}) {
            QTest::newRow(button) << button;
        }
    }

    void pageThatGoesAway_takesItsDialogsAlong() {
        QFETCH(QByteArray, button);
        open({"A"});
        select(0);
        press(button);
        page_.reset();
        if (box()) {
            answerBox(QMessageBox::Yes);
        }
        bench_.time.settle();
        QCOMPARE(names(), QStringList{"A"});
        QVERIFY(!QFile::exists(fileName));
    }
};

LUMO_TEST_MAIN(TestParamConfig)
#include "test_paramconfig.moc"
