// Kills a process while it saves, and looks at what is in the folder then: at random instants, and at the
// entry and the exit of each system call of a save. Prints a table; the exit status tells whether every
// file was the old or the new one, whole.

#include "files/saves.h"
#include "files/tracedchild.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTextStream>

#include <signal.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <map>
#include <random>

using namespace files;

namespace {

/// The new file is written without a name and gets one, beside the old, just before it is renamed.
enum Place { Unnamed, Partial, BeforeRename, AfterRename, Between, placeCount };
const char* const placeNames[placeCount] = {"new file unnamed", "named, in part", "before rename",
                                            "after rename", "between saves"};

struct Tally {
    int kills = 0;
    int old = 0;
    int fresh = 0;
    int torn = 0;
    int lost = 0;       ///< what somebody typed was gone
    int leftovers = 0;  ///< kills that left a file behind
    int places[placeCount] = {};
};

class Campaign {
public:
    explicit Campaign(unsigned seed) : seed_(seed), random_(seed) {}

    void killAtRandom(const std::vector<Saving>& savings, int count);
    void killAtCalls(const std::vector<Saving>& savings);
    [[nodiscard]] bool isClean() const { return faults_ == 0; }
    void print(qint64 ms) const;

private:
    void prepare(const Saving& saving, const QByteArray& old);
    void judge(const Saving& saving, const QByteArray& before, Tally* tally);
    [[nodiscard]] Place placeOf(const Saving& saving, int found) const;
    void complain(const Saving& saving, const QString& what);
    static void saveForEver(const Saving& saving);
    [[nodiscard]] qint64 saveTimeUs(const Saving& saving) const;

    unsigned seed_;
    std::mt19937 random_;
    std::map<QString, std::vector<QByteArray>> documents_;
    std::vector<std::pair<QString, Tally>> rows_;
    int faults_ = 0;
    int accumulated_ = 0;  ///< most files that were ever left behind at once
};

void Campaign::prepare(const Saving& saving, const QByteArray& old) {
    clearFolder();
    place(saving, old);
    if (documents_.count(saving.name) == 0) {
        Saving plain = saving;
        plain.target.clear();
        documents_[saving.name] = documentsOf(plain);
        plain.fill(generations + 1);
        plain.save();
        if (contentOf(plain.file) != documents_[saving.name][1]) {
            complain(saving, QStringLiteral("the documents do not repeat: what comes is no proof"));
        }
        clearFolder();
        place(saving, old);
    }
}

/// From what the folder shows: `found` is the generation in the file, -1 for what was there before.
Place Campaign::placeOf(const Saving& saving, int found) const {
    const Report* const report = sharedReport();
    if (report->started == report->finished) {
        return Between;
    }
    if (found == report->started) {
        return AfterRename;
    }
    const QStringList names = leftovers(saving);
    if (names.isEmpty()) {
        return Unnamed;
    }
    const QString folder = QFileInfo(saving.file).path() + QLatin1Char('/');
    const auto& documents = documents_.at(saving.name);
    const QByteArray& whole = documents[std::size_t(report->started % generations)];
    return contentOf(folder + names.first()) == whole ? BeforeRename : Partial;
}

void Campaign::complain(const Saving& saving, const QString& what) {
    ++faults_;
    QTextStream(stderr) << saving.name << ", generation " << int(sharedReport()->started) << ": " << what
                        << " (seed " << seed_ << ")\n";
}

/// `before`: what the file held before the child began, one of the documents or somebody's text.
void Campaign::judge(const Saving& saving, const QByteArray& before, Tally* tally) {
    const Report* const report = sharedReport();
    const auto& documents = documents_.at(saving.name);
    const QByteArray content = contentOf(saving.file);
    const auto is = [&](int generation) {
        return generation > 0 && content == documents[std::size_t(generation % generations)];
    };
    ++tally->kills;
    int found = -1;
    if (is(report->started)) {
        found = report->started;
        ++tally->fresh;
    } else if (is(report->finished) || (report->finished == 0 && content == before)) {
        found = report->finished;
        ++tally->old;
    } else {
        ++tally->torn;
        complain(saving, QStringLiteral("the file holds neither the old nor the new document"));
    }
    if (!saving.foreign.isEmpty() && !isSomewhere(saving.foreign)) {
        ++tally->lost;
        complain(saving, QStringLiteral("what somebody typed is gone"));
    }
    const int left = leftovers(saving).size();
    tally->leftovers += left > 0;
    accumulated_ = std::max(accumulated_, left);
    ++tally->places[placeOf(saving, found)];
}

void Campaign::saveForEver(const Saving& saving) {
    Report* const report = sharedReport();
    for (int generation = 1;; ++generation) {
        saving.fill(generation);
        report->started = generation;
        saving.save();
        report->finished = generation;
    }
}

qint64 Campaign::saveTimeUs(const Saving& saving) const {
    saving.fill(1);
    saving.save();
    constexpr int saves = 5;
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < saves; ++i) {
        saving.fill(i);
        saving.save();
    }
    return timer.nsecsElapsed() / 1000 / saves;
}

/// The kill comes within the first two saves, anywhere.
void Campaign::killAtRandom(const std::vector<Saving>& savings, int count) {
    for (std::size_t row = 0; row < savings.size(); ++row) {
        const Saving& saving = savings[row];
        const QByteArray old = saving.foreign;
        prepare(saving, old);
        const qint64 timeUs = saveTimeUs(saving);
        std::uniform_int_distribution<qint64> delayUs(0, 2 * timeUs);
        Tally tally;
        const int kinds = int(savings.size());
        const int share = count / kinds + (int(row) < count % kinds ? 1 : 0);
        for (int i = 0; i < share; ++i) {
            prepare(saving, old);
            newReport();
            const pid_t child = ::fork();
            if (child == 0) {
                saveForEver(saving);
            }
            const long us = long(delayUs(random_));
            const timespec delay{us / 1000000, us % 1000000 * 1000};
            ::nanosleep(&delay, nullptr);
            ::kill(child, SIGKILL);
            int status = 0;
            ::waitpid(child, &status, 0);
            if (!WIFSIGNALED(status) || WTERMSIG(status) != SIGKILL) {
                complain(saving, QStringLiteral("the writer ended by itself"));
            }
            judge(saving, old, &tally);
        }
        rows_.emplace_back(saving.name + QStringLiteral(", at random"), tally);
    }
}

void Campaign::killAtCalls(const std::vector<Saving>& savings) {
    for (const Saving& saving : savings) {
        Tally tally;
        for (int stop = 1;; ++stop) {
            prepare(saving, QByteArray());
            const QByteArray before =
                saving.foreign.isEmpty() ? documents_.at(saving.name)[0] : saving.foreign;
            place(saving, before);
            saving.fill(1);
            const Outcome outcome = killAtStop(stop, [&saving] {
                Report* const report = sharedReport();
                report->started = 1;
                saving.save();
                report->finished = 1;
            });
            if (outcome.crashed) {
                complain(saving, QStringLiteral("the writer ended by itself"));
            }
            if (!outcome.killed) {
                break;
            }
            judge(saving, before, &tally);
        }
        rows_.emplace_back(saving.name + QStringLiteral(", at each call"), tally);
    }
}

void Campaign::print(qint64 ms) const {
    QTextStream out(stdout);
    out << "| save | kills |";
    for (const char* name : placeNames) {
        out << ' ' << name << " |";
    }
    out << " file old | new | torn | typed text lost | left a file |\n|---|";
    for (int column = 0; column < placeCount + 6; ++column) {
        out << "---:|";
    }
    out << '\n';
    int kills = 0;
    for (const auto& [name, tally] : rows_) {
        kills += tally.kills;
        out << "| " << name << " | " << tally.kills << " |";
        for (const int count : tally.places) {
            out << ' ' << count << " |";
        }
        out << ' ' << tally.old << " | " << tally.fresh << " | " << tally.torn << " | " << tally.lost << " | "
            << tally.leftovers << " |\n";
    }
    out << "\nSeed " << seed_ << ", " << kills << " kills in " << QString::number(double(ms) / 1000, 'f', 1)
        << " s; findings: " << faults_ << "; most files left behind by one kill: " << accumulated_ << ".\n";
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const Product product;
    QCommandLineParser options;
    options.addOptions({{"count", "Kills at random instants.", "N", "10000"},
                        {"seed", "Seed of the instants.", "N", "1"},
                        {"no-calls", "Leave out the kills at each system call."}});
    options.addHelpOption();
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments << QString::fromLocal8Bit(argv[i]);
    }
    options.process(arguments);

    bool isSeed = false, isCount = false;
    const unsigned seed = options.value("seed").toUInt(&isSeed);
    const int count = options.value("count").toInt(&isCount);
    if (!isSeed || !isCount || count < 0) {
        QTextStream(stderr) << "kill_campaign: --seed and --count take whole numbers from 0 on\n";
        return 2;
    }

    QElapsedTimer timer;
    timer.start();
    Campaign campaign(seed);
    campaign.killAtRandom(product.savings(), count);
    if (options.isSet("no-calls") || !canTrace()) {
        QTextStream(stderr) << "No kills at system calls: left out, or this machine forbids to trace.\n";
    } else {
        campaign.killAtCalls(product.savings());
    }
    campaign.print(timer.elapsed());
    return campaign.isClean() ? 0 : 1;
}
