#include "editor/pairing.h"
#include "module/host.h"

#include <QTest>

/// Whether starts and stops of welding pair up.
class TestPairing : public QObject {
    Q_OBJECT

private slots:
    void pairs_data() {
        QTest::addColumn<QStringList>("types");
        QTest::addColumn<bool>("match");
        QTest::newRow("nothing") << QStringList() << true;
        QTest::newRow("no welding") << QStringList{"moveL", "delay"} << true;
        QTest::newRow("one seam") << QStringList{"open", "moveL", "close"} << true;
        QTest::newRow("two seams") << QStringList{"moveL", "open", "close", "moveL", "open", "close"} << true;
        QTest::newRow("start alone") << QStringList{"open"} << false;
        QTest::newRow("stop alone") << QStringList{"close"} << false;
        QTest::newRow("stop before start") << QStringList{"close", "open"} << false;
        QTest::newRow("nested") << QStringList{"open", "open", "close", "close"} << false;
        QTest::newRow("one stop for two") << QStringList{"open", "open", "close"} << false;
        QTest::newRow("second seam reversed") << QStringList{"open", "close", "close", "open"} << false;
        QTest::newRow("parameters are no start") << QStringList{"param", "close"} << false;
    }

    void pairs() {
        QFETCH(QStringList, types);
        ModuleObject program("program");
        for (const QString& type : types) {
            program.append(nullptr)->set(nullptr, "type", type)->set(nullptr, "execute", false);
        }
        QTEST(lumo::weldPairs(&program).match(), "match");
    }

    void positions() {
        ModuleObject program("program");
        for (const char* type : {"moveL", "open", "moveL", "close", "open"}) {
            program.append(nullptr)->set(nullptr, "type", type);
        }
        const lumo::WeldPairs pairs = lumo::weldPairs(&program);
        QCOMPARE(pairs.opens, QVector<int>({1, 4}));
        QCOMPARE(pairs.closes, QVector<int>({3}));
    }
};

QTEST_GUILESS_MAIN(TestPairing)
#include "test_pairing.moc"
