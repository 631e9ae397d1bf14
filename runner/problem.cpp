#include "runner/problem.h"

#include <cstdio>

namespace run {

QString Problem::text() const {
    QString where = file;
    if (line > 0) {
        where += QStringLiteral(":%1:%2").arg(line).arg(column);
    }
    return (where.isEmpty() ? reason : where + QStringLiteral(": ") + reason).simplified();
}

void printError(const QString& text) {
    std::fprintf(stderr, "lumo-run: %s\n", text.toUtf8().constData());
    std::fflush(stderr);
}

void printWarning(const QString& text) {
    printError(QStringLiteral("warning: ") + text);
}

}  // namespace run
