#include "app/roles/codehash.h"
#include "app/roles/rolekeeper.h"
#include "app/sheet/sheet.h"
#include "panelfixture.h"

#include <QFileDialog>
#include <QLineEdit>

/// Operator and integrator.
class AppRoles : public test::PanelTest {
    Q_OBJECT

    app::RoleKeeper* const keeper_ = panel_->findChild<app::RoleKeeper*>();

    QString shownPage() const {
        for (const char* name :
             {"ProgramWidget", "PortConfigWidget", "SignalsBindWidget", "DeviceControlWidget"}) {
            const QWidget* const stack = find<QStackedWidget>("stackedWidget")->currentWidget();
            if (stack->inherits(name)) {
                return name;
            }
        }
        return {};
    }
    void enter(const QString& code) const {
        QVERIFY(isOpen("codeSheet"));
        for (const QChar digit : code) {
            click(QString("key_") + digit);
        }
        click("btnCodeEnter");
        pass(1000);
    }
    /// Without an event loop, sheets that were dismissed are deleted here.
    bool isOpen(const QString& name) const {
        bool open = false;
        for (const app::Sheet* sheet : window()->findChildren<app::Sheet*>()) {
            open = open || (sheet->isVisible() && sheet->objectName() == name);
            if (!sheet->isVisible()) {
                delete sheet;
            }
        }
        return open;
    }

private slots:
    void initTestCase() { openSample(); }

    /// Test vectors of PBKDF2 with HMAC-SHA-256.
    void hash_isPbkdf2() {
        const QPair<int, QByteArray> rows[] = {
            {1, "120fb6cffcf8b32c43e7225256c4f837a86548c92ccc35480805987cb70be17b"},
            {2, "ae4d0c95af6b46d32d0adff928f06dd02a303f8ef3c251dfd6e2d85a95474c43"},
            {4096, "c5e478d59288c841aa530db6845c4c8d962893a001ce4e11a4963873aa98134a"}};
        for (const auto& row : rows) {
            app::CodeHash hash("password", "salt", row.first);
            while (!hash.advance(100)) {
            }
            QCOMPARE(hash.result().toHex(), row.second);
        }
    }

    void withoutACode_allIsOpen() {
        for (const char* way : {"btnPort", "btnBind", "btnDeviceControl"}) {
            click(way);
            pass(10);
            QVERIFY2(shownPage() != "ProgramWidget", way);
        }
        click("btnProject");
    }

    void code_locksTheWaysForTheOperator() {
        QVERIFY(!find("btnRole")->isVisible());
        click("btnMenu");
        click("btnRoles");
        for (const auto& field :
             {QPair<QString, QString>("edtNewCode", "123"), {"edtNewCodeAgain", "1234"}}) {
            find<QLineEdit>(field.first)->setText(field.second);
        }
        click("btnCodeStore");
        QCOMPARE(textOf("lblNewCodeAnswer"), "The code is too short");
        find<QLineEdit>("edtNewCode")->setText("1243");
        click("btnCodeStore");
        QCOMPARE(textOf("lblNewCodeAnswer"), "The two codes differ");
        find<QLineEdit>("edtNewCode")->setText("1234");
        click("btnCodeStore");
        pass(1000);
        QVERIFY(keeper_->isIntegrator() && !isOpen("newCodeSheet") && find("btnRole")->isVisible());
        QVERIFY(!test::contentOf(app::RoleKeeper::defaultFile()).contains("1234"));
        keeper_->leave();
        for (const char* way : {"btnPort", "btnBind", "btnDeviceControl"}) {
            click(way);
            pass(10);
            QVERIFY2(shownPage() == "ProgramWidget" && isOpen("codeSheet"), way);
            QTest::keyClick(find<QWidget>(way), Qt::Key_Space);
            find(way)->click();  // as another part of the panel leads there
            pass(10);
            QVERIFY2(shownPage() == "ProgramWidget" && isOpen("codeSheet"), way);
        }
        click("btnMenu");
        click("btnRestoreBackup");
        QVERIFY(!test::shown<QFileDialog>() && isOpen("codeSheet"));
        click("btnDeviceControl");
        pass(10);
        enter("1234");
        QVERIFY(keeper_->isIntegrator() && shownPage() == "DeviceControlWidget");
    }

    /// What is on stays on; the page is left, but not under an open dialog.
    void session_endsWithoutInput() {
        robot()->setPower(true);
        for (const char* button : {"btnDeviceControl", "btnLaserControl", "btnLaserTest"}) {
            click(button);
            pass(200);
        }
        QVERIFY(robot()->output("LUMO_DO.#3").toBool());
        pass(app::RoleKeeper::sessionMs - 1000);
        QTest::keyClick(window(), Qt::Key_Shift);
        pass(2000);
        QVERIFY(keeper_->isIntegrator());
        QDialog dialog(window()->pages()->currentWidget());
        dialog.open();
        pass(app::RoleKeeper::sessionMs);
        QVERIFY(keeper_->isIntegrator());
        dialog.close();
        pass(2000);
        QVERIFY(!keeper_->isOpen() && shownPage() == "ProgramWidget");
        QVERIFY(robot()->output("LUMO_DO.#3").toBool());
        robot()->setPower(false);
    }

    void wrongCodes_slowDown() {
        click("btnRole");
        for (int i = 0; i < app::RoleKeeper::freeTries; ++i) {
            QCOMPARE(keeper_->waitMs(), 0);
            enter("9999");
        }
        QVERIFY(keeper_->waitMs() > 3000 && textOf("lblCodeAnswer").startsWith("Too many wrong codes"));
        enter("1234");
        QVERIFY(!keeper_->isOpen());
        QVERIFY(app::RoleKeeper(app::RoleKeeper::defaultFile()).waitMs() > 0);  // also after a new start
        pass(5000);
        find<QLineEdit>("edtCode")->clear();
        enter("1234");
        QVERIFY(keeper_->isIntegrator());
        keeper_->leave();
    }

    /// Without its file there is no code, which is the way out for a forgotten one. A damaged file keeps all
    /// locked.
    void codeFile_deletedOpensAll() {
        const QString file = app::RoleKeeper::defaultFile();
        test::writeFile(file, "{");
        keeper_->reload();
        QVERIFY(!keeper_->isOpen());
        keeper_->check("1234");
        pass(1000);
        QVERIFY(!keeper_->isOpen() && test::contentOf(file) == "{");
        QVERIFY(QFile::remove(file));
        click("btnRole");
        QVERIFY(keeper_->isOpen());
    }
};

LUMO_TEST(AppRoles)
#include "test_roles.moc"
