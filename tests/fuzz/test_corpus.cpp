#include "fuzz/fuzz.h"
#include "support/suite.h"
#include "support/text.h"

#include <QDirIterator>

/// The inputs that reach most, and those that once broke something, each saved and read again too.
class TestCorpus : public QObject {
    Q_OBJECT
private slots:
    void inputOfAFuzzer_breaksNothing() {
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
        QCOMPARE(inputs.size(), 6);
        QVERIFY(std::all_of(inputs.begin(), inputs.end(), [](int count) { return count > 1; }));
    }
};

LUMO_TEST(TestCorpus)
#include "test_corpus.moc"
