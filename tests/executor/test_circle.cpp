#include "executor/circle.h"
#include "support/suite.h"
#include "support/text.h"

#include <QSignalSpy>

/// The midpoints of a full circle as they are written into the points of a motion command.
class TestCircle : public QObject {
    Q_OBJECT
private slots:
    void midpoints_replaceTransOnlyInSinglePrecision() {
        const auto start = test::node("{'trans':[]}"), first = test::node("{'trans':[0.1]}"),
                   second = test::node("{'trans':[0,0.1,0]}");
        const auto aux = test::node("{'trans':[9,9,9],'rot':[0,0,0]}"), other = test::node("{'trans':[]}");
        calcAux(start.get(), first.get(), second.get(), other.get(), aux.get(), other.get());
        QCOMPARE(aux->exportToJson().toObject().keys(), QStringList({"rot", "trans"}));
        const ModuleObject* const half = aux->c("trans");
        QVERIFY(half->cmobjCount() == 3 && half->c(0)->getDouble() == double(float(half->c(0)->getDouble())));
        QVERIFY(qAbs(half->c(0)->getDouble() - 0.1) < 1e-6 && qAbs(half->c(1)->getDouble() - 0.1) < 1e-6);
    }

    void anglesThatDoNotFit_areLogged() {
        QSignalSpy log(mendo::LogHub::instance(), &mendo::LogHub::line);
        const auto s = test::node("{'trans':[8577.2,0.051,0]}"),
                   p1 = test::node("{'trans':[8578.107,0.267,0]}"),
                   p2 = test::node("{'trans':[8577.912,-0.587,0]}"), aux = test::node("{'trans':[]}");
        calcAux(s.get(), p1.get(), p2.get(), aux.get(), aux.get(), aux.get());
        const QRegularExpression told("^calc wrong theta: -122\\.1\\d* -249\\.7\\d* -232\\.5\\d*$");
        QVERIFY2(told.match(log.at(0).at(1).toString()).hasMatch(), qPrintable(log.at(0).at(1).toString()));
    }
};

LUMO_TEST(TestCircle)
#include "test_circle.moc"
