#include "editorfixture.h"
#include "params/paramconfigwidget.h"

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
    static void typeIn(QLineEdit* line, const QString& text) {
        line->clear();
        QTest::keyClicks(line, text);
    }
    /// The names in the numbered table, which the tree and, if it is written, the file agree with.
    QString names(bool isStored) const {
        const QString shown = columnOf(table(), 1).join(' ');
        const QByteArray file = contentOf("lumo_param.json");
        const bool isCurrent = QJsonDocument::fromJson(file).array() == sets()->exportToJson().toArray();
        const bool isRight = isStored ? isCurrent : file == "(no file)";
        const auto* const last = qobject_cast<QLabel*>(table()->cellWidget(table()->rowCount() - 1, 0));
        const bool isNumbered = !last || last->text().toInt() == table()->rowCount();
        return shown == values("name", sets()) && isRight && isNumbered ? shown : "differ";
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
        const std::tuple<QString, bool, QString> additions[] = {
            {"", true, "请输入参数名称"}, {"A", true, "该参数名称已存在"}, {"C", false, ""}, {"a", true, ""}};
        for (const auto& [name, ok, box] : additions) {
            QCOMPARE(names(false), "A B");
            press("btnAdd");
            type(name);
            answer(ok);
            QCOMPARE(boxes().join(""), box);
            closeBoxes();
        }
        QCOMPARE(names(true), "A B a");
        QJsonObject defaults{{"name", "a"}};
        for (const ModuleObject* definition : m("lumo.default.param")->cmobjs()) {
            defaults[definition->c("name")->getString()] = definition->c("value")->exportToJson();
        }
        QCOMPARE(sets()->c(2)->exportToJson().toObject(), defaults);
        // The starts of welding that name the set are reported, and a name that exists is accepted.
        load("[{'type':'open','index':1},{'type':'open'},{'type':'param','index':1}]");
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
            answerBox(yes);
            bench.time.settle();
            QCOMPARE(names(true), left);
        }
        QCOMPARE(contentOf("lumo_param.json").simplified(), "{ }");
    }

    void deletingAndEditing_meanTheSelectedSet() {
        table()->setFocus();  // makes the first row the current one, though none is marked
        press("btnDel");
        press("btnEdit");
        QCOMPARE(boxes(), QStringList{"请先选中行"});
        closeBoxes();
        press("btnDel", 1);
        QCOMPARE(boxes(), QStringList{"是否删除 2 ?"});
        sets()->remove(this, "#1");  // gone before the answer
        answerBox(true);
        QCOMPARE(text(sets()), "[{'name':'A'}]");
        init();
        press("btnEdit", 1);
        sets()->remove(this, "#1");
        answer(true);
        QCOMPARE(text(sets()), "[{'name':'A'}]");
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
            QByteArray statements =
                "[{'type':'open','index':0@},{'type':'open','index':1@},"
                "{'type':'param','index':1@},{'type':'open','index':9@},{'type':'open','index':1@}]";
            load(statements.replace("@", ",'laserPower':1,'laserDutyCycle':1"));
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

    void values_areGroupedAndLimited_andTabGoesThroughThem() {
        press("btnEdit", 1);
        auto* const lines = shown()->findChild<QTableWidget*>();
        QString numbers, groups;
        for (int row = 0; row < lines->rowCount(); ++row) {
            numbers += qobject_cast<QLabel*>(lines->cellWidget(row, 0))->text();
            const QString group = qobject_cast<QLabel*>(lines->cellWidget(row, 1))->text().left(1);
            groups += group + QString::number(lines->rowSpan(row, 1));
        }
        QCOMPARE(numbers, "123123456781234");
        QCOMPARE(groups, "1功2功21过7过7过7过7过7过7过71送3送3送3");
        const std::tuple<int, const char*, const char*> cases[] = {
            {0, "100", "100"},    {2, "101", "10"},    {11, "101", "10"},   {0, "007", "0"},
            {1, "-7.5", "75"},    {3, "5000", "5000"}, {10, "5001", "500"}, {12, "4999", "4999"},
            {14, "60000", "600"}, {0, "99", "99"}};
        for (const auto& [row, typed, taken] : cases) {
            typeIn(value(row), typed);
            QCOMPARE(value(row)->text(), taken);
        }
        // A press goes to the panel's input method; the first one selects what typing will replace.
        click(value(0));
        QCOMPARE(value(0)->selectedText(), "99");
        for (int row = 0; row < lines->rowCount(); ++row) {
            QCOMPARE(shown()->focusWidget(), value(row));
            QVERIFY(lines->viewport()->rect().contains(value(row)->geometry()));
            QTest::keyClick(value(row), Qt::Key_Tab);
        }
        QVERIFY(qobject_cast<QPushButton*>(shown()->focusWidget()));
    }
};

LUMO_TEST(TestParamSets)
#include "test_paramsets.moc"
