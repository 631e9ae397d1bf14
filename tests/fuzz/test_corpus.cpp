#include "fuzz/fuzz.h"
#include "support/suite.h"
#include "support/text.h"

#include <QDirIterator>

/// Reads the corpus and all former findings; each is also saved and read again.
class TestCorpus : public QObject {
    Q_OBJECT
private slots:
    void everyInput_isReadWithoutFault() {
        fuzz::shareSaved = 1;
        QMap<QString, int> inputs;
        for (const char* folder : {FUZZ_INPUTS "/corpus", FUZZ_INPUTS "/findings"}) {
            for (QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories); files.hasNext();) {
                const QString target = QFileInfo(files.next()).dir().dirName();
                qInfo("%s", qPrintable(files.filePath()));
                fuzz::read(target, test::contentOf(files.filePath()));
                ++inputs[target];
            }
        }
        QCOMPARE(inputs.size(), 9);
        QVERIFY(std::all_of(inputs.begin(), inputs.end(), [](int count) { return count > 1; }));
    }
};

LUMO_TEST(TestCorpus)
#include "test_corpus.moc"
