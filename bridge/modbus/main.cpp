// lumo-modbus MAP: shows what a Modbus TCP device has, as a cell's wiring is put into service.

#include "bridge/modbus/devicewatch.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <cstdio>

#include <sys/signalfd.h>

namespace {

constexpr int badInput = 2;

const char* const usage =
    "usage: lumo-modbus MAP                  show all values, and each change\n"
    "       lumo-modbus MAP set NAME VALUE   the same, and write an output\n"
    "       lumo-modbus MAP time NAME [N]    write 0 to an output N times (1000), print how long the answers "
    "take\n"
    "\n"
    "MAP is the JSON file that says what lies where in the device (docs/controllers.md). NAME is "
    "\"LUMO_DO.#3\",\n"
    "\"LUMO_AO_1\" or \"DO3\". Ends with Ctrl-C; all outputs are switched off at the beginning and at the "
    "end.\n"
    "Exit status: 0, 1 for a write that was refused or a device that cannot be reached, 2 for wrong "
    "arguments.\n";

int fail(const QString& text) {
    std::fprintf(stderr, "lumo-modbus: %s\n", qPrintable(text));
    return badInput;
}

/// Ends the event loop at SIGINT and SIGTERM, so that outputs are switched off.
class EndSignals : public QObject {
public:
    EndSignals() {
        sigset_t set;
        sigemptyset(&set);
        sigaddset(&set, SIGINT);
        sigaddset(&set, SIGTERM);
        sigprocmask(SIG_BLOCK, &set, nullptr);
        auto* notifier = new QSocketNotifier(signalfd(-1, &set, SFD_CLOEXEC), QSocketNotifier::Read, this);
        connect(notifier, &QSocketNotifier::activated, qApp, [] { QCoreApplication::quit(); });
    }
};

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    if (arguments.value(0) == QLatin1String("--help")) {
        std::fputs(usage, stdout);
        return 0;
    }
    QString problem;
    const std::optional<bridge::DeviceTask> task = bridge::DeviceTask::from(arguments.mid(1), &problem);
    if (arguments.isEmpty() || !task) {
        std::fputs(usage, stderr);
        return problem.isEmpty() ? badInput : fail(problem);
    }
    mendo::FileProblem fileProblem;
    const std::optional<bridge::ModbusMap> map = bridge::ModbusMap::read(arguments[0], &fileProblem);
    if (!map) {
        return fail(bridge::ModbusMap::shown(fileProblem));
    }
    const EndSignals endSignals;
    bridge::DeviceWatch watch(*map, *task);
    return watch.start(&problem) ? QCoreApplication::exec() : fail(problem);
}
