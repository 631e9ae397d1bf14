#include "binding/switchbutton.h"
#include "simulator/virtualtime.h"
#include "support/suite.h"

#include <QSignalSpy>

/// The switch: how its knob slides, what it reports, how it is drawn.
class TestSwitchButton : public QObject {
    Q_OBJECT

    /// Presses it; where its knob is then, every 30 ms.
    static QString press(SwitchButton& button, int steps = 0) {
        QTest::mousePress(&button, Qt::LeftButton);
        QString positions;
        for (int i = 0; i < steps; ++i) {
            sim::VirtualTime::instance()->advance(30);
            positions += QString::number(button.startX()) + ' ';
        }
        return positions;
    }

private slots:
    void knob_slidesToItsEndAndBack_andPressesAloneAreReported() {
        SwitchButton button;
        QSignalSpy reports(&button, &SwitchButton::statusChanged);
        button.resize(100, 25);
        const int timers = sim::VirtualTime::instance()->armedTimers();
        QCOMPARE(press(button, 10), "10 20 30 40 50 60 70 80 75 75 ");
        QCOMPARE(sim::VirtualTime::instance()->armedTimers(), timers);
        QCOMPARE(press(button, 3), "65 55 45 ");
        QCOMPARE(press(button, 4), "55 65 75 75 ");
        QCOMPARE(reports.count(), 3);
        QVERIFY(reports[0][0].toBool() && !reports[1][0].toBool());
        button.setEnabled(false);
        press(button);
        button.setChecked(true);
        QCOMPARE(reports.count(), 3);
        button.setEnabled(true);
        button.setAnimation(false);
        press(button);
        QCOMPARE(button.startX(), 0);
    }

    /// A text longer than the free part of the track is set smaller, not hidden under the knob.
    void coloursTellTheState_andTheTextIsBesideTheKnob() {
        for (const bool on : {true, false}) {
            SwitchButton button;
            button.resize(110, 48);
            button.setTextOn("Enabled");
            button.setTextOff("Disabled");
            button.setTextColor(Qt::black);
            button.setBgColorOn(Qt::green);
            button.setBgColorOff(Qt::red);
            button.setChecked(on);
            button.show();
            button.resize(100, 48);
            QCOMPARE(button.startX(), on ? 52 : 0);  // the knob went along
            const QImage image = button.grab().toImage();
            QCOMPARE(image.pixelColor(50, 1), QColor(on ? Qt::green : Qt::red));
            QString dark;
            for (int x = 0; x < 100; ++x) {
                dark += image.pixelColor(x, 20).lightness() < 60 ? 'x' : ' ';
            }
            QVERIFY(dark.contains('x') && !dark.mid(on ? 54 : 0, 46).contains('x'));
        }
    }
};

LUMO_TEST(TestSwitchButton)
#include "test_switchbutton.moc"
