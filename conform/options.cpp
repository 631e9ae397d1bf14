#include "conform/options.h"

#include "conform/check.h"
#include "simulator/controller.h"
#include "workcell/commandline.h"

#include <algorithm>

namespace conform {

namespace {

using workcell::Option;

constexpr int helpColumn = 24;

QString readText(const QString& text, QString* value) {
    *value = text;
    return text.isEmpty() ? QStringLiteral("is empty") : QString();
}

QString readLoop(const QString& text, Options* o) {
    o->loopOutput = text.section(QLatin1Char('='), 0, 0);
    o->loopInput = text.section(QLatin1Char('='), 1);
    return o->loopOutput.isEmpty() || o->loopInput.isEmpty() ? QStringLiteral("is no OUTPUT=INPUT")
                                                             : QString();
}

QString readRepeats(const QString& text, int* repeats) {
    bool isNumber = false;
    *repeats = text.toInt(&isNumber);
    return isNumber && *repeats > 0 ? QString() : QStringLiteral("is no number from 1");
}

/// A mistyped name would pass by judging nothing.
QString readChecks(const QString& text, QStringList* ids) {
    *ids = text.split(QLatin1Char(','));
    const std::vector<Check> all = allChecks();
    for (const QString& id : qAsConst(*ids)) {
        if (std::none_of(all.begin(), all.end(),
                         [&id](const Check& check) { return id == QLatin1String(check.id); })) {
            return QStringLiteral("has no check \"%1\", see --list").arg(id);
        }
    }
    return {};
}

QString readQuirk(const QString& text, QString* name) {
    sim::Quirk quirk;
    *name = text;
    return sim::Controller::quirkFromName(text, &quirk) ? QString() : QStringLiteral("is no quirk");
}

std::vector<Option> table(Options* o) {
    return {
        {"io", "DEVICE", "I/O device beside the controller: NAME:ARGUMENT or FILE.so:ARGUMENT",
         [o](const QString& v) { return readText(v, &o->device); }},
        {"loop", "OUT=IN", "an output that is wired to an input, \"LUMO_DO.#7=LUMO_DI.#7\"",
         [o](const QString& v) { return readLoop(v, o); }},
        {"bits", "REGISTER", "register of bits to be switched (LUMO_DO, or the first)",
         [o](const QString& v) { return readText(v, &o->bits); }},
        {"number", "REGISTER", "16-bit register to be written (LUMO_AO_0, or the first)",
         [o](const QString& v) { return readText(v, &o->number); }},
        {"only", "ID,...", "make these checks only; --list has the ids",
         [o](const QString& v) { return readChecks(v, &o->only); }},
        {"raw", "",
         "let faults of the backend through, as the simulator does always; by default the\n"
         "adapter repairs what it can and names it",
         [o](const QString&) {
             o->repair = false;
             return QString();
         }},
        {"quirk", "NAME",
         "of the simulator: bunch, sync, late, double, wrongKind, slowState, noResult, failAtEnd",
         [o](const QString& v) { return readQuirk(v, &o->quirk); }},
        {"repeats", "N", "so often each time is measured (20)",
         [o](const QString& v) { return readRepeats(v, &o->repeats); }},
        {"junit", "FILE", "write the results as JUnit XML, too",
         [o](const QString& v) { return readText(v, &o->junit); }},
        workcell::flag("list", "print the checks and end", &o->list),
        workcell::flag("version", "print the version", &o->version),
        workcell::flag("help", "print this", &o->help),
    };
}

}  // namespace

bool Options::isSimulator() const {
    return backend.section(QLatin1Char(':'), 0, 0) == QLatin1String("simulator");
}

QString readOptions(const QStringList& arguments, Options* options) {
    QStringList backends;
    const QString reason = workcell::readArguments(arguments, table(options), &backends);
    if (!reason.isEmpty() || options->help || options->version || options->list) {
        return reason;
    }
    if (backends.size() != 1) {
        return QStringLiteral("name one backend, see --help");
    }
    options->backend = backends.front();
    return options->quirk.isEmpty() || options->isSimulator()
               ? QString()
               : QStringLiteral("--quirk is for the simulator");
}

QString usage() {
    Options ignored;
    return QStringLiteral(
               "Usage: lumo-conform [options] BACKEND\n\n"
               "Runs a fixed list of commands against a robot controller and judges every rule that the "
               "package\n"
               "relies on. BACKEND: \"simulator\" (or \"simulator:7\"), NAME:ARGUMENT or FILE.so:ARGUMENT.\n"
               "The arm moves within 70 mm of where it stands and turns by up to 8 degrees. Outputs are "
               "switched:\n"
               "lock the laser out. Exit status: 0 all rules are kept, 1 one is not, 2 bad usage or no "
               "controller.\n\n") +
           workcell::helpText(table(&ignored), helpColumn);
}

}  // namespace conform
