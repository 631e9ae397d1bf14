#include "tracecompare.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace {

QByteArray shown(const QByteArrayList& lines, int from, int count, const char* prefix) {
    QByteArray text;
    for (const QByteArray& line : lines.mid(std::max(0, from), count)) {
        text += prefix + line + '\n';
    }
    return text.isEmpty() ? prefix + QByteArray("(end)\n") : text;
}

}  // namespace

QByteArrayList linesOfKinds(const QByteArray& trace, const QSet<QByteArray>& kinds) {
    QByteArrayList found;
    for (const QByteArray& line : trace.split('\n')) {
        const QByteArray kind = QJsonDocument::fromJson(line).object().value("kind").toString().toUtf8();
        if (!line.isEmpty() && (kinds.contains(kind) || kind.isEmpty())) {
            found.append(line);  // what is no trace line never goes unnoticed
        }
    }
    return found;
}

QByteArray compareTraces(const QByteArrayList& expected, const QByteArrayList& actual) {
    if (expected == actual) {
        return {};
    }
    constexpr int around = 4;
    const auto difference = std::mismatch(expected.begin(), expected.end(), actual.begin(), actual.end());
    const int at = int(difference.first - expected.begin());
    return "The traces differ first in line " + QByteArray::number(at + 1) + ".\n" +
           shown(expected, at - around, std::min(at, around), "  ") + shown(expected, at, around, "- ") +
           shown(actual, at, around, "+ ");
}
