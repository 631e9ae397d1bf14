// Every dialog is answered once, whichever way the operator takes, and looks like a dialog of the panel.

#include "dialogs/dialogsupport.h"
#include "editor/delaydialog.h"
#include "editor/selectparamdialog.h"
#include "editor/setdodialog.h"
#include "editor/updatespeeddialog.h"
#include "editor/updateturningparamdialog.h"
#include "editor/waitdidialog.h"
#include "mendo/log.h"
#include "params/addparamdialog.h"
#include "params/paramvaluesdialog.h"
#include "support/executorbench.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

#include <functional>

namespace {

struct Kind {
    std::function<AnswerDialog*(ModuleObject*, QWidget*)> make;
    const char* answer;
    bool closesItself;
};

template <typename Dialog>
AnswerDialog* onStatement(ModuleObject* statement, QWidget* parent) {
    return new Dialog(statement, parent);
}

template <typename Dialog>
AnswerDialog* onRows(ModuleObject*, QWidget* parent) {
    return new Dialog(m(QStringLiteral("lumo.program")), {}, parent);
}

AnswerDialog* openForm(ModuleObject* statement, QWidget* parent) {
    auto* dialog = new SelectParamDialog(statement, parent);
    dialog->setbeginOrparam(1);
    return dialog;
}

AnswerDialog* nameDialog(ModuleObject*, QWidget* parent) {
    return new AddParamDialog(parent);
}

const QMap<QByteArray, Kind> kinds{
    {"SetDODialog", {onStatement<SetDODialog>, SIGNAL(signalIsok(bool)), true}},
    {"WaitDIDialog", {onStatement<WaitDIDialog>, SIGNAL(signalIsok(bool)), true}},
    {"SelectParamDialog", {openForm, SIGNAL(signalSelectParamIsok(bool)), false}},
    {"DelayDialog", {onStatement<DelayDialog>, SIGNAL(signaldelayIsok(bool)), false}},
    {"UpdateSpeedDialog", {onRows<UpdateSpeedDialog>, SIGNAL(signalUpdateSpeedIsok(bool)), false}},
    {"UpdateTurningParamDialog",
     {onRows<UpdateTurningParamDialog>, SIGNAL(signalUpdateturningIsok(bool)), false}},
    {"AddParamDialog", {nameDialog, SIGNAL(signalAddParamIsok(bool)), true}},
    {"ParamValuesDialog", {onStatement<ParamValuesDialog>, SIGNAL(signalParamValuesIsok(bool)), true}},
};

const QMap<QByteArray, std::function<void(QDialog*)>> ways{
    {"OK", [](QDialog* dialog) { test::clickOk(dialog); }},
    {"Cancel", [](QDialog* dialog) { test::click(test::button(dialog, QDialogButtonBox::Cancel)); }},
    {"Return", [](QDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Return); }},
    {"Escape", [](QDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); }},
    {"close", [](QDialog* dialog) { dialog->close(); }},
};

}  // namespace

class TestAnswers : public QObject {
    Q_OBJECT

    test::ExecutorBench bench_;
    QWidget window_;

private slots:
    void initTestCase() {
        window_.resize(800, 600);
        window_.show();
    }

    void init() { bench_.reset(); }

    void answersOnce_data() {
        QTest::addColumn<QByteArray>("dialog");
        QTest::addColumn<QByteArray>("way");
        for (auto kind = kinds.begin(); kind != kinds.end(); ++kind) {
            for (auto way = ways.begin(); way != ways.end(); ++way) {
                QTest::newRow(kind.key() + " " + way.key()) << kind.key() << way.key();
            }
        }
    }

    void answersOnce() {
        QFETCH(QByteArray, dialog);
        QFETCH(QByteArray, way);
        const Kind kind = kinds[dialog];
        const auto statement = test::node(R"({"delaytime":500,"weldspeed":20,"DO_type":"IO"})");
        const std::unique_ptr<AnswerDialog> shown(kind.make(statement.get(), &window_));
        QSignalSpy answers(shown.get(), kind.answer);
        QStringList lines;
        connect(mendo::LogHub::instance(), &mendo::LogHub::line, shown.get(),
                [&lines](const QString& level, const QString& text) { lines << level + ' ' + text; });
        shown->open();
        if (auto* const line = shown->findChild<QLineEdit*>(); line && line->text().isEmpty()) {
            line->setText("5");
        }

        const bool ok = way == "OK" || way == "Return";
        ways[way](shown.get());
        QCOMPARE(answers.count(), 1);
        QCOMPARE(answers[0][0].toBool(), ok);
        QCOMPARE(lines, QStringList{QStringLiteral("W %1::%1  QDialogButtonBox::%2")
                                        .arg(QString::fromLatin1(dialog), ok ? "Ok" : "Cancel")});
        QCOMPARE(shown->isVisible(), !kind.closesItself && way != "close");

        for (const auto& again : ways) {
            again(shown.get());
        }
        QCOMPARE(answers.count(), 1);
    }

    void shownAnew_isAnsweredAnew() {
        AddParamDialog dialog(&window_);
        QSignalSpy answers(&dialog, &AddParamDialog::signalAddParamIsok);
        for (const bool ok : {false, true}) {
            dialog.open();
            ok ? dialog.accept() : dialog.reject();
            QCOMPARE(answers.takeLast()[0].toBool(), ok);
        }
    }

    void looks_data() {
        QTest::addColumn<QByteArray>("dialog");
        for (auto kind = kinds.begin(); kind != kinds.end(); ++kind) {
            QTest::newRow(kind.key()) << kind.key();
        }
    }

    void looks() {
        QFETCH(QByteArray, dialog);
        const auto statement = test::node(R"({"name":"a name that is longer than any dialog can be wide, )"
                                          R"(written by somebody who has much to say about one weld"})");
        const std::unique_ptr<AnswerDialog> shown(kinds[dialog].make(statement.get(), &window_));
        shown->open();
        QVERIFY(shown->windowFlags().testFlag(Qt::FramelessWindowHint));
        QVERIFY(shown->windowFlags().testFlag(Qt::BypassWindowManagerHint));
        const QString selector =
            dialog == "UpdateTurningParamDialog" ? "QDialog#UpdateTurningParamDialog" : "QDialog";
        QCOMPARE(shown->styleSheet(), selector + "{border: 4px solid #CCCCCC;}");
        QCOMPARE(shown->grab().toImage().pixelColor(1, shown->height() / 2), QColor(0xCC, 0xCC, 0xCC));
        QVERIFY(shown->width() <= 1024 && shown->height() <= 768);
        for (const auto which : {QDialogButtonBox::Ok, QDialogButtonBox::Cancel}) {
            QVERIFY(test::button(shown.get(), which)->height() >= 48);
        }
    }
};

LUMO_TEST_MAIN(TestAnswers)
#include "test_answers.moc"
