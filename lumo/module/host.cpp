#include "module/host.h"

namespace lumo {

namespace {

mendo::QFLog fileLog(const QString& colour, const QString& tag) {
    return mendo::QFLog(colour, tag, QString(), QStringLiteral("./log/lumo"), QStringLiteral("log"));
}

mendo::QLog consoleLog(const QString& colour, const QString& tag) {
    return mendo::QLog(colour, tag, QString());
}

}  // namespace

mendo::QFLog logS() {
    return fileLog(QStringLiteral("\033[35m"), QStringLiteral("[S|%1]"));
}

mendo::QFLog logE() {
    return fileLog(QStringLiteral("\033[31m"), QStringLiteral("[E|%1]"));
}

mendo::QFLog logW() {
    return fileLog(QStringLiteral("\033[33m"), QStringLiteral("[W|%1]"));
}

mendo::QLog logI() {
    return consoleLog(QStringLiteral("\033[36m"), QStringLiteral("[I|%1]"));
}

mendo::QLog logD() {
    return consoleLog(QStringLiteral("\033[32m"), QStringLiteral("[d|%1]"));
}

}  // namespace lumo
