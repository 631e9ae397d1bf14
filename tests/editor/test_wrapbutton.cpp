#include "editor/wrapbutton.h"

#include <QFontMetrics>
#include <QTest>

/// How captions find their place in narrow buttons.
class TestWrapButton : public QObject {
    Q_OBJECT

    /// Fits a caption into a button whose width is `ems` times the width of an M.
    static void place(WrapButton& button, const QString& caption, int ems) {
        button.setText(caption);
        const QFontMetrics metrics(button.font());
        button.resize(ems * metrics.horizontalAdvance(QLatin1Char('M')) + 20, 3 * metrics.height());
    }

private slots:
    void lines_data() {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<int>("ems");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("fits") << "Start Welding" << 20 << QStringList{"Start Welding"};
        QTest::newRow("between words") << "Start Welding" << 5 << QStringList{"Start", "Welding"};
        QTest::newRow("where it is narrowest") << "MM MM MMMM" << 6 << QStringList{"MM MM", "MMMM"};
        QTest::newRow("between Chinese signs")
            << "开始焊接开始焊接" << 5 << QStringList{"开始焊接", "开始焊接"};
        QTest::newRow("at a soft hyphen") << QString("MMMM\u00adMMMM") << 6 << QStringList{"MMMM-", "MMMM"};
        QTest::newRow("unused soft hyphen") << QString("MMMM\u00adMMMM") << 20 << QStringList{"MMMMMMMM"};
    }

    void lines() {
        QFETCH(QString, caption);
        QFETCH(int, ems);
        WrapButton button;
        place(button, caption, ems);
        QTEST(button.shownLines(), "lines");
        QCOMPARE(button.text(), caption);
    }

    void wordsThatAreTooLong_areSetSmaller() {
        WrapButton button;
        place(button, "MMMMMMMMMM", 11);
        const int usual = button.shownPixelSize();
        place(button, "MMMMMMMMMM", 8);
        QVERIFY(button.shownPixelSize() < usual);
        place(button, "MMMMMMMMMM", 2);
        QVERIFY(button.shownPixelSize() >= 9);
    }

    void leastWidth_isThatOfTwoLines() {
        WrapButton button;
        button.setText("Start Welding");
        QVERIFY(button.minimumSizeHint().width() < button.sizeHint().width());
        QVERIFY(button.minimumSizeHint().height() > button.sizeHint().height());
    }
};

QTEST_MAIN(TestWrapButton)
#include "test_wrapbutton.moc"
