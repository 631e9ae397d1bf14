#include "tracecompare.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include <algorithm>

namespace {

constexpr int kColumn = 72;
constexpr int kBefore = 4;
constexpr int kAfter = 6;

QString column(const QByteArrayList& lines, int index) {
    const QString line = index < lines.size() ? QString::fromUtf8(lines[index]) : QStringLiteral("(end)");
    return line.size() > kColumn ? line.left(kColumn - 1) + QChar(0x2026) : line.leftJustified(kColumn);
}

int firstDifference(const QByteArrayList& a, const QByteArrayList& b) {
    const auto difference = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    return int(difference.first - a.begin());
}

QByteArray whole(const QByteArrayList& lines, int index) {
    return index < lines.size() ? lines[index] : QByteArray("(the trace has ended)");
}

}  // namespace

QByteArrayList linesOfKinds(const QByteArray& trace, const QSet<QByteArray>& kinds) {
    QByteArrayList found;
    for (const QByteArray& line : trace.split('\n')) {
        const QString kind = QJsonDocument::fromJson(line).object().value(QStringLiteral("kind")).toString();
        if (!line.isEmpty() && (kinds.contains(kind.toUtf8()) || kind.isEmpty()))
            found.append(line);  // what is no trace line never goes unnoticed
    }
    return found;
}

QByteArray compareTraces(const QByteArrayList& expected, const QByteArrayList& actual) {
    if (expected == actual)
        return {};
    const int at = firstDifference(expected, actual);
    QString report = QStringLiteral("The traces differ first in line %1 (expected %2 lines, got %3).\n\n")
                         .arg(at + 1)
                         .arg(expected.size())
                         .arg(actual.size());
    report += QStringLiteral("expected: ") + QString::fromUtf8(whole(expected, at)) + QLatin1Char('\n');
    report += QStringLiteral("got:      ") + QString::fromUtf8(whole(actual, at)) + QStringLiteral("\n\n");
    const int last = std::min(at + kAfter, std::max(expected.size(), actual.size()) - 1);
    for (int i = std::max(0, at - kBefore); i <= last; ++i) {
        const bool same = i < expected.size() && i < actual.size() && expected[i] == actual[i];
        report += QStringLiteral("%1 %2 %3 %4\n")
                      .arg(i + 1, 6)
                      .arg(column(expected, i), QString(same ? QLatin1Char('|') : QLatin1Char('#')),
                           column(actual, i).trimmed());
    }
    return report.toUtf8();
}
