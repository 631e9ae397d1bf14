// Fails each file-system call of a save, or of a load, once in each way that it can fail: what went wrong
// is told, or it changed nothing; nothing is called saved that is not; the old file stays whole.

#include "files/saves.h"
#include "files/tracedchild.h"
#include "module/host.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTextStream>

#include <cerrno>
#include <map>

using namespace files;

namespace {

constexpr int skipped = 77;  // ctest's word for it

struct Way {
    const char* name;
    Fault fault;
};

const Way ways[] = {{"EIO", {Fault::Error, EIO}},       {"ENOSPC", {Fault::Error, ENOSPC}},
                    {"EACCES", {Fault::Error, EACCES}}, {"EINTR", {Fault::Error, EINTR}},
                    {"EMFILE", {Fault::Error, EMFILE}}, {"half", {Fault::ShortCount, 0}}};

/// Of the runs in which one call failed in one way.
struct Tally {
    int told = 0;      ///< a report with its reason, and "not saved" or "not loaded"
    int harmless = 0;  ///< saved or loaded all the same
};

class Campaign {
public:
    void failSaves(const std::vector<Saving>& savings);
    void failLoads(const std::vector<Saving>& savings);
    [[nodiscard]] bool isClean() const { return findings_ == 0; }
    void print(qint64 ms) const;

private:
    bool failSave(const Saving& saving, const std::vector<QByteArray>& documents, int call, const Way& way);
    bool failLoad(const Saving& saving, const QByteArray& document, int call, const Way& way);
    void find(const Saving& saving, const Outcome& outcome, int call, const Way& way, const char* what);
    void count(const Outcome& outcome, const Way& way, bool told);

    std::map<QString, std::map<QString, Tally>> tallies_;  // by call, by way
    int runs_ = 0;
    int findings_ = 0;
};

void Campaign::find(const Saving& saving, const Outcome& outcome, int call, const Way& way,
                    const char* what) {
    ++findings_;
    QTextStream(stderr) << saving.name << ", call " << call << " (" << outcome.call << ") fails with "
                        << way.name << ": " << what << '\n';
}

void Campaign::count(const Outcome& outcome, const Way& way, bool told) {
    ++runs_;
    Tally& tally = tallies_[outcome.call][QString::fromLatin1(way.name)];
    ++(told ? tally.told : tally.harmless);
}

/// False when the save has no such call.
bool Campaign::failSave(const Saving& saving, const std::vector<QByteArray>& documents, int call,
                        const Way& way) {
    clearFolder();
    const QByteArray before = saving.foreign.isEmpty() ? documents[0] : saving.foreign;
    place(saving, before);
    saving.fill(1);
    const Outcome outcome = failCall(call, way.fault, [&saving] { sharedReport()->result = saving.save(); });
    if (outcome.crashed) {
        find(saving, outcome, call, way, "the writer crashed");
    }
    if (!outcome.injected) {
        return outcome.stops >= call;
    }
    const Report* const report = sharedReport();
    const QByteArray content = contentOf(saving.file);
    if (content != before && content != documents[1]) {
        find(saving, outcome, call, way, "the file is neither the old nor the new one");
    }
    const bool isAsked = static_cast<bool>(saving.load);  // the preferences are not
    if (report->result && content != documents[1] && isAsked) {
        find(saving, outcome, call, way, "called saved, but it is not");
    }
    if (!report->result && report->problems == 0) {
        find(saving, outcome, call, way, "not saved, and nothing is told");
    }
    if (!saving.foreign.isEmpty() && !isSomewhere(saving.foreign)) {
        find(saving, outcome, call, way, "what somebody typed is gone");
    }
    count(outcome, way, !report->result);
    return true;
}

bool Campaign::failLoad(const Saving& saving, const QByteArray& document, int call, const Way& way) {
    clearFolder();
    place(saving, document);
    saving.load();
    const QByteArray expected = saving.memory();
    saving.fill(2);
    const Outcome outcome = failCall(call, way.fault, [&saving, &expected] {
        saving.load();
        sharedReport()->loaded = saving.memory() == expected;
    });
    if (outcome.crashed) {
        find(saving, outcome, call, way, "the reader crashed");
    }
    if (!outcome.injected) {
        return outcome.stops >= call;
    }
    if (!sharedReport()->loaded && sharedReport()->problems == 0) {
        find(saving, outcome, call, way, "not loaded, and nothing is told");
    }
    if (contentOf(saving.file) != document) {
        find(saving, outcome, call, way, "reading has changed the file");
    }
    count(outcome, way, !sharedReport()->loaded);
    return true;
}

void Campaign::failSaves(const std::vector<Saving>& savings) {
    for (const Saving& saving : savings) {
        Saving plain = saving;
        plain.target.clear();
        const std::vector<QByteArray> documents = documentsOf(plain);
        for (const Way& way : ways) {
            for (int call = 1; failSave(saving, documents, call, way); ++call) {
            }
        }
    }
}

void Campaign::failLoads(const std::vector<Saving>& savings) {
    for (const Saving& saving : savings) {
        if (!saving.load || !saving.foreign.isEmpty()) {
            continue;
        }
        Saving plain = saving;
        plain.target.clear();
        const QByteArray document = documentsOf(plain)[1];
        for (const Way& way : ways) {
            for (int call = 1; failLoad(saving, document, call, way); ++call) {
            }
        }
    }
}

void Campaign::print(qint64 ms) const {
    QTextStream out(stdout);
    out << "| call |";
    for (const Way& way : ways) {
        out << ' ' << way.name << ": told | harmless |";
    }
    out << "\n|---|";
    for (std::size_t column = 0; column < 2 * std::size(ways); ++column) {
        out << "---:|";
    }
    out << '\n';
    for (const auto& [call, row] : tallies_) {
        out << "| " << call << " |";
        for (const Way& way : ways) {
            const auto found = row.find(QString::fromLatin1(way.name));
            const Tally tally = found == row.end() ? Tally() : found->second;
            out << ' ' << tally.told << " | " << tally.harmless << " |";
        }
        out << '\n';
    }
    out << "\n"
        << runs_ << " runs in " << QString::number(double(ms) / 1000, 'f', 1) << " s; findings: " << findings_
        << ".\n";
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QString what = QString::fromLocal8Bit(argc == 2 ? argv[1] : "");
    if (what != QLatin1String("save") && what != QLatin1String("load")) {
        QTextStream(stderr) << "usage: fault_campaign save|load\n";
        return 2;
    }
    const Product product;
    if (!canTrace()) {
        QTextStream(stderr) << "Skipped: this machine forbids to trace a child, or has another processor.\n";
        return skipped;
    }
    QObject::connect(m(), &mendo::ModuleManager::fileProblem,
                     [](const QString&, int, int, const QString& reason) {
                         sharedReport()->problems = sharedReport()->problems + (reason.isEmpty() ? 0 : 1);
                     });
    QElapsedTimer timer;
    timer.start();
    Campaign campaign;
    if (what == QLatin1String("save")) {
        campaign.failSaves(product.savings());
    } else {
        campaign.failLoads(product.savings());
    }
    campaign.print(timer.elapsed());
    return campaign.isClean() ? 0 : 1;
}
