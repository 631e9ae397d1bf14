#include "fuzz/fuzz.h"
#include "support/suite.h"
#include "support/text.h"

#include <QDir>

/// The inputs that reach most, and those that once broke something, each saved and read again too.
class TestCorpus : public QObject {
    Q_OBJECT
private slots:
    void inputOfAFuzzer_breaksNothing_data() {
        QTest::addColumn<QString>("target");
        for (const QString& target : fuzz::targets())
            QTest::addRow("%s", qPrintable(target)) << target;
    }
    void inputOfAFuzzer_breaksNothing() {
        QFETCH(QString, target);
        fuzz::saveAll();
        int inputs = 0;
        for (const char* kind : {"corpus", "findings"}) {
            const QDir folder(QStringLiteral(FUZZ_INPUTS "/%1/%2").arg(kind, target));
            for (const QString& name : folder.entryList(QDir::Files)) {
                fuzz::read(target, test::contentOf(folder.filePath(name)));
                ++inputs;
            }
        }
        QVERIFY(inputs > 1);
    }
};

LUMO_TEST(TestCorpus)
#include "test_corpus.moc"
