#include "look/flick.h"
#include "support/suite.h"

#include <QListWidget>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QScroller>
#include <QTest>

/// A list that a finger drags.
class LookFlick : public QObject {
    Q_OBJECT

    static void pressAndDrag(QWidget* widget, int byPx) {
        const QPoint from(20, 150);
        QTest::mousePress(widget, Qt::LeftButton, {}, from);
        for (int step = 1; step <= 10; ++step) {
            const QPoint at = from + QPoint(0, byPx * step / 10);
            QMouseEvent move(QEvent::MouseMove, at, widget->mapToGlobal(at), Qt::NoButton, Qt::LeftButton,
                             {});
            QCoreApplication::sendEvent(widget, &move);
        }
    }

private slots:
    /// In the tree of a page, made after it, as a dialog's list is.
    void drag_scrollsByThePixelAndSelectsNothing() {
        QWidget page;
        look::letFlickIn(&page);
        QListWidget list(&page);
        list.resize(200, 200);
        for (int row = 0; row < 100; ++row) {
            list.addItem(QString::number(row));
        }
        list.setCurrentRow(3);
        page.resize(300, 300);
        page.show();
        QWidget* const viewport = list.viewport();
        QVERIFY(QScroller::hasScroller(viewport));

        pressAndDrag(viewport, -100);
        const int line = list.visualItemRect(list.item(0)).height();
        QTRY_VERIFY(list.verticalScrollBar()->value() > line);  // with the next frame
        QVERIFY(list.verticalScrollBar()->value() <= 100);
        QScroller::scroller(viewport)->stop();
        QTest::mouseRelease(viewport, Qt::LeftButton, {}, QPoint(20, 50));
        QCOMPARE(list.currentRow(), 3);

        list.verticalScrollBar()->setValue(0);
        QTest::mouseClick(viewport, Qt::LeftButton, {}, list.visualItemRect(list.item(1)).center());
        QCOMPARE(list.currentRow(), 1);
    }

    void textThatIsEdited_isSelectedByADrag() {
        QPlainTextEdit text(QStringLiteral("one two three\nfour\nfive\nsix\nseven\neight\nnine\nten"));
        look::letFlick(&text);
        QVERIFY(!QScroller::hasScroller(text.viewport()));
        text.setReadOnly(true);
        look::letFlick(&text);
        QVERIFY(QScroller::hasScroller(text.viewport()));
    }
};

LUMO_TEST_ON(LookFlick, test::onWallClock)

#include "test_flick.moc"
