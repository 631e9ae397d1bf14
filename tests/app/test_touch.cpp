#include "app/menu/menutools.h"
#include "app/preferences.h"
#include "app/touch/dialogplace.h"
#include "app/touch/keyboard.h"
#include "app/touch/numberpad.h"
#include "app/touch/pinyin.h"
#include "panelfixture.h"

#include <QTextEdit>

using app::DialogPlace;

/// Number pad and keyboard at fields of the package.
class AppTouch : public test::PanelTest {
    Q_OBJECT

    template <typename Keys>
    static Keys* keys() {
        for (QWidget* const widget : QApplication::allWidgets()) {
            auto* const found = qobject_cast<Keys*>(widget);
            if (found && found->isVisible()) {
                return found;
            }
        }
        return nullptr;
    }
    static bool hasPad() { return keys<app::NumberPad>(); }
    static bool hasKeyboard() { return keys<app::Keyboard>(); }
    void tap(QWidget* widget) const {
        test::click(widget);
        pass(0);
    }
    static void press(const QWidget* on, const QString& key) {
        auto* const button = on->findChild<QAbstractButton*>(key);
        QVERIFY2(button && button->isVisible() && button->isEnabled(), qPrintable(key));
        test::click(button);
        pass(0);
    }
    static void pressAll(const QString& keysOfPad) {
        for (const QString& key : keysOfPad.split(' ', Qt::SkipEmptyParts)) {
            press(keys<app::NumberPad>(), "pad_" + key);
        }
    }
    /// Types letters on the visible keys that write them.
    static void write(const QString& text) {
        for (const QChar letter : text) {
            QAbstractButton* key = nullptr;
            for (auto* const button : keys<app::Keyboard>()->findChildren<QAbstractButton*>()) {
                key = button->isVisible() && button->property("letter") == letter ? button : key;
            }
            QVERIFY2(key, qPrintable(QString(letter)));
            test::click(key);
            pass(0);
        }
    }
    /// Opens the page of a line that moves.
    void editLine(int row) const {
        const auto* const editor = find<QWidget>("ProgramWidget");
        auto* const table = test::child<QTableWidget>(editor, "tableWidget");
        test::clickCell(table, row, 2);
        test::click(test::child(editor, "btnEdit"));
        pass(0);
    }
    static QRect onScreen(const QWidget* widget) { return {widget->mapToGlobal({}), widget->size()}; }

private slots:
    void init() {
        openSample();
        window()->activateWindow();
        pass(0);
        editLine(3);  // a straight weld at 15 mm/s to X 480 mm
    }
    void cleanup() {
        if (hasPad()) {
            press(keys<app::NumberPad>(), "btnPadCancel");
        }
        click("cancelBtn");
        pass(0);
        if (auto* const dialog = test::shown()) {
            dialog->close();
        }
        QVERIFY(!hasPad() && !hasKeyboard());
    }

    void pad_typesByTheRulesOfItsField_data() {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("taken");
        QTest::addColumn<QString>("disabled");
        const struct {
            const char *field, *keys, *typed;
            bool taken;
            const char* disabled;
        } rows[] = {{"lineEditSpeed", "", "15", true, "point minus before"},
                    {"lineEditSpeed", "2 5 erase", "2", true, "point minus"},
                    {"lineEditSpeed", "2 5 0", "250", false, "point minus"},
                    {"lineEditSpeed", "2 5 0 erase", "25", true, ""},
                    {"lineEditSpeed", "clear", "", false, "erase clear"},
                    {"lineEditSpeed", "2 5 0 before", "15", true, "before"},
                    {"lineEditX1", "minus 1 2 point 5", "-12.5", true, "point"},
                    {"lineEditX1", "1 2 minus", "-12", true, ""},
                    {"lineEditX1", "1 minus minus 2", "12", true, ""}};
        for (const auto& row : rows) {
            QTest::addRow("%s: %s", row.field, row.keys)
                << row.field << row.keys << row.typed << row.taken << row.disabled;
        }
    }
    void pad_typesByTheRulesOfItsField() {
        QFETCH(const QString, field);
        QFETCH(const QString, keys);
        QFETCH(const QString, typed);
        QFETCH(const bool, taken);
        QFETCH(const QString, disabled);
        auto* const line = find<QLineEdit>(field);
        const QString before = line->text();
        for (const bool accepts : {false, true}) {
            tap(line);
            pressAll(keys);
            const app::NumberPad* const pad = this->keys<app::NumberPad>();
            QVERIFY(QApplication::focusWidget() == line || line->isAncestorOf(QApplication::focusWidget()));
            const auto* const draft = line->findChild<QLineEdit*>("draft");
            QCOMPARE((draft && draft->isVisible() ? draft : line)->text(), typed);
            QCOMPARE(test::child(pad, "btnPadOk")->isEnabled(), taken);
            for (const QString& key : disabled.split(' ', Qt::SkipEmptyParts)) {
                QVERIFY2(!test::child(pad, ("pad_" + key).toLatin1())->isEnabled(), qPrintable(key));
            }
            QVERIFY(!onScreen(pad).intersects(onScreen(line)));
            press(pad, accepts && taken ? "btnPadOk" : "btnPadCancel");
            QVERIFY(!hasPad());
            QCOMPARE(line->text(), accepts && taken ? typed : before);
        }
    }

    void pad_comesByATapOnly_andGoesForGood() {
        auto* const speed = find<QLineEdit>("lineEditSpeed");
        speed->setFocus(Qt::TabFocusReason);
        pass(0);
        QVERIFY(!hasPad());
        tap(speed);
        QVERIFY(hasPad());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);  // the field has lost the focus
        pass(0);
        QVERIFY(!hasPad());
        tap(speed);
        press(keys<app::NumberPad>(), "btnPadOff");
        tap(find<QLineEdit>("lineEditTurn"));
        QVERIFY(!hasPad() && !app::Preferences::numberPad());
        click("btnMenu");
        click("btnNumberPad");
        pass(0);
        QVERIFY(app::Preferences::numberPad());
        tap(find<QLineEdit>("lineEditTurn"));
        QVERIFY(hasPad());
    }

    void pad_ofADialogLiesBesideIt() {
        click("cancelBtn");
        set("sys.power", false);
        tap(find<QWidget>("btnDelay"));
        auto* const dialog = test::shown();
        QVERIFY(dialog);
        auto* const line = test::child<QLineEdit>(dialog, "lineEdit");
        if (!hasPad()) {
            tap(line);
        }
        QVERIFY(hasPad());
        const QRect pad = onScreen(keys<app::NumberPad>());
        QVERIFY(!pad.intersects(onScreen(dialog)));
        QVERIFY(onScreen(window()).contains(pad));
        QCOMPARE(QApplication::activeModalWidget(), dialog);
        pressAll("7 5 0");
        press(keys<app::NumberPad>(), "btnPadOk");
        QCOMPARE(line->text(), "750");
        dialog->close();
        editLine(3);
    }

    void keyboard_writesLettersAndNeverCoversItsField() {
        auto* const note = find<QTextEdit>("textEditNote");
        note->clear();
        tap(note->viewport());
        QVERIFY(hasKeyboard());
        app::Keyboard* const keyboard = keys<app::Keyboard>();
        QVERIFY(!onScreen(keyboard).intersects(onScreen(note)));
        press(keyboard, "key_shift");
        write("Ab");
        press(keyboard, "key_space");
        press(keyboard, "key_digits");
        write("1&");
        press(keyboard, "key_erase");
        press(keyboard, "key_language");  // the panel is English: Russian is next
        write("щё");
        QCOMPARE(note->toPlainText(), "Ab 1щё");
        press(keyboard, "key_hide");
        QVERIFY(!hasKeyboard());
    }

    void chinese_isWrittenByPinyin() {
        if (!app::Pinyin().isReady()) {
            QSKIP("libgooglepinyin0 is not installed");
        }
        auto* const note = find<QTextEdit>("textEditNote");
        note->clear();
        tap(note->viewport());
        app::Keyboard* const keyboard = keys<app::Keyboard>();
        auto* const language = test::child<QAbstractButton>(keyboard, "key_language");
        for (int turn = 0; turn < 2 && language->text() != "中"; ++turn) {
            press(keyboard, "key_language");
        }
        write("nihao");
        QCOMPARE(note->toPlainText(), QString());
        press(keyboard, "key_space");
        write("ni");
        press(keyboard, "key_enter");  // the letters themselves
        QCOMPARE(note->toPlainText(), "你好ni");
        press(keyboard, "key_hide");
    }

    /// Keys stay inside the room and off the field; they lie beside the dialog where both have room.
    void keysAtADialog_data() {
        QTest::addColumn<QRect>("dialog");
        QTest::addColumn<QRect>("field");
        QTest::addColumn<bool>("fits");
        QTest::newRow("small") << QRect(400, 300, 360, 200) << QRect(420, 350, 100, 48) << true;
        QTest::newRow("right") << QRect(900, 300, 360, 200) << QRect(1000, 350, 100, 48) << true;
        QTest::newRow("wide") << QRect(100, 100, 1000, 600) << QRect(900, 600, 100, 48) << false;
        QTest::newRow("wide, left") << QRect(100, 100, 1000, 600) << QRect(120, 150, 100, 48) << false;
    }
    void keysAtADialog() {
        QFETCH(const QRect, dialog);
        QFETCH(const QRect, field);
        QFETCH(const bool, fits);
        const QRect room(96, 56, 1088, 704);
        const DialogPlace beside = app::keysBeside(dialog, field, {340, 600}, room);
        const DialogPlace below = app::keysBelow(dialog, field, 320, room);
        for (const DialogPlace& place : {beside, below}) {
            const QPoint moved = place.dialog - dialog.topLeft();
            QVERIFY(room.contains(place.keys));
            QVERIFY(!place.keys.intersects(field.translated(moved)));
            QVERIFY(field.translated(moved).top() >= room.top());
        }
        QCOMPARE(!beside.keys.intersects(QRect(beside.dialog, dialog.size())), fits);
    }
};

LUMO_TEST(AppTouch)

#include "test_touch.moc"
