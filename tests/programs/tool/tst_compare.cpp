#include "tracecompare.h"

#include <QtTest>

/// The comparison of traces, which every case of a whole program trusts.
class ProgramCompare : public QObject {
    Q_OBJECT
private slots:
    void picksKinds();
    void everyDifferenceCounts_data();
    void everyDifferenceCounts();
    void reportShowsBothSides();
};

void ProgramCompare::picksKinds() {
    const QByteArray trace =
        "{\"t\":0,\"kind\":\"log\",\"text\":\"x\"}\n{\"t\":1,\"kind\":\"output\",\"value\":1}\n"
        "broken\n{\"t\":2,\"kind\":\"done\"}\n";
    QCOMPARE(linesOfKinds(trace, {"output", "done"}),
             (QByteArrayList{"{\"t\":1,\"kind\":\"output\",\"value\":1}", "broken",
                             "{\"t\":2,\"kind\":\"done\"}"}));
}

void ProgramCompare::everyDifferenceCounts_data() {
    QTest::addColumn<QByteArrayList>("actual");
    QTest::addColumn<QByteArray>("place");
    QTest::newRow("same") << QByteArrayList{"a", "b", "c"} << QByteArray();
    QTest::newRow("other line") << QByteArrayList{"a", "x", "c"} << QByteArray("line 2");
    QTest::newRow("blank") << QByteArrayList{"a", "b ", "c"} << QByteArray("line 2");
    QTest::newRow("order") << QByteArrayList{"b", "a", "c"} << QByteArray("line 1");
    QTest::newRow("one less") << QByteArrayList{"a", "b"} << QByteArray("line 3");
    QTest::newRow("one more") << QByteArrayList{"a", "b", "c", "c"} << QByteArray("line 4");
    QTest::newRow("nothing") << QByteArrayList() << QByteArray("line 1");
}

void ProgramCompare::everyDifferenceCounts() {
    QFETCH(QByteArrayList, actual);
    QFETCH(QByteArray, place);
    const QByteArray report = compareTraces({"a", "b", "c"}, actual);
    QCOMPARE(report.isEmpty(), place.isEmpty());
    QVERIFY2(report.contains(place), report.constData());
}

void ProgramCompare::reportShowsBothSides() {
    const QByteArray report = compareTraces({"same", "left"}, {"same", "right", "more"});
    QVERIFY(report.contains("expected: left\n"));
    QVERIFY(report.contains("got:      right\n"));
    QVERIFY(
        QRegularExpression(QStringLiteral("2 left +# right\n")).match(QString::fromUtf8(report)).hasMatch());
    QVERIFY(QRegularExpression(QStringLiteral("3 \\(end\\) +# more\n"))
                .match(QString::fromUtf8(report))
                .hasMatch());
}

QTEST_GUILESS_MAIN(ProgramCompare)
#include "tst_compare.moc"
