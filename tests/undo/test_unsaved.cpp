#include "panel/pagebench.h"

#include "support/suite.h"
#include "undo/edit.h"

using namespace lumo;

/// What becomes of edits that are not saved: the questions, and the recovery file.
class TestUnsaved : public QObject {
    Q_OBJECT

    test::PageBench bench_;
    const QByteArray project_ =
        "[{\"delaytime\":100,\"execute\":true,\"type\":\"delay\"},{\"execute\":true,\"type\":\"close\"}]";
    const QString file_ = "seam.json", kept_ = "seam.json.recovery", older_ = "seam.json.recovery.older";

    static bool exists(const QString& file) { return QFileInfo::exists(file); }
    static QMessageBox* box() { return test::shown<QMessageBox>(); }
    /// The texts of the shown box and its answers.
    static QString asked() {
        QString text;
        if (const QMessageBox* const shown = box()) {
            text = shown->text();
            for (const QAbstractButton* button : shown->buttons()) {
                text += "|" + button->text();
            }
        }
        return text;
    }
    void answer(const QString& text) {
        QVERIFY(test::answerBox(text));
        bench_.time.settle();
    }
    void pass(int ms = 3000) { bench_.time.advance(ms); }
    /// An edit by hand.
    static void edit(const char* note = "edited") {
        const Edit step(EditedList::Program, "edit");
        m("lumo.program")->append(nullptr)->loadJson(nullptr, test::json("{'type':'close','note':''}"));
        m("lumo.program")->c(m("lumo.program")->size() - 1)->set(nullptr, "note", note);
    }
    void openProject() {
        bench_.renew();
        lumo_recovery = true;
        test::writeFile(file_, project_);
        bench_.openFile(file_);
        pass();
        bench_.problems.clear();
    }
    /// A new process in the same folder.
    void crash() {
        bench_.page.reset();
        LumoWidget::filePath.clear();
        bench_.load("");
        bench_.makePage();
        bench_.time.settle();
    }
    static int lines() { return m("lumo.program")->size(); }
    QWidget* nameDialog() const { return bench_.find<AddParamDialog>(); }

private slots:
    void cleanup() {
        test::closeBoxes();
        lumo_recovery = false;
        m("lumo.execute.state")->setValue(nullptr, "idle");
    }

    void newAndOpen_askWhenSomethingIsUnsaved() {
        for (const char* button : {"btnNew", "btnOpen"}) {
            const auto dialog = [this, button]() -> QWidget* {
                return button == QString("btnNew") ? nameDialog() : bench_.find<QFileDialog>();
            };
            openProject();
            bench_.click(button);
            QVERIFY(dialog() && !box());  // nothing to ask
            openProject();
            edit();
            bench_.click(button);
            QCOMPARE(asked(), "工程“seam”有未保存的更改。|保存|不保存|取消");
            answer("取消");
            QVERIFY(!dialog() && lines() == 3);
            bench_.click(button);
            edit();  // the question is out of date
            bench_.time.settle();
            QVERIFY(!dialog() && !box() && lines() == 4);
            bench_.click(button);
            m("lumo.execute.state")->setValue(nullptr, "busy");
            bench_.time.settle();
            QVERIFY(!dialog() && !box());
            m("lumo.execute.state")->setValue(nullptr, "idle");
            bench_.click(button);
            answer("不保存");
            QVERIFY(dialog() && lines() == 4);  // nothing is lost until another project is there
            QCOMPARE(test::contentOf(file_), project_);
            delete dialog();
            bench_.click(button);
            answer("保存");
            QVERIFY(dialog() && !box());
            QCOMPARE(test::json(test::contentOf(file_)).toArray().size(), 5);  // and the tool set
        }
    }

    void leaving_asksButNeverDuringARun() {
        openProject();
        QVERIFY(bench_.page->askToLeave() && !box());
        edit();
        QVERIFY(bench_.page->property("unsaved").toBool());
        QSignalSpy leaves(bench_.page.get(), &LumoWidget::mayLeave);
        for (const auto& [text, count] : {std::pair("取消", 0), {"不保存", 1}, {"保存", 2}}) {
            QVERIFY(!bench_.page->askToLeave());
            answer(text);
            QCOMPARE(leaves.count(), count);
        }
        QVERIFY(bench_.page->askToLeave());
        edit();
        m("lumo.execute.state")->setValue(nullptr, "busy");
        QVERIFY(bench_.page->askToLeave() && !box());
    }

    void aFileThatCannotBeWritten_cancels() {
        openProject();
        edit();
        QFile::remove(file_);
        QVERIFY(QDir().mkdir(file_));
        bench_.click("btnNew");
        answer("保存");
        QVERIFY(!nameDialog() && lines() == 3 && bench_.problems.size() == 1);
    }

    void aProgramWithoutFile_isAskedAboutAndKept() {
        bench_.renew();
        lumo_recovery = true;
        bench_.load("delay 1");  // by the host: nothing to ask
        QVERIFY(bench_.page->askToLeave());
        edit();
        pass();
        QVERIFY(exists("lumo_unsaved.json.recovery"));
        QSignalSpy leaves(bench_.page.get(), &LumoWidget::mayLeave);
        for (const bool ok : {false, true}) {
            QVERIFY(!bench_.page->askToLeave());
            QVERIFY(asked().startsWith("程序有未保存的更改。"));
            answer("保存");
            QVERIFY(nameDialog());
            QTest::keyClicks(nameDialog()->findChild<QLineEdit*>(), "saved");
            test::click(test::button(nameDialog(), ok ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel));
            bench_.time.settle();
            QCOMPARE(leaves.count(), ok ? 1 : 0);
            QCOMPARE(exists("saved.json"), ok);
        }
        QVERIFY(!exists("lumo_unsaved.json.recovery"));
    }

    void recoveryFile_isThereWhileSomethingIsUnsaved() {
        openProject();
        QVERIFY(!exists(kept_));
        edit();
        pass(1900);
        QVERIFY(!exists(kept_));
        pass(200);
        const QByteArray first = test::contentOf(kept_);
        QVERIFY(first.contains("edited"));
        bench_.page->update();
        pass();
        QCOMPARE(test::contentOf(kept_), first);
        History::instance()->go(History::Way::Undo);
        pass();
        QVERIFY(!exists(kept_));
        History::instance()->go(History::Way::Redo);
        m("lumo.execute.state")->setValue(nullptr, "busy");
        pass(10000);
        QVERIFY(!exists(kept_));  // not during a run
        m("lumo.execute.state")->setValue(nullptr, "idle");
        pass();
        QVERIFY(exists(kept_));
        QApplication::setActiveWindow(bench_.page->window());
        QTest::keyClick(bench_.page.get(), Qt::Key_S, Qt::ControlModifier);
        QVERIFY(!exists(kept_));
        QVERIFY(!bench_.page->property("unsaved").toBool());
        // Discarded: not kept at the end either, until the next edit.
        test::closeBoxes();
        edit();
        pass();
        QVERIFY(!bench_.page->askToLeave());
        answer("不保存");
        emit QCoreApplication::instance()->aboutToQuit({});
        QVERIFY(!exists(kept_));
        edit();
        emit QCoreApplication::instance()->aboutToQuit({});
        QVERIFY(exists(kept_));
    }

    void recoveryFile_isNoBusinessOfOtherHosts() {
        openProject();
        lumo_recovery = false;
        edit();
        pass();
        emit QCoreApplication::instance()->aboutToQuit({});
        QVERIFY(!exists(kept_));
        test::writeFile(kept_, "{}");
        crash();
        bench_.openFile(file_);
        QVERIFY(!box() && exists(kept_));
    }

    void aFaultIsToldOnce() {
        openProject();
        QVERIFY(QDir().mkdir(kept_) && QDir().mkpath(older_ + "/full"));
        for (int i = 0; i < 3; ++i) {
            edit();
            pass();
        }
        QCOMPARE(bench_.problems.size(), 1);
        QVERIFY(lines() == 5 && exists(kept_));
    }

    void afterACrash_itIsOffered() {
        openProject();
        edit("one");
        edit("two");
        pass();
        const QByteArray text = test::contentOf(kept_);
        crash();
        const QString question = asked();
        QVERIFY2(question.contains("“seam” 有未保存的更改") && question.contains("更改了 2 行") &&
                     question.endsWith("|恢复|放弃|以后再说"),
                 qPrintable(question));
        answer("恢复");
        QVERIFY(lines() == 4 && bench_.shownProject() == "seam" && exists(kept_));
        QVERIFY(bench_.page->property("unsaved").toBool());
        bench_.click("btnSave");
        QVERIFY(!exists(kept_) && m("lumo.program.#3.note")->getString() == "two");

        // Offered when it is opened; later, it gives way to a new one.
        test::closeBoxes();
        test::writeFile(kept_, text);
        test::writeFile(file_, project_);
        bench_.load("");
        bench_.page->askToLeave();
        test::closeBoxes();
        QFile::remove(kept_);
        crash();
        test::writeFile(kept_, text);
        bench_.openFile(file_);
        QVERIFY(asked().contains("更改了 2 行"));
        answer("以后再说");
        QVERIFY(lines() == 2 && test::contentOf(kept_) == text);
        edit("three");
        pass();
        QVERIFY(test::contentOf(older_) == text && test::contentOf(kept_).contains("three"));
        crash();
        answer("放弃");
        QVERIFY(asked().contains("更改了 2 行") && !exists(kept_) && lines() == 0);
        answer("恢复");
        QCOMPARE(lines(), 4);
        edit();
        pass();
        QVERIFY(exists(kept_) && !exists(older_));
    }

    void whatDoesNotFit_isHandledWithSense() {
        openProject();
        edit();
        pass();
        const QByteArray text = test::contentOf(kept_);
        // The project was changed after it.
        test::writeFile(file_, "[{\"type\":\"close\"}]");
        crash();
        QVERIFY(asked().contains("工程文件在那之后又被更改"));
        QCOMPARE(box()->defaultButton()->text(), "以后再说");
        test::closeBoxes();
        // It holds what was saved.
        bench_.page->askToLeave();
        QJsonArray saved = QJsonDocument::fromJson(text).object()["program"].toArray();
        test::writeFile(file_, QJsonDocument(saved).toJson());
        crash();
        QVERIFY(!box() && !exists(kept_));
        // It is damaged: told once.
        for (const QByteArray& damaged : {text.left(100), QByteArray("{}"), QByteArray()}) {
            test::writeFile(kept_, damaged);
            crash();
            QVERIFY(asked().contains("恢复文件已损坏") && exists(kept_ + ".damaged") && !exists(kept_));
            test::closeBoxes();
            crash();
            QVERIFY(!box());
        }
        // The project is gone: it comes back.
        QFile::remove(file_);
        test::writeFile(kept_, text);
        crash();
        answer("恢复");
        QCOMPARE(lines(), 3);
        bench_.click("btnSave");
        QVERIFY(exists(file_) && !exists(kept_));
    }
};

LUMO_TEST(TestUnsaved)
#include "test_unsaved.moc"
