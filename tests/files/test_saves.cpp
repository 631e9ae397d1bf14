#include "files/saving.h"
#include "files/tracedchild.h"
#include "module/host.h"
#include "support/suite.h"
#include "support/text.h"

#include <QDir>
#include <QFileInfo>

#include <cerrno>

using namespace files;

Q_DECLARE_METATYPE(Saving)
Q_DECLARE_METATYPE(Fault)

namespace {

struct Way {
    const char* name;
    Fault fault;
};
const Way ways[] = {{"EIO", {EIO, false}},     {"ENOSPC", {ENOSPC, false}}, {"EACCES", {EACCES, false}},
                    {"EINTR", {EINTR, false}}, {"EMFILE", {EMFILE, false}}, {"half the bytes", {0, true}}};

QByteArray contentOf(const Saving& saving) {
    return test::contentOf(saving.file);
}

QStringList filesBeside(const Saving& saving) {
    return QDir(QFileInfo(saving.file).path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
}

void clearFolder(const Saving& saving) {
    QDir().mkpath(QFileInfo(saving.file).path());
    for (const QString& name : filesBeside(saving)) {
        QFile::remove(QFileInfo(saving.file).dir().filePath(name));
    }
}

/// The bytes of a document's file, saved undisturbed.
QByteArray savedAs(const Saving& saving, int document) {
    clearFolder(saving);
    saving.fill(document);
    saving.save();
    return contentOf(saving);
}

/// An empty folder with this file, which may be a link.
void place(const Saving& saving, const QByteArray& content) {
    clearFolder(saving);
    test::writeFile(saving.target.isEmpty() ? saving.file : saving.target, content);
    if (!saving.target.isEmpty()) {
        QFile::link(saving.target, saving.file);
    }
}

bool keepsWhatWasTyped(const Saving& saving) {
    const QStringList names = filesBeside(saving);
    return saving.typed.isEmpty() || std::any_of(names.begin(), names.end(), [&](const QString& name) {
               return test::contentOf(QFileInfo(saving.file).dir().filePath(name)) == saving.typed;
           });
}

}  // namespace

/// A file is the old or the new one, whole, wherever a save is killed and whichever call of it fails; nothing
/// is called saved or loaded that is not, and what went wrong is told.
class TestSaves : public QObject {
    Q_OBJECT

    void rows(bool withLoad, bool withWays) const {
        QTest::addColumn<Saving>("saving");
        QTest::addColumn<Fault>("fault");
        for (const Saving& saving : savings()) {
            if (withLoad && (!saving.load || !saving.typed.isEmpty())) {
                continue;
            }
            for (const Way& way : ways) {
                QTest::addRow("%s, %s", qPrintable(saving.name), withWays ? way.name : "killed")
                    << saving << way.fault;
                if (!withWays) {
                    break;
                }
            }
        }
    }

private slots:
    void initTestCase() {
        if (!canTrace()) {
            QSKIP("this machine forbids to trace a child, or has another processor");
        }
        mendo::LogHub::instance()->setConsole(false);
        QCoreApplication::setOrganizationName("Lumo");
        QCoreApplication::setApplicationName("files");
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(QDir::currentPath()));
        connect(m(), &mendo::ModuleManager::fileProblem, [](const QString&, int, int, const QString& reason) {
            sharedReport()->problems = sharedReport()->problems + (reason.isEmpty() ? 0 : 1);
        });
    }

    void killedSave_leavesTheOldOrTheNewFile_data() { rows(false, false); }
    void killedSave_leavesTheOldOrTheNewFile() {
        QFETCH(Saving, saving);
        const QByteArray fresh = savedAs(saving, 1);
        const QByteArray old = saving.typed.isEmpty() ? savedAs(saving, 0) : saving.typed;
        QVERIFY(fresh != old && fresh.size() > 20);
        int olds = 0, news = 0;
        for (int stop = 1;; ++stop) {
            place(saving, old);
            saving.fill(1);
            const Outcome outcome = killAt(stop, [&saving] { saving.save(); });
            QVERIFY2(!outcome.crashed, outcome.name);
            if (!outcome.killed) {
                break;
            }
            const QByteArray content = contentOf(saving);
            QVERIFY2(content == old || content == fresh, outcome.name);
            QVERIFY2(keepsWhatWasTyped(saving), outcome.name);
            ++(content == old ? olds : news);
            // Beside the file, what it was and its link's target at most one that is not finished.
            QVERIFY2(filesBeside(saving).size() <= 3, outcome.name);
        }
        QVERIFY2(olds > 20 && news > 1, "the save was killed before and behind its end");
    }

    void failedCallOfASave_isTold_orDoesNoHarm_data() { rows(false, true); }
    void failedCallOfASave_isTold_orDoesNoHarm() {
        QFETCH(Saving, saving);
        QFETCH(Fault, fault);
        const QByteArray fresh = savedAs(saving, 1);
        const QByteArray old = saving.typed.isEmpty() ? savedAs(saving, 0) : saving.typed;
        int failed = 0;
        for (int call = 1;; ++call) {
            place(saving, old);
            saving.fill(1);
            const Outcome outcome =
                failCall(call, fault, [&saving] { sharedReport()->result = saving.save(); });
            QVERIFY2(!outcome.crashed, outcome.name);
            if (outcome.fileCalls < call) {
                break;
            }
            if (!outcome.injected) {
                continue;
            }
            ++failed;
            const Report* const report = sharedReport();
            const QByteArray content = contentOf(saving);
            QVERIFY2(content == old || content == fresh, outcome.name);
            QVERIFY2(keepsWhatWasTyped(saving), outcome.name);
            QVERIFY2(!report->result || content == fresh || !saving.load, outcome.name);
            QVERIFY2(report->result || report->problems > 0, outcome.name);
        }
        QVERIFY(failed > 0);
    }

    void failedCallOfALoad_isTold_orDoesNoHarm_data() { rows(true, true); }
    void failedCallOfALoad_isTold_orDoesNoHarm() {
        QFETCH(Saving, saving);
        QFETCH(Fault, fault);
        const QByteArray document = savedAs(saving, 1);
        place(saving, document);
        saving.load();
        const QByteArray expected = saving.memory();
        int failed = 0;
        for (int call = 1;; ++call) {
            place(saving, document);
            saving.fill(2);
            const Outcome outcome = failCall(call, fault, [&] {
                saving.load();
                sharedReport()->result = saving.memory() == expected;
            });
            QVERIFY2(!outcome.crashed, outcome.name);
            if (outcome.fileCalls < call) {
                break;
            }
            failed += outcome.injected;
            QVERIFY2(sharedReport()->result || sharedReport()->problems > 0, outcome.name);
            QCOMPARE(contentOf(saving), document);
        }
        QVERIFY(failed > 0);
    }
};

LUMO_TEST_ON(TestSaves, test::onWallClock)
#include "test_saves.moc"
