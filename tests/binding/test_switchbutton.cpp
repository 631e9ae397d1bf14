// The switch: how its knob slides, what it reports, how it is drawn.

#include "binding/switchbutton.h"
#include "support/executorbench.h"

#include <QImage>
#include <QSignalSpy>
#include <QTest>

class TestSwitchButton : public QObject {
    Q_OBJECT

    static sim::VirtualTime& time() { return *sim::VirtualTime::instance(); }

    static void press(SwitchButton& button) { QTest::mousePress(&button, Qt::LeftButton); }

    /// Where the knob is, every 30 ms.
    static QList<int> slide(const SwitchButton& button, int steps) {
        QList<int> positions;
        for (int i = 0; i < steps; ++i) {
            time().advance(30);
            positions << button.startX();
        }
        return positions;
    }

private slots:
    void slides_data() {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QList<int>>("there");
        QTest::addColumn<QList<int>>("back");
        QTest::newRow("to its end and stays")
            << QSize(100, 30) << QList<int>{10, 20, 30, 40, 50, 60, 70, 70, 70}
            << QList<int>{60, 50, 40, 30, 20, 10, 0, 0, 0};
        QTest::newRow("past its end and snaps")
            << QSize(100, 75) << QList<int>{10, 20, 30, 25, 25} << QList<int>{15, 5, -5, 0, 0};
        QTest::newRow("too narrow for a tenth")
            << QSize(9, 6) << QList<int>{1, 2, 3, 3} << QList<int>{2, 1, 0, 0};
        QTest::newRow("square") << QSize(30, 30) << QList<int>{0, 0} << QList<int>{0, 0};
    }

    void slides() {
        QFETCH(QSize, size);
        QFETCH(QList<int>, there);
        QFETCH(QList<int>, back);
        SwitchButton button;
        button.resize(size);
        const int timers = time().armedTimers();
        press(button);
        QCOMPARE(button.startX(), 0);
        QCOMPARE(slide(button, there.size()), there);
        press(button);
        QCOMPARE(slide(button, back.size()), back);
        QCOMPARE(time().armedTimers(), timers);
    }

    void pressedWhileSliding_turnsBack() {
        SwitchButton button;
        button.resize(100, 30);
        press(button);
        QCOMPARE(slide(button, 3), QList<int>({10, 20, 30}));
        press(button);
        QCOMPARE(slide(button, 4), QList<int>({20, 10, 0, 0}));
    }

    void withoutAnimation_jumps() {
        SwitchButton button;
        button.resize(100, 30);
        button.setAnimation(false);
        press(button);
        QCOMPARE(button.startX(), 70);
        press(button);
        QCOMPARE(button.startX(), 0);
    }

    void onlyAPress_isReported() {
        SwitchButton button;
        button.resize(100, 30);
        QSignalSpy reports(&button, &SwitchButton::statusChanged);
        button.setChecked(true);
        QVERIFY(button.checked());
        QCOMPARE(reports.count(), 0);
        press(button);
        press(button);
        QCOMPARE(reports.count(), 2);
        QCOMPARE(reports[0][0].toBool(), false);
        QCOMPARE(reports[1][0].toBool(), true);
    }

    void disabled_ignoresThePress() {
        SwitchButton button;
        button.setEnabled(false);
        press(button);
        QVERIFY(!button.checked());
    }

    void knobStays_whenSetOnTheScreen_andIsRightWhenShownLater() {
        SwitchButton button;
        button.resize(100, 30);
        button.show();
        button.setChecked(true);
        QCOMPARE(button.startX(), 0);
        button.hide();
        button.show();
        QCOMPARE(button.startX(), 70);
        button.resize(150, 30);
        QCOMPARE(button.startX(), 120);
    }

    void colours_data() {
        QTest::addColumn<bool>("checked");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<QColor>("track");
        QTest::addColumn<QColor>("knob");
        QTest::newRow("on") << true << true << QColor(200, 0, 0) << QColor(0, 0, 100);
        QTest::newRow("off") << false << true << QColor(0, 200, 0) << QColor(0, 0, 200);
        // A colour that lets half of the white ground through does so only when disabled.
        QTest::newRow("on, disabled") << true << false << QColor(227, 127, 127) << QColor(0, 0, 100);
        QTest::newRow("off, disabled") << false << false << QColor(127, 227, 127) << QColor(0, 0, 200);
    }

    void colours() {
        QFETCH(bool, checked);
        SwitchButton button;
        button.resize(100, 30);
        button.setBgColorOn(QColor(200, 0, 0, 128));
        button.setBgColorOff(QColor(0, 200, 0, 128));
        button.setSliderColorOn(QColor(0, 0, 100));
        button.setSliderColorOff(QColor(0, 0, 200));
        button.setTextOn(QString());
        button.setTextOff(QString());
        button.setChecked(checked);
        QFETCH(bool, enabled);
        button.setEnabled(enabled);
        QImage image(button.size(), QImage::Format_RGB32);
        image.fill(Qt::white);
        button.render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
        QTEST(image.pixelColor(15, 15), "knob");
        QTEST(image.pixelColor(60, 1), "track");
        QCOMPARE(image.pixelColor(0, 0), QColor(Qt::white));
    }

    /// A text longer than the free part of the track is set smaller, not hidden under the knob.
    void text_isNotUnderTheKnob_data() {
        QTest::addColumn<bool>("checked");
        QTest::newRow("on") << true;
        QTest::newRow("off") << false;
    }

    void text_isNotUnderTheKnob() {
        QFETCH(bool, checked);
        SwitchButton button;
        button.setAnimation(false);
        button.resize(100, 48);
        button.setTextOn(QStringLiteral("Enabled"));
        button.setTextOff(QStringLiteral("Disabled"));
        button.setTextColor(Qt::black);
        button.setBgColorOn(Qt::white);
        button.setBgColorOff(Qt::white);
        button.setSliderColorOn(Qt::transparent);
        button.setSliderColorOff(Qt::transparent);
        if (checked) {
            press(button);
        }
        const QImage image = button.grab().toImage();
        int first = image.width();
        int last = -1;
        for (int x = 0; x < image.width(); ++x) {
            for (int y = 10; y < 38; ++y) {
                if (image.pixelColor(x, y).lightness() < 128) {
                    first = qMin(first, x);
                    last = qMax(last, x);
                }
            }
        }
        QVERIFY(last > first);
        const int knobLeft = checked ? 54 : 2;
        QVERIFY2(checked ? last < knobLeft : first >= knobLeft + 44,
                 qPrintable(QString("%1 %2").arg(first).arg(last)));
    }
};

LUMO_TEST_MAIN(TestSwitchButton)
#include "test_switchbutton.moc"
