#include "editorfixture.h"
#include "params/paramconfigwidget.h"
#include "params/setrows.h"
#include "params/timingpicture.h"

#include <QFileDialog>

/// The page of the parameter sets: the list, its file, its reports, and the values of a set.
class TestParamSets : public EditorTest {
    Q_OBJECT

    std::unique_ptr<ParamConfigWidget> sets_;
    QList<QList<int>> reports_;

    static ModuleObject* sets() { return m("lumo.param"); }
    QTableWidget* table() const { return child<QTableWidget>(sets_.get(), "tblWgtGroup"); }
    void press(const char* name, int row = -1) {
        table()->selectRow(row);
        click(child(sets_.get(), name));
        bench.time.settle();
    }
    static QLineEdit* value(int row) {
        return qobject_cast<QLineEdit*>(shown()->findChild<QTableWidget*>()->cellWidget(row, 3));
    }
    /// The names in the table, which the tree and, if it is written, the file agree with.
    QString names(bool isStored) const {
        const QString shown = columnOf(table(), 1).join(' ');
        const QByteArray file = contentOf("lumo_param.json");
        const bool isCurrent = QJsonDocument::fromJson(file).array() == sets()->exportToJson().toArray();
        const bool isRight = isStored ? isCurrent : file == "(no file)";
        return shown == values("name", sets()) && isRight ? shown : "differ";
    }

private slots:
    /// The page on the sets A and B, with no file.
    void init() {
        bench.reset();
        sets()->loadJson(this, json("[{'name':'A'},{'name':'B','power':50,'ratio':50}]"));
        QFile::remove("lumo_param.json");
        sets_ = std::make_unique<ParamConfigWidget>();
        sets_->resize(800, 600);
        sets_->show();
        reports_.clear();
        connect(sets_.get(), &ParamConfigWidget::signalparamconfigchangedProgramlist, this,
                [this](const QList<int>& lines) { reports_ << lines; });
        bench.time.settle();
    }

    void sets_areAddedRenamedAndDeleted() {
        table()->setFocus();  // makes the first row the current one, though none is marked
        press("btnDel");
        press("btnEdit");
        QCOMPARE(boxes(), QStringList{"请先选中行"});
        closeBoxes();
        const std::tuple<QString, bool, QString> additions[] = {
            {"", true, "请输入参数名称"}, {"A", true, "该参数名称已存在"}, {"C", false, ""}, {"a", true, ""}};
        for (const auto& [name, ok, box] : additions) {
            QCOMPARE(names(false), "A B");
            press("btnAdd");
            typeIn(child<QLineEdit>(shown(), "lineEdit"), name);
            answer(ok);
            QCOMPARE(boxes().join(""), box);
            closeBoxes();
        }
        QCOMPARE(names(true), "A B a");
        QCOMPARE(sets()->c(2)->size(), m("lumo.default.param")->size() + 1);
        // The starts of welding that name the set are reported, and a name that exists is accepted.
        load("open 1; open 0; param 1");
        for (const auto& [row, name] : {std::pair{1, "A"}, {0, "Z"}}) {
            doubleClickCell(table(), row, 1);
            auto* const editor = table()->viewport()->findChild<QLineEdit*>();
            typeIn(editor, name);
            QTest::keyClick(editor, Qt::Key_Return);
            bench.time.settle();
        }
        QCOMPARE(reports_, QList<QList<int>>({{0}, {1}}));
        const std::tuple<int, bool, QString> deletions[] = {
            {1, false, "Z A a"}, {1, true, "Z a"}, {1, true, "Z"}, {0, true, ""}};
        for (const auto& [row, yes, left] : deletions) {
            press("btnDel", row);
            QCOMPARE(boxes(), QStringList{QString("是否删除 %1 ?").arg(row + 1)});
            answerBox(yes);
            bench.time.settle();
            QCOMPARE(names(true), left);
        }
        QCOMPARE(contentOf("lumo_param.json").simplified(), "{ }");
    }

    /// Lines of a deleted set have none, and never another one; nothing moves during a run.
    void movedAndDeletedSets_areFollowedByTheirLines() {
        const std::tuple<const char*, int, bool, QString, QString> cases[] = {
            {"btnUp", 1, true, "B A", "1 0 1 9 -1"},
            {"btnUp", 0, true, "A B", "0 1 0 9 -1"},
            {"btnDown", 0, true, "B A", "1 0 1 9 -1"},
            {"btnDown", 1, true, "A B", "0 1 0 9 -1"},
            {"btnDuplicate", 0, true, "A B A (2)", "0 1 0 9 -1"},
            {"btnDel", 0, true, "B", "-1 0 -1 9 -1"},
            {"btnDel", 1, true, "A", "0 -1 0 9 -1"},
            {"btnDel", 0, false, "A B", "0 1 0 9 -1"}};
        for (const auto& [press_, row, ok, left, lines] : cases) {
            init();
            load("open 0; param 1; open 0; open 9; open -1");
            m("lumo.cur_param")->setValue(this, 0);
            press(press_, row);
            if (QByteArray(press_) == "btnDel") {
                const QString told = shown<QMessageBox>()->informativeText();
                QVERIFY(told.contains(row == 0 ? "1, 3" : "2"));
                answerBox(ok);
            }
            bench.time.settle();
            QCOMPARE(columnOf(table(), 1).join(' '), left);
            QCOMPARE(values("name", sets()), left);
            QCOMPARE(values("index"), lines);
            QCOMPARE(m("lumo.cur_param")->getString(), lines.section(' ', 0, 0));
            QCOMPARE(table()->item(0, lumo::SetLines)->text(), left.startsWith('B') ? "2" : "1, 3");
        }
        init();
        load("delay 1000; open 1");
        bench.robot.setPower("on");
        at(100, [this] {
            press("btnUp", 1);
            QCOMPARE(boxes(), QStringList{"当前不是空闲状态"});
            closeBoxes();
            press("btnDel", 0);
            answerBox(true);
            QCOMPARE(boxes(), QStringList{"当前不是空闲状态"});
            closeBoxes();
        });
        m("lumo.execute.trigger.start")->setValue(this, 0);
        QCOMPARE(values("index") + values("name", sets()), " 1A B");
    }

    void files_comeInOnlyWhole_andClashesAreAsked() {
        const std::tuple<QByteArray, const char*, const char*, QString> cases[] = {
            {"no json", "文件无法读取", nullptr, "A B"},
            {"{}", "文件中没有参数组", nullptr, "A B"},
            {"[{'name':'C'},{'name':''}]", "第 2 组参数没有名称", nullptr, "A B"},
            {"[{'name':'C','power':'a lot'}]", "C: ", nullptr, "A B"},
            {"[{'name':'C','power':150%}]", "仍要导入", "取消", "A B"},
            {"[{'name':'C','power':150%}]", "仍要导入", "导入", "A B C"},
            {"[{'name':'C'%},{'name':'C'%}]", "已导入 2 组", nullptr, "A B C C (2)"},
            {"[{'name':'B','power':70%}]", "同名的参数组：B", "取消", "A B"},
            {"[{'name':'B','power':70,'note':'thin'%}]", "同名的参数组：B", "替换其数值", "A B"},
            {"[{'name':'B','power':70,'strange':1%}]", "同名的参数组：B", "两者都保留", "A B B (2)"},
        };
        QByteArray rest;
        for (const ModuleObject* definition : m("lumo.default.param")->cmobjs()) {
            if (definition->c("name")->getString() != "power") {
                rest += ",'" + definition->c("name")->getString().toUtf8() + "':1";
            }
        }
        for (const auto& [content, said, answer, left] : cases) {
            init();
            load("open 1 laserPower=50; open 0");
            const QByteArray with = content.contains("power") ? rest : rest + ",'power':1";
            writeFile("sets.json", quoted(QByteArray(content).replace("%", with)));
            press("btnImport");
            auto* const files = shown<QFileDialog>();
            auto* const name = child<QLineEdit>(files, "fileNameEdit");
            bench.time.settle();
            typeIn(name, QDir().absoluteFilePath("sets.json"));
            QTest::keyClick(name, Qt::Key_Return);
            bench.time.settle();
            QVERIFY2(boxes().join("").contains(said), said);
            if (answer) {
                for (auto* const button : shown<QMessageBox>()->buttons()) {
                    if (button->text() == answer) {
                        click(button);
                        break;
                    }
                }
                bench.time.settle();
            }
            const bool replaced = QString(answer) == "替换其数值";
            QCOMPARE(names(replaced || left != "A B"), left);
            QCOMPARE(values("power", sets()).section(' ', 1, 1), replaced ? "70" : "50");
            QCOMPARE(line(0)->c("laserPower")->getString(), replaced ? "70" : "50");
            closeBoxes();
        }
    }

    void editedValues_reachFileAndStartsOfWeldingOnceAgreed() {
        const std::tuple<int, const char*, QString, QString, QString, bool> cases[] = {
            {0, "60", "power", "1 60 1 1 60", "1 1 1 1 1", true},
            {0, "60", "power", "1 1 1 1 1", "1 1 1 1 1", false},
            {0, "50", "power", "1 1 1 1 1", "1 1 1 1 1", true},
            {1, "60", "frequency", "1 1 1 1 1", "1 1 1 1 1", true},
            {2, "35", "ratio", "1 1 1 1 1", "1 35 1 1 35", true}};
        for (const auto& [row, typed, field, powers, ratios, ok] : cases) {
            init();
            const QByteArray statements = "open 0@; open 1@; param 1@; open 9@; open 1@";
            load(QByteArray(statements).replace("@", " laserPower=1 laserDutyCycle=1"));
            const double stored = sets()->c(1)->c(field)->getDouble(-1);
            press("btnEdit", 1);
            typeIn(value(row), typed);
            answer(ok);
            QCOMPARE(values("laserPower"), powers);
            QCOMPARE(values("laserDutyCycle"), ratios);
            QCOMPARE(names(ok), "A B");
            QCOMPARE(sets()->c(1)->c(field)->getDouble(), ok ? QString(typed).toDouble() : stored);
            const QList<int> lines = powers == ratios ? QList<int>() : QList<int>{1, 4};
            QCOMPARE(reports_, ok ? QList<QList<int>>{lines} : QList<QList<int>>());
        }
    }

    /// A tap on a time, without a selected set, edits that time of the first one.
    void tapOnATime_opensItsField() {
        sets()->c(0)->loadJson(this, json("{'name':'A','power':60,'delay_before_blow':2000}"));
        sets_ = std::make_unique<ParamConfigWidget>();
        sets_->resize(1000, 800);
        sets_->show();
        bench.time.settle();
        auto* const picture = sets_->findChild<lumo::TimingPicture*>();
        QStringList fields;
        connect(picture, &lumo::TimingPicture::tapped, this,
                [&fields](const QString& field) { fields << field; });
        const QPoint inGap(picture->width() / 3, picture->height() / 3);
        for (int y = 0; y < picture->height() && fields.isEmpty(); y += 4) {
            QTest::mouseClick(picture, Qt::LeftButton, {}, QPoint(inGap.x(), y));
        }
        bench.time.settle();
        QCOMPARE(fields, QStringList("delay_before_blow"));
        auto* const field = child<QLineEdit>(shown(), "delay_before_blow");
        QCOMPARE(field->selectedText(), "2000");
        typeIn(field, "1500");
        answer(true);
        QCOMPARE(sets()->c(0)->c("delay_before_blow")->getInt(), 1500);
    }

    /// The list is never wider than the page; power and users of a set are seen at any width.
    void columns_foldWhereThePageIsNarrow() {
        sets()->c(0)->loadJson(this, json("{'name':'A','power':60,'note':'thin'}"));
        for (const auto& [width, hidesFrequency] : {std::pair{464, true}, {1088, false}, {688, true}}) {
            sets_->resize(width, 700);
            bench.time.settle();
            int used = 0;
            for (int column = 0; column < lumo::SetColumnCount; ++column) {
                used += table()->columnWidth(column);
            }
            QVERIFY2(used <= table()->viewport()->width(), QByteArray::number(used));
            QCOMPARE(table()->isColumnHidden(lumo::SetFrequency), hidesFrequency);
            QVERIFY(!table()->isColumnHidden(lumo::SetPower) && !table()->isColumnHidden(lumo::SetLines));
            QVERIFY(sets_->minimumSizeHint().width() <= 464);
        }
    }

    void remarkBelowTheTable_isStored() {
        auto* const note = child<QLineEdit>(sets_.get(), "lineNote");
        table()->selectRow(1);
        typeIn(note, "thin sheet");
        QTest::keyClick(note, Qt::Key_Return);
        QCOMPARE(sets()->c(1)->c("note")->getString(), "thin sheet");
        QCOMPARE(names(true), "A B");
    }

    void values_areLimited() {
        press("btnEdit", 0);
        const std::tuple<int, const char*, const char*> cases[] = {
            {0, "100", "100"},    {2, "101", "10"},    {11, "101", "10"},   {0, "007", "0"},
            {1, "-7.5", ""},      {3, "5000", "5000"}, {10, "5001", "500"}, {12, "4999", "4999"},
            {14, "60000", "600"}, {0, "99", "99"}};
        for (const auto& [row, typed, taken] : cases) {
            typeIn(value(row), typed);
            QCOMPARE(value(row)->text(), taken);
        }
        click(value(0));
        QCOMPARE(value(0)->selectedText(), "99");  // typing will replace it
    }
};

LUMO_TEST(TestParamSets)
#include "test_paramsets.moc"
