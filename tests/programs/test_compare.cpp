#include "support/suite.h"
#include "tool/tracecompare.h"

/// The comparison of traces, which every case of a whole program trusts.
class TestCompare : public QObject {
    Q_OBJECT

private slots:
    void linesOfOtherKinds_areLeftOutButWhatIsNoTrace() {
        const QByteArrayList lines{R"({"t":0,"kind":"log"})", R"({"t":1,"kind":"output"})", "broken",
                                   R"({"t":2,"kind":"done"})"};
        QCOMPARE(linesOfKinds(lines.join('\n') + '\n', {"output", "done"}), lines.mid(1));
    }

    void everyDifference_isTold() {
        const QByteArray first = "The traces differ first in line ";
        QCOMPARE(compareTraces({"a", "b"}, {"a", "b"}), QByteArray());
        QCOMPARE(compareTraces({"a", "b", "c"}, {"a", "b ", "c"}), first + "2.\n  a\n- b\n- c\n+ b \n+ c\n");
        QCOMPARE(compareTraces({"a", "b"}, {"b", "a"}), first + "1.\n  (end)\n- a\n- b\n+ b\n+ a\n");
        QCOMPARE(compareTraces({"a", "b"}, {"a"}), first + "2.\n  a\n- b\n+ (end)\n");
        QCOMPARE(compareTraces({"a"}, {"a", "b"}), first + "2.\n  a\n- (end)\n+ b\n");
    }
};

LUMO_TEST(TestCompare)
#include "test_compare.moc"
