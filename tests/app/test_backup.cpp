#include "app/backup/backup.h"
#include "support/suite.h"
#include "support/text.h"

#include <QDir>
#include <QTemporaryDir>

using namespace app;

/// Backups of projects and settings: made, checked, restored, refused.
class AppBackup : public QObject {
    Q_OBJECT

    const QDateTime now_{QDate(2026, 11, 26), QTime(12, 30)};
    std::unique_ptr<QTemporaryDir> folder_;

    QDir folder() const { return QDir(folder_->path()); }
    void write(const QString& name, const QByteArray& content) const {
        test::writeFile(folder().filePath(name), content);
    }
    /// "NAME=CONTENT" of all files but the archives.
    QString files() const {
        QStringList all;
        for (const QString& name : folder().entryList(QDir::Files | QDir::Hidden)) {
            if (!name.endsWith(".zip")) {
                all << name + "=" + test::contentOf(folder().filePath(name));
            }
        }
        return all.join(' ');
    }
    QByteArray backup() const {
        QString error;
        return makeBackup(folder(), now_, &error);
    }

private slots:
    void init() {
        folder_ = std::make_unique<QTemporaryDir>();
        write("a.json", "[1]");
        write("lumo_port.json", "{}");
        write("notes.txt", "mine");
    }

    void backup_isRestored_andWhatWasThereIsKept() {
        const QByteArray bytes = backup();
        write("a.json", "[2]");
        write("new.json", "[3]");
        QVERIFY(QFile::remove(folder().filePath("lumo_port.json")));
        QString error, keptAs;
        const std::optional<RestorePlan> plan = readBackup(bytes, folder(), &error);
        QVERIFY2(plan, qPrintable(error));
        QVERIFY(plan->made == now_ && plan->unchanged.isEmpty());
        QCOMPARE((plan->replaced + plan->added + plan->kept).join(' '), "a.json lumo_port.json new.json");
        QVERIFY2(restoreBackup(*plan, folder(), now_, &keptAs, &error), qPrintable(error));
        QCOMPARE(files(), "a.json=[1] lumo_port.json={} new.json=[3] notes.txt=mine");
        // What was kept is a backup, too.
        QFile kept(folder().filePath(keptAs));
        QVERIFY(kept.open(QIODevice::ReadOnly));
        const std::optional<RestorePlan> back = readBackup(kept.readAll(), folder(), &error);
        QVERIFY(back && restoreBackup(*back, folder(), now_.addSecs(1), &keptAs, &error));
        QCOMPARE(files(), "a.json=[2] lumo_port.json={} new.json=[3] notes.txt=mine");
    }

    void damagedArchive_isRefused() {
        const QByteArray bytes = backup();
        const QString before = files();
        QString error;
        for (int cut = 0; cut < bytes.size(); cut += 7) {
            QVERIFY2(!readBackup(bytes.left(cut), folder(), &error) && !error.isEmpty(), qPrintable(error));
        }
        int refused = 0;
        for (int place = 0; place < bytes.size(); ++place) {
            QByteArray damaged = bytes;
            damaged[place] = char(damaged[place] ^ 0x40);
            const std::optional<RestorePlan> plan = readBackup(damaged, folder(), &error);
            refused += plan ? 0 : 1;
            for (const ArchiveFile& file : plan ? plan->files : ArchiveFiles()) {  // a date or a flag
                QCOMPARE(file.content, file.name == "a.json" ? "[1]" : "{}");
            }
        }
        QVERIFY(refused > bytes.size() / 2);
        QCOMPARE(files(), before);
    }

    void archiveWithOtherFiles_isRefused() {
        QString error;
        std::optional<ArchiveFiles> good = unpackArchive(backup(), &error);
        QVERIFY(good && good->size() == 3);
        const struct {
            const char* name;
            const char* content;
        } strange[] = {{"../evil.json", "[]"},   {"/etc/evil.json", "[]"}, {"a/evil.json", "[]"},
                       {"..\\evil.json", "[]"},  {".evil.json", "[]"},     {"evil.json", "[]"},
                       {"manifest2.json", "[]"}, {"run.sh", "x"}};
        for (const auto& [name, content] : strange) {
            ArchiveFiles files = *good;
            files.append(ArchiveFile{name, content});
            QVERIFY2(!readBackup(packArchive(files, &error), folder(), &error) && !error.isEmpty(), name);
        }
        for (int i = 0; i < good->size(); ++i) {  // one missing, one changed
            ArchiveFiles files = *good;
            files.removeAt(i);
            QVERIFY(!readBackup(packArchive(files, &error), folder(), &error));
            files = *good;
            files[i].content = "[9]";
            QVERIFY(!readBackup(packArchive(files, &error), folder(), &error));
        }
        QVERIFY(!QFile::exists(folder().filePath("../evil.json")));
    }

    void fileThatCannotBeWritten_leavesAllAsItWas() {
        write("z.json", "[7]");
        const QByteArray bytes = backup();
        write("a.json", "[2]");
        QVERIFY(QFile::remove(folder().filePath("z.json")) && folder().mkdir("z.json"));
        const QString before = files();
        QString error, keptAs;
        const std::optional<RestorePlan> plan = readBackup(bytes, folder(), &error);
        QVERIFY(plan && !restoreBackup(*plan, folder(), now_, &keptAs, &error) && !error.isEmpty());
        QCOMPARE(files(), before);
    }
};

LUMO_TEST(AppBackup)
#include "test_backup.moc"
