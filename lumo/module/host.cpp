#include "module/host.h"

namespace lumo {

namespace {

mendo::QFLog fileLog(const char* colour, const QString& tag) {
    return mendo::QFLog(QString::fromLatin1(colour), tag, QString(),
                        QStringLiteral("./log/%1").arg(QLatin1String("lumo")), QStringLiteral("log"));
}

mendo::QLog consoleLog(const char* colour, const QString& tag) {
    return mendo::QLog(QString::fromLatin1(colour), tag, QString());
}

}  // namespace

mendo::QFLog logS() {
    return fileLog("\033[35m", QStringLiteral("[S|%1]"));
}

mendo::QFLog logE() {
    return fileLog("\033[31m", QStringLiteral("[E|%1]"));
}

mendo::QFLog logW() {
    return fileLog("\033[33m", QStringLiteral("[W|%1]"));
}

mendo::QLog logI() {
    return consoleLog("\033[36m", QStringLiteral("[I|%1]"));
}

mendo::QLog logD() {
    return consoleLog("\033[32m", QStringLiteral("[d|%1]"));
}

}  // namespace lumo
