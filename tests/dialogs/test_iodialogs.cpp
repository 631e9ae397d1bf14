// The output and the wait-input dialog: what they offer, show and store.

#include "dialogs/dialogsupport.h"
#include "editor/setdodialog.h"
#include "editor/waitdidialog.h"
#include "support/executorbench.h"

#include <QComboBox>
#include <QJsonArray>
#include <QRadioButton>
#include <QTest>

using test::child;

class TestIoDialogs : public QObject {
    Q_OBJECT

    test::ExecutorBench bench_;

    static std::unique_ptr<IoDialog> dialogFor(bool output, ModuleObject* statement) {
        if (output) {
            return std::make_unique<SetDODialog>(statement);
        }
        return std::make_unique<WaitDIDialog>(statement);
    }

    /// The dialog's widgets are named alike, with the direction in the name.
    static QString named(bool output, const char* pattern) {
        return QString::fromLatin1(pattern)
            .replace(QLatin1String("%1"), QLatin1String(output ? "DO" : "DI"))
            .replace(QLatin1String("%2"), QLatin1String(output ? "Out" : "In"));
    }

    static QComboBox* combo(const QWidget* dialog, bool output, const char* pattern) {
        return child<QComboBox>(dialog, named(output, pattern).toLatin1());
    }

    static QStringList items(const QComboBox* combo) {
        QStringList texts;
        for (int i = 0; i < combo->count(); ++i) {
            texts << combo->itemText(i);
        }
        return texts;
    }

private slots:
    void init() {
        bench_.reset();
        ModuleObject* io = kordservice()->dataNode(QStringLiteral("device.io"));
        io->loadJson(this, test::object(R"({"DI":{"DI1":false,"DI2":true},"DO":{"DO1":false,"DO2":false}})"));
        m(QStringLiteral("rova.robot.register._list"))
            ->loadJson(this, QJsonDocument::fromJson(R"([
                {"name":"OUT_BITS","type":"bit","rw":"rdwr","len":4}, {"name":"OUT_BOOL","type":"bool","rw":"rdwr"},
                {"name":"OUT_INT","type":"int","rw":"rdwr","len":4},  {"name":"WRITE_ONLY","type":"bit","rw":"wr"},
                {"name":"IN_BITS","type":"bit","rw":"rd","len":3},    {"name":"IN_BOOL","type":"bool","rw":"rd"},
                {"name":"IN_INT","type":"int","rw":"rd"},             {"name":"NAMELESS_KIND"}])")
                                 .array());
    }

    void offers_data() {
        QTest::addColumn<bool>("output");
        QTest::addColumn<QStringList>("signals_");
        QTest::addColumn<QStringList>("registers");
        QTest::newRow("output") << true << QStringList{"DO1", "DO2"} << QStringList{"OUT_BITS", "OUT_BOOL"};
        QTest::newRow("input") << false << QStringList{"DI1", "DI2"} << QStringList{"IN_BITS", "IN_BOOL"};
    }

    void offers() {
        QFETCH(bool, output);
        const auto statement = test::node("{}");
        const auto dialog = dialogFor(output, statement.get());
        QTEST(items(combo(dialog.get(), output, "cmb%1")), "signals_");
        QTEST(items(combo(dialog.get(), output, "cmb%1Reg")), "registers");
        QCOMPARE(items(combo(dialog.get(), output, "cmbValue")), QStringList({"false", "true"}));
    }

    void elements_followTheRegister() {
        const auto statement = test::node(R"({"DO_type":"register","DO_reg":{"name":"OUT_BITS","bias":2}})");
        SetDODialog dialog(statement.get());
        dialog.open();
        auto* elements = child<QComboBox>(&dialog, "cmbDORegBias");
        QCOMPARE(items(elements), QStringList({"1", "2", "3", "4"}));
        QCOMPARE(elements->currentText(), QString("3"));
        QTest::keyClick(child<QComboBox>(&dialog, "cmbDOReg"), Qt::Key_Down);
        QCOMPARE(items(elements), QStringList{"1"});
        QCOMPARE(elements->currentText(), QString("1"));
    }

    void source_showsItsWidgets_data() {
        QTest::addColumn<bool>("output");
        QTest::addColumn<QByteArray>("kind");
        QTest::addColumn<bool>("io");
        for (const bool output : {true, false}) {
            const QByteArray twin = output ? "output " : "input ";
            QTest::newRow(twin + "IO") << output << QByteArray("\"IO\"") << true;
            QTest::newRow(twin + "register") << output << QByteArray("\"register\"") << false;
            QTest::newRow(twin + "another language's word") << output << QByteArray("\"Регистр\"") << false;
            QTest::newRow(twin + "nothing stored") << output << QByteArray("null") << false;
        }
    }

    void source_showsItsWidgets() {
        QFETCH(bool, output);
        QFETCH(QByteArray, kind);
        QFETCH(bool, io);
        const auto statement = test::node((output ? "{\"DO_type\":" : "{\"DI_type\":") + kind + "}");
        const auto dialog = dialogFor(output, statement.get());
        dialog->open();
        const auto shows = [&](const char* pattern) {
            return child(dialog.get(), named(output, pattern).toLatin1())->isVisible();
        };
        for (const bool ioNow : {io, !io}) {
            test::click(child(dialog.get(), named(output, ioNow ? "rdbIO%2" : "rdbReg%2").toLatin1()));
            QCOMPARE(shows("label_2") && shows("cmb%1"), ioNow);
            QCOMPARE(shows("lbl%1Reg") || shows("cmb%1Reg") || shows("cmb%1RegBias"), !ioNow);
        }
        // The first click above changed nothing when the right source was chosen at the beginning.
        const auto fresh = dialogFor(output, statement.get());
        fresh->open();
        QCOMPARE(child(fresh.get(), named(output, "cmb%1").toLatin1())->isVisible(), io);
        QCOMPARE(child(fresh.get(), named(output, "cmb%1Reg").toLatin1())->isVisible(), !io);
    }

    void untouched_storesWhatWasThere_data() {
        QTest::addColumn<bool>("output");
        QTest::addColumn<QByteArray>("record");
        QTest::newRow("output") << true << QByteArray(R"({"doName":"DO2","value":"true","DO_type":"IO",
                              "DO_reg":{"name":"OUT_BITS","bias":3,"type":"bit"}})");
        QTest::newRow("output, register")
            << true << QByteArray(R"({"doName":"DO1","value":"false","DO_type":"register",
                              "DO_reg":{"name":"OUT_BOOL","bias":0,"type":"bool"}})");
        QTest::newRow("a signal and a register that this robot lacks")
            << true << QByteArray(R"({"doName":"DO9","value":"true","DO_type":"register",
                              "DO_reg":{"name":"GONE","bias":5,"type":"bit"}})");
        QTest::newRow("an element past the register's end")
            << true << QByteArray(R"({"doName":"DO1","value":"true","DO_type":"register",
                              "DO_reg":{"name":"OUT_BITS","bias":7,"type":"bit"}})");
        QTest::newRow("a register that is no output")
            << true << QByteArray(R"({"doName":"DO1","value":"true","DO_type":"register",
                              "DO_reg":{"name":"IN_BITS","bias":1,"type":"bit"}})");
        QTest::newRow("input") << false << QByteArray(R"({"diName":"DI2","value1":"true","DI_type":"IO",
                              "DI_reg":{"name":"IN_BITS","bias":2,"type":"bit"}})");
        QTest::newRow("input, register that this robot lacks")
            << false << QByteArray(R"({"diName":"DI7","value1":"false","DI_type":"register",
                              "DI_reg":{"name":"GONE","bias":2,"type":"bool"}})");
    }

    void untouched_storesWhatWasThere() {
        QFETCH(bool, output);
        QFETCH(QByteArray, record);
        const auto statement = test::node(record);
        const auto dialog = dialogFor(output, statement.get());
        dialog->open();
        test::clickOk(dialog.get());
        QCOMPARE(test::text(statement.get()), test::text(record));
        dialog->save(statement.get());
        QCOMPARE(test::text(statement.get()), test::text(record));
    }

    void chosen_isStored_data() {
        QTest::addColumn<bool>("output");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("output") << true << QByteArray(R"({"doName":"DO2","value":"true","DO_type":"register",
                                                  "DO_reg":{"name":"OUT_BITS","bias":2,"type":"bit"}})");
        QTest::newRow("input") << false << QByteArray(R"({"diName":"DI2","value1":"true","DI_type":"register",
                                                 "DI_reg":{"name":"IN_BITS","bias":2,"type":"bit"}})");
    }

    /// A new statement, everything chosen with the keyboard.
    void chosen_isStored() {
        QFETCH(bool, output);
        QFETCH(QByteArray, expected);
        const auto statement = test::node(output ? R"({"DO_type":"IO"})" : R"({"DI_type":"IO"})");
        const auto dialog = dialogFor(output, statement.get());
        dialog->open();
        QTest::keyClick(combo(dialog.get(), output, "cmb%1"), Qt::Key_Down);
        QTest::keyClick(combo(dialog.get(), output, "cmbValue"), Qt::Key_Down);
        test::click(child(dialog.get(), named(output, "rdbReg%2").toLatin1()));
        QTest::keyClick(combo(dialog.get(), output, "cmb%1RegBias"), Qt::Key_3);
        dialog->save(statement.get());
        QCOMPARE(test::text(statement.get()), test::text(expected));
    }

    void robotWithoutSignals_storesEmptyNames() {
        kordservice()->dataNode(QStringLiteral("device.io"))->loadJson(this, test::object(R"({"DO":{}})"));
        m(QStringLiteral("rova.robot.register._list"))->loadJson(this, QJsonArray());
        const auto statement = test::node(R"({"DO_type":"IO"})");
        SetDODialog dialog(statement.get());
        dialog.save(statement.get());
        QCOMPARE(test::text(statement.get()),
                 test::text(QByteArray(R"({"doName":"","value":"false","DO_type":"IO",
                                           "DO_reg":{"name":"","bias":0,"type":""}})")));
    }
};

LUMO_TEST_MAIN(TestIoDialogs)
#include "test_iodialogs.moc"
