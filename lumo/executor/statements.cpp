// Statements that talk to the rest of the cell: set an output, wait for an input, wait a time.

#include "executor/lumoexecutor.h"
#include "program/words.h"

#include <QVariantHash>

#include <algorithm>

using namespace lumo;
using namespace prog;

namespace {

constexpr int inputPollMs = 100;

QString text(const ModuleObject* stmt, const char* path) {
    return stmt->r(QString::fromLatin1(path))->getString(QString());
}

/// Key of the input in the service's list of controller inputs, or the path of its register bit.
QString inputName(const ModuleObject* stmt) {
    if (text(stmt, "DI_type") == word::io) {
        return text(stmt, "diName");
    }
    return mName(text(stmt, "DI_reg.name"), mIndex(stmt->r(QStringLiteral("DI_reg.bias"))->getInt(0)));
}

}  // namespace

int LumoExecutor::setDO(ModuleObject* stmt) {
    const QString value = text(stmt, "value");
    if (text(stmt, "DO_type") == word::io) {
        kordservice()->command(nullptr, command::outDo,
                               QVariantHash{{QStringLiteral("name"), text(stmt, "doName")},
                                            {QStringLiteral("value"), value == word::falseText ? 0 : 1}});
        return 0;
    }
    kordservice()->execCommand(
        this, command::registerWrite,
        QVariantHash{{QStringLiteral("name"), text(stmt, "DO_reg.name")},
                     {QStringLiteral("type"), text(stmt, "DO_reg.type")},
                     {QStringLiteral("bias"), stmt->r(QStringLiteral("DO_reg.bias"))->getInt(0)},
                     {QStringLiteral("value"), value == word::trueText}});
    return 0;
}

bool LumoExecutor::inputState(const ModuleObject* stmt) {
    if (text(stmt, "DI_type") == word::io) {
        return kordservice()
            ->get(nullptr, key::deviceIo, mName(QStringLiteral("DI"), inputName(stmt)))
            ->getBool(false);
    }
    return kordservice()->dataNode(mName(key::registerValues, inputName(stmt)))->getBool(false);
}

int LumoExecutor::waitDI(ModuleObject* stmt) {
    const bool awaited = text(stmt, "value1") != word::falseText;
    QTimer poll;
    connect(&poll, &QTimer::timeout, this, [this, stmt, awaited] {
        if (inputState(stmt) == awaited && waiter_.waitsFor(WaitKind::Input)) {
            waiter_.end(WaitEnd::Input);
        }
    });
    poll.start(inputPollMs);
    // Ended by the input, a pause or an emergency stop; there is no time-out.
    if (waiter_.run(WaitKind::Input, inputName(stmt), -1) == WaitEnd::Quit) {
        quit();
    }
    return 0;
}

int LumoExecutor::delay(ModuleObject* stmt) {
    const int delayMs = std::max(0, stmt->c(field::delaytime, false)->getInt(0));
    // Ended by its time, a pause or an emergency stop.
    waitFor(WaitKind::Delay, mendo::Clock::current().elapsedMs() + delayMs);
    return 0;
}
