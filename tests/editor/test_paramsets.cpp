#include "editorfixture.h"
#include "params/paramconfigwidget.h"
#include "params/paramvaluesdialog.h"

#include <QFile>

/// The page of the parameter sets, worked by mouse and keyboard: the list, its file, its reports, and the
/// values of a set.
class TestParamSets : public EditorTest {
    Q_OBJECT

    std::unique_ptr<ParamConfigWidget> page_;
    std::unique_ptr<QSignalSpy> reports_;

    static ModuleObject* sets() { return m("lumo.param"); }

    /// Starts the page anew on the sets A and B, with no file.
    void open() {
        bench.reset();
        sets()->loadJson(this,
                         json("[{'name':'A','power':50,'ratio':50},{'name':'B','power':50,'ratio':50}]"));
        QFile::remove("lumo_param.json");
        page_ = std::make_unique<ParamConfigWidget>();
        page_->resize(800, 600);
        page_->show();
        reports_ = std::make_unique<QSignalSpy>(page_.get(),
                                                &ParamConfigWidget::signalparamconfigchangedProgramlist);
        bench.time.settle();
    }

    QTableWidget* table() const { return child<QTableWidget>(page_.get(), "tblWgtGroup"); }
    void press(const char* name) {
        click(child(page_.get(), name));
        bench.time.settle();
    }
    void deleteRow(int row, bool yes) {
        clickCell(table(), row, 1);
        press("btnDel");
        answerBox(yes ? QMessageBox::Yes : QMessageBox::No);
        bench.time.settle();
    }
    static QLineEdit* value(int row) {
        return qobject_cast<QLineEdit*>(shown()->findChild<QTableWidget*>()->cellWidget(row, 3));
    }
    static void typeIn(QLineEdit* line, const QString& text) {
        line->selectAll();
        QTest::keyClick(line, Qt::Key_Delete);
        QTest::keyClicks(line, text);
    }
    /// The table's names, which the tree and, if it is written, the file agree with.
    QString names(bool isStored) const {
        QStringList shown = columnOf(table(), 1), inTree;
        for (const ModuleObject* set : sets()->cmobjs()) {
            inTree << set->c("name")->getString();
        }
        const QByteArray file = contentOf("lumo_param.json");
        const bool isCurrent = QJsonDocument::fromJson(file).array() == sets()->exportToJson().toArray();
        return shown == inTree && (isStored ? isCurrent : file == "(no file)") ? shown.join(' ') : "differ";
    }

private slots:
    void initTestCase() { qRegisterMetaType<QList<int>>(); }
    void init() { open(); }
    void cleanup() { page_.reset(); }

    void sets_areAddedRenamedAndDeleted() {
        const struct {
            QString name;
            bool ok;
            QStringList boxes;
        } additions[] = {{"", true, {"请输入参数名称"}},
                         {"A", true, {"该参数名称已存在"}},
                         {"C", false, {}},
                         {"a", true, {}}};
        for (const auto& [name, ok, messages] : additions) {
            QCOMPARE(names(false), "A B");
            press("btnAdd");
            type(name);
            answer(ok);
            QCOMPARE(boxes(), messages);
            closeBoxes();
        }
        QCOMPARE(names(true), "A B a");
        QJsonObject defaults{{"name", "a"}};
        for (const ModuleObject* definition : m("lumo.default.param")->cmobjs()) {
            defaults[definition->c("name")->getString()] = definition->c("value")->exportToJson();
        }
        QCOMPARE(sets()->c(2)->exportToJson().toObject(), defaults);
        QCOMPARE(reports_->count(), 0);

        // The starts of welding that name the set are reported, and a name that exists is accepted.
        load(
            "[{'type':'open','index':1},{'type':'open','index':0},{'type':'param','index':1},"
            "{'type':'open','index':'1'},{'type':'open'}]");
        for (const auto& [row, lines] : {std::pair{1, QList<int>{0, 3}}, {0, QList<int>{1, 4}}}) {
            doubleClickCell(table(), row, 1);
            auto* const editor = table()->viewport()->findChild<QLineEdit*>();
            typeIn(editor, "a");
            QTest::keyClick(editor, Qt::Key_Return);
            bench.time.settle();
            QCOMPARE(reports_->last()[0].value<QList<int>>(), lines);
        }
        QCOMPARE(names(true), "a a a");

        deleteRow(0, false);
        QCOMPARE(names(true), "a a a");
        deleteRow(0, true);
        deleteRow(0, true);
        QCOMPARE(sets()->c(0)->exportToJson().toObject(), defaults);
        QCOMPARE(qobject_cast<QLabel*>(table()->cellWidget(0, 0))->text(), "1");
        deleteRow(0, true);
        QCOMPARE(QJsonDocument::fromJson(contentOf("lumo_param.json")), QJsonDocument(QJsonObject()));
        QCOMPARE(reports_->count(), 2);
    }

    /// What the operator agreed to delete is what goes, whatever became of the list meanwhile.
    void deleting_meansTheSetThatWasAskedFor() {
        clickCell(table(), 1, 1);
        press("btnDel");
        QCOMPARE(boxes(), QStringList{"是否删除 2 ?"});
        sets()->remove(this, "#1");
        bench.time.settle();
        answerBox(QMessageBox::Yes);
        QCOMPARE(sets()->size(), 1);
        QCOMPARE(sets()->c(0)->c("name")->getString(), "A");
    }

    void withoutASelection_nothingIsDeletedOrEdited() {
        table()->setFocus();  // makes the first row the current one, though none is marked
        press("btnDel");
        QCOMPARE(boxes(), QStringList());
        press("btnEdit");
        QCOMPARE(boxes(), QStringList{"请先选中行"});
        QTest::keyClick(table(), Qt::Key_Tab);
        QVERIFY(qobject_cast<QAbstractButton*>(page_->focusWidget()));
    }

    void editedValues_reachFileAndStartsOfWeldingOnceAgreed() {
        const struct {
            int row;
            const char *typed, *field, *powers, *ratios;
            bool ok;
        } cases[] = {{0, "60", "power", "1 60 1 1 60", "1 1 1 1 1", true},
                     {0, "60", "power", "1 1 1 1 1", "1 1 1 1 1", false},
                     {0, "50", "power", "1 1 1 1 1", "1 1 1 1 1", true},
                     {1, "60", "frequency", "1 1 1 1 1", "1 1 1 1 1", true},
                     {2, "35", "ratio", "1 1 1 1 1", "1 35 1 1 35", true}};
        for (const auto& [row, typed, field, powers, ratios, ok] : cases) {
            open();
            QByteArray program =
                "[{'type':'open','index':0@},{'type':'open','index':1@},{'type':'param','index':1@},"
                "{'type':'open','index':9@},{'type':'open','index':1@}]";
            load(program.replace("@", ",'laserPower':1,'laserDutyCycle':1"));
            const QString before = text(sets());
            clickCell(table(), 1, 1);
            press("btnEdit");
            typeIn(value(row), typed);
            answer(ok);
            QVERIFY(!shown());
            QCOMPARE(values("laserPower").join(' '), powers);
            QCOMPARE(values("laserDutyCycle").join(' '), ratios);
            QCOMPARE(reports_->count(), ok ? 1 : 0);
            QCOMPARE(names(ok), "A B");
            QCOMPARE(text(sets()) == before, !ok);
            if (ok) {
                const bool isShared = QString(powers) + ratios != "1 1 1 1 11 1 1 1 1";
                QCOMPARE((*reports_)[0][0].value<QList<int>>(), isShared ? QList<int>({1, 4}) : QList<int>());
                QCOMPARE(sets()->c(1)->c(field)->value(), QVariant(QString(typed).toDouble()));
            }
        }
    }

    void pageThatGoesAway_takesItsDialogsAlong() {
        for (const char* button : {"btnAdd", "btnEdit", "btnDel"}) {
            open();
            clickCell(table(), 0, 1);
            press(button);
            page_.reset();
            if (shown<QMessageBox>()) {
                answerBox(QMessageBox::Yes);
            }
            QVERIFY2(!shown(), button);
            QCOMPARE(sets()->size(), 2);
        }
    }

    void values_areGroupedAndLimited_andTabGoesThroughThem() {
        clickCell(table(), 1, 1);
        press("btnEdit");
        auto* const lines = shown()->findChild<QTableWidget*>();
        QString numbers, groups;
        for (int row = 0; row < lines->rowCount(); ++row) {
            const auto* const group = qobject_cast<QLabel*>(lines->cellWidget(row, 1));
            numbers += qobject_cast<QLabel*>(lines->cellWidget(row, 0))->text();
            groups += group->text().left(1) + QString::number(lines->rowSpan(row, 1));
            QCOMPARE(group->styleSheet().contains("#CCCCCC"), group->text().isEmpty());
        }
        QCOMPARE(numbers, "123123456781234");
        QCOMPARE(groups, "1功2功21过7过7过7过7过7过7过71送3送3送3");
        QCOMPARE(qobject_cast<QLabel*>(lines->cellWidget(14, 4))->text(), "[0,5000]");
        const struct {
            int row;
            const char *typed, *taken;
        } cases[] = {{0, "100", "100"},   {2, "101", "10"},     {11, "101", "10"},    {0, "007", "0"},
                     {0, "99", "99"},     {0, "-7.5", "75"},    {3, "5000", "5000"},  {3, "5001", "500"},
                     {10, "5001", "500"}, {12, "4999", "4999"}, {14, "60000", "600"}, {14, "05", "0"}};
        for (const auto& [row, typed, taken] : cases) {
            typeIn(value(row), typed);
            QCOMPARE(value(row)->text(), taken);
        }
        // A press goes to the panel's input method; the first one selects what typing will replace.
        for (const char* selection : {"99", ""}) {
            QTest::mouseClick(value(0), Qt::LeftButton, {}, QPoint(2, 10));
            QCOMPARE(value(0)->selectedText(), selection);
            value(0)->deselect();
        }
        for (int row = 0; row < lines->rowCount(); ++row) {
            QCOMPARE(shown()->focusWidget(), value(row));
            QVERIFY(lines->viewport()->rect().contains(value(row)->geometry()));
            QTest::keyClick(value(row), Qt::Key_Tab);
        }
        QVERIFY(qobject_cast<QPushButton*>(shown()->focusWidget()));
    }

    void setThatIsGoneOrUntouched_isNotWritten() {
        bench.setParam("power", 12.5, 1);
        clickCell(table(), 1, 1);
        press("btnEdit");
        answer(true);
        QCOMPARE(sets()->c(1)->c("power")->getDouble(), 12.5);
        clickCell(table(), 1, 1);
        press("btnEdit");
        sets()->remove(this, "#1");
        typeIn(value(0), "77");
        const QString before = text(sets());
        answer(true);
        QCOMPARE(text(sets()), before);
    }
};

LUMO_TEST(TestParamSets)
#include "test_paramsets.moc"
