#include "app/preferences.h"
#include "files/projectfile.h"
#include "files/settingsfile.h"
#include "files/tracedchild.h"
#include "panel/lumowidget.h"
#include "program/words.h"
#include "support/suite.h"
#include "support/text.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>

using namespace files;
using lumo::Settings;

namespace {

/// One way in which the product writes a file of the working folder.
struct Saving {
    const char* name;
    QString file;
    std::function<void(int document)> fill;  ///< puts a document into memory: each has another length
    std::function<bool()> save;              ///< writes it, and says whether it did
    std::function<void()> load = {};         ///< reads it; empty where there is no reading of its own
    QString path = {};                       ///< the node that holds it in memory
    QByteArray typed = {};  ///< what somebody typed into the file before, which must be kept; empty for none
    QString target = {};    ///< where the file is a link to another one
};

const Fault faults[] = {{"killed", Deed::Kill},         {"EIO", Deed::Fail, EIO},
                        {"ENOSPC", Deed::Fail, ENOSPC}, {"EACCES", Deed::Fail, EACCES},
                        {"EINTR", Deed::Fail, EINTR},   {"EMFILE", Deed::Fail, EMFILE},
                        {"half the bytes", Deed::Halve}};

/// As many copies as the document's number says, several times over: what is cut or mixed shows.
void fillList(QLatin1String path, QJsonObject record, const char* field, int document, int times) {
    QJsonArray list;
    for (int i = 0; i < times * (document + 1); ++i) {
        record[field] = QString("document %1, %2").arg(document).arg(i);
        list.append(record);
    }
    m(path)->loadJson(nullptr, list);
}

void fillPorts(int document) {
    for (ModuleObject* const port : m(prog::key::port)->cmobjs()) {
        port->set(nullptr, "name", QString("LUMO_DI").repeated(document + 1));
        port->set(nullptr, "enable", document % 2 == 0);
    }
}

void fillParams(int document) {
    QJsonObject set;
    for (const ModuleObject* const definition : m(prog::key::defaultParam)->cmobjs()) {
        set[definition->r("name")->getString()] = document;
    }
    fillList(prog::key::param, set, "name", document, 3);
}

void fillStations(int document) {
    const QJsonObject station = m(prog::key::defaultSignalsConfig)->exportToJson().toObject();
    fillList(prog::key::signalsConfig, station, "stationname", document, 1);
}

void fillProgram(int document) {
    fillList(prog::key::program, {{"type", "delay"}, {"delaytime", "100"}}, "note", document, 20);
}

Saving settings(const char* name, Settings list, QLatin1String path, void (*fill)(int),
                const QByteArray& typed = {}) {
    const auto save = [list] { return lumo::saveSettings(list); };
    const auto load = [list] { lumo::loadSettings(nullptr, list); };
    return {name, lumo::settingsFile(list), fill, save, load, path, typed};
}

Saving project(const char* name, const QByteArray& typed = {}, const QString& target = {}) {
    const QString file = "seam.json";
    const auto load = [file] {
        if (const auto read = lumo::readProject(file)) {
            lumo::loadProject(nullptr, *read);
        }
    };
    const auto save = [file] { return lumo::saveProject(file); };
    return {name, file, fillProgram, save, load, prog::key::program, typed, target};
}

/// Nothing that the operator typed: the panel does not ask whether it was saved.
Saving preferences() {
    static QString folder;
    const auto fill = [](int document) { folder = QString("folder ").repeated(document + 1); };
    return {"preferences", "Lumo/files.json", fill, [] {
                app::Preferences::rememberFolder(folder);
                return true;
            }};
}

QByteArray contentOf(const Saving& saving) {
    return test::contentOf(saving.file);
}

QFileInfoList filesBeside(const Saving& saving) {
    return QFileInfo(saving.file).dir().entryInfoList(QDir::Files | QDir::Hidden | QDir::System);
}

/// An empty folder with this file, which may be a link.
void place(const Saving& saving, const QByteArray& content) {
    QDir().mkpath(QFileInfo(saving.file).path());
    for (const QFileInfo& file : filesBeside(saving)) {
        QFile::remove(file.filePath());
    }
    test::writeFile(saving.target.isEmpty() ? saving.file : saving.target, content);
    if (!saving.target.isEmpty()) {
        QFile::link(saving.target, saving.file);
    }
}

/// The bytes of a document's file, saved undisturbed.
QByteArray savedAs(const Saving& saving, int document) {
    place(saving, {});
    saving.fill(document);
    saving.save();
    return contentOf(saving);
}

bool keepsWhatWasTyped(const Saving& saving) {
    const QFileInfoList files = filesBeside(saving);
    return saving.typed.isEmpty() || std::any_of(files.begin(), files.end(), [&](const QFileInfo& file) {
               return test::contentOf(file.filePath()) == saving.typed;
           });
}

}  // namespace

Q_DECLARE_METATYPE(Saving)
Q_DECLARE_METATYPE(Fault)

/// A file is the old or the new one, whole, wherever a save is killed and whichever call of it fails; nothing
/// is called saved or loaded that is not, and what went wrong is told.
class TestSaves : public QObject {
    Q_OBJECT

    std::vector<Saving> savings_;

private slots:
    void initTestCase() {
        if (!canTrace()) {
            QSKIP("this machine forbids to trace a child");
        }
        mendo::LogHub::instance()->setConsole(false);
        QCoreApplication::setOrganizationName("Lumo");
        QCoreApplication::setApplicationName("files");
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(QDir::currentPath()));
        connect(m(), &mendo::ModuleManager::fileProblem, [](const mendo::FileProblem& problem) {
            sharedReport()->problems = sharedReport()->problems + (problem.text().isEmpty() ? 0 : 1);
        });
        const LumoWidget page;  // registers the tree, which stays
        const auto params = [](const char* name, const QByteArray& typed) {
            return settings(name, Settings::Params, prog::key::param, fillParams, typed);
        };
        savings_ = {settings("ports", Settings::Ports, prog::key::port, fillPorts),
                    params("params", {}),
                    settings("stations", Settings::Stations, prog::key::signalsConfig, fillStations),
                    project("project"),
                    project("project, a link", {}, "elsewhere.txt"),
                    params("params, damaged", "[{\"name\": \"typed by somebody\", \"po"),
                    params("params, other content", "{\"notes\": \"typed by somebody\"}"),
                    project("project, other content", "[{\"name\": \"typed by somebody\"}]"),
                    preferences()};
    }

    void save_leavesTheOldOrTheNewFile_andTellsWhatFails_data() {
        QTest::addColumn<Saving>("saving");
        QTest::addColumn<Fault>("fault");
        for (const Saving& saving : savings_) {
            for (const Fault& fault : faults) {
                QTest::addRow("%s, %s", saving.name, fault.name) << saving << fault;
            }
        }
    }
    void save_leavesTheOldOrTheNewFile_andTellsWhatFails() {
        QFETCH(Saving, saving);
        QFETCH(Fault, fault);
        const QByteArray fresh = savedAs(saving, 1);
        const QByteArray old = saving.typed.isEmpty() ? savedAs(saving, 0) : saving.typed;
        QVERIFY(fresh != old && fresh.size() > 20);
        int olds = 0, news = 0;
        for (int call = 1;; ++call) {
            const QByteArray where = "at file call " + QByteArray::number(call);
            place(saving, old);
            saving.fill(1);
            const Outcome outcome =
                follow(call, fault, [&saving] { sharedReport()->result = saving.save(); });
            QVERIFY2(!outcome.crashed, where);
            if (outcome.calls < call) {
                break;
            }
            if (!outcome.isDone) {
                continue;
            }
            const Report* const report = sharedReport();
            const QByteArray content = contentOf(saving);
            ++(content == old ? olds : news);
            QVERIFY2(content == old || content == fresh, where);
            QVERIFY2(keepsWhatWasTyped(saving), where);
            // Beside the file, what it was and its link's target at most one that is not finished.
            QVERIFY2(filesBeside(saving).size() <= 3, where);
            QVERIFY2(!report->result || content == fresh || !saving.load, where);
            QVERIFY2(report->result || report->problems > 0 || fault.deed == Deed::Kill, where);
        }
        QVERIFY2(news > 1 && (olds > 10 || fault.deed != Deed::Kill), "the save met the fault everywhere");
    }

    void failedCallOfALoad_isTold_orDoesNoHarm() {
        for (const Saving& saving : savings_) {
            for (const Fault& fault : faults) {
                if (saving.load && saving.typed.isEmpty() && fault.deed != Deed::Kill) {
                    loadWith(fault, saving);
                }
            }
        }
    }

private:
    static void loadWith(const Fault& fault, const Saving& saving) {
        const QByteArray document = savedAs(saving, 1);
        place(saving, document);
        saving.load();
        const QString expected = test::text(m(saving.path));
        for (int call = 1;; ++call) {
            const QString where = QString("%1, %2, file call %3").arg(saving.name, fault.name).arg(call);
            place(saving, document);
            saving.fill(2);
            const Outcome outcome = follow(call, fault, [&] {
                saving.load();
                sharedReport()->result = test::text(m(saving.path)) == expected;
            });
            QVERIFY2(!outcome.crashed, qPrintable(where));
            if (outcome.calls < call) {
                QVERIFY2(call > 5, qPrintable(where));
                break;
            }
            QVERIFY2(sharedReport()->result || sharedReport()->problems > 0, qPrintable(where));
            QCOMPARE(contentOf(saving), document);
        }
    }
};

LUMO_TEST_ON(TestSaves, test::onWallClock)
#include "test_saves.moc"
