#include "executor/circle.h"
#include "support/suite.h"
#include "support/text.h"

#include <QSignalSpy>

/// The midpoints of a full circle as they are written into the points of a motion command.
class TestCircle : public QObject {
    Q_OBJECT
private slots:
    void midpoints_replaceTransOnlyInSinglePrecision() {
        const auto at = [](const char* trans) {
            return test::node(QByteArray("{'trans':") + trans + ",'rot':[]}");
        };
        const auto aux = at("[9,9,9]"), other = at("[]");
        calcAux(at("[]").get(), at("[0.1]").get(), at("[0,0.1,0]").get(), other.get(), aux.get(),
                other.get());
        QCOMPARE(test::text(aux.get()), "{'rot':[],'trans':[0.10000000149011612,0.10000000149011612,0]}");
        QSignalSpy log(mendo::LogHub::instance(), &mendo::LogHub::line);
        calcAux(at("[8577.2,0.051]").get(), at("[8578.107,0.267]").get(), at("[8577.912,-0.587]").get(),
                aux.get(), aux.get(), aux.get());
        const QRegularExpression told("^calc wrong theta: -122\\.1\\d* -249\\.7\\d* -232\\.5\\d*$");
        QVERIFY2(told.match(log.at(0).at(1).toString()).hasMatch(), qPrintable(log.at(0).at(1).toString()));
    }
};

LUMO_TEST(TestCircle)
#include "test_circle.moc"
