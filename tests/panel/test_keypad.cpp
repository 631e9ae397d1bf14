#include "panel/keypad.h"

#include "kord/controllermanager.h"
#include "support/executorbench.h"

#include <QSignalSpy>
#include <QTest>

namespace {

ModuleObject* controller() {
    return kord::ControllerManager::cmdItemMobj("endtool.keypad.state_change", "notify");
}

/// The controller reports all keys whenever one changes; a key that is down as false.
void report(const QStringList& down) {
    for (ModuleObject* key : controller()->cmobjs()) {
        key->setValue(nullptr, !down.contains(key->name()));
    }
    controller()->trigger();
}

}  // namespace

/// The pendant's keys on virtual time.
class TestKeypad : public QObject {
    Q_OBJECT

    test::ExecutorBench bench_;
    std::unique_ptr<lumo::Keypad> keypad_;

    /// How often a key was clicked and how often pressed long, since the test began.
    struct Counter {
        explicit Counter(const QString& key)
            : clicked(m("lumo.keypad." + key + ".clicked"), &ModuleObject::changed),
              pressing(m("lumo.keypad." + key + ".pressing"), &ModuleObject::changed) {}
        QSignalSpy clicked;
        QSignalSpy pressing;
    };

private slots:
    void init() { keypad_ = std::make_unique<lumo::Keypad>(nullptr); }

    void cleanup() {
        report({});
        keypad_.reset();
    }

    void press_data() {
        QTest::addColumn<int>("heldMs");
        QTest::addColumn<int>("clicks");
        QTest::addColumn<int>("longPresses");
        QTest::newRow("at once") << 0 << 1 << 0;
        QTest::newRow("200 ms") << 200 << 1 << 0;
        QTest::newRow("500 ms") << 500 << 1 << 0;
        QTest::newRow("501 ms") << 501 << 0 << 0;
        QTest::newRow("1 s") << 1000 << 0 << 0;
        QTest::newRow("nearly long") << 2999 << 0 << 0;
        QTest::newRow("long") << 3000 << 0 << 1;
        QTest::newRow("let go soon after the long press") << 3100 << 0 << 1;
        QTest::newRow("long twice") << 6200 << 0 << 2;
    }

    void press() {
        QFETCH(int, heldMs);
        for (const QString& key :
             {QString("next"), QString("last"), QString("center"), QString("enter"), QString("delete")}) {
            const Counter counter(key);
            report({key});
            bench_.time.advance(heldMs);
            report({});
            bench_.time.advance(10000);
            QTEST(counter.clicked.size(), "clicks");
            QTEST(counter.pressing.size(), "longPresses");
        }
    }

    void clickAfterALongPress_counts() {
        report({"next"});
        bench_.time.advance(3500);
        report({});
        const Counter next("next");
        report({"next"});
        bench_.time.advance(100);
        report({});
        QCOMPARE(next.clicked.size(), 1);
        QVERIFY(m("lumo.keypad.next.clicked")->getBool());
    }

    void keyAtRest_doesNothing() {
        const Counter next("next");
        report({});
        bench_.time.advance(10000);
        report({});
        QCOMPARE(next.clicked.size() + next.pressing.size(), 0);
        QCOMPARE(bench_.time.armedTimers(), 0);
    }

    void reportOfAnotherKey_beginsThePressAnew() {
        const Counter next("next");
        report({"next"});
        bench_.time.advance(2000);
        report({"next", "last"});
        bench_.time.advance(2500);
        QCOMPARE(next.pressing.size(), 0);
        report({"next"});
        bench_.time.advance(100);
        report({});
        QCOMPARE(next.clicked.size(), 1);
    }

    void longPressBeforeAnotherKey_isNoClick() {
        const Counter next("next");
        report({"next"});
        bench_.time.advance(3000);
        report({"next", "last"});
        bench_.time.advance(100);
        report({});
        QCOMPARE(next.pressing.size(), 1);
        QCOMPARE(next.clicked.size(), 0);
    }

    void secondPage_doesNotDoubleTheClicks() {
        const lumo::Keypad second(nullptr);
        const Counter next("next");
        report({"next"});
        bench_.time.advance(100);
        report({});
        report({"next"});
        bench_.time.advance(3000);
        QCOMPARE(next.clicked.size(), 1);
        QCOMPARE(next.pressing.size(), 1);
    }

    void unknownKey_isIgnored() {
        controller()->set(nullptr, "stop", false);
        controller()->trigger();
        QCOMPARE(bench_.time.armedTimers(), 0);
        controller()->remove(nullptr, "stop");
    }

    void pageThatGoesAwayInAClick_isSafe() {
        connect(m("lumo.keypad.next.clicked"), &ModuleObject::changed, this, [this] { keypad_.reset(); });
        const Counter last("last");
        report({"next", "last"});
        bench_.time.advance(100);
        report({});
        m("lumo.keypad.next.clicked")->disconnect(this);
        QCOMPARE(last.clicked.size(), 0);
        QCOMPARE(bench_.time.armedTimers(), 0);
    }

    void pageThatGoesAway_letsItsKeysGo() {
        report({"next"});
        keypad_.reset();
        const Counter next("next");
        bench_.time.advance(10000);
        QCOMPARE(next.pressing.size(), 0);
    }
};

LUMO_TEST_MAIN(TestKeypad)
#include "test_keypad.moc"
