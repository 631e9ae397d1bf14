#pragma once

#include <QByteArrayList>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <algorithm>

inline QByteArray shown(const QByteArrayList& lines, int from, int count, const char* prefix) {
    QByteArray text;
    for (const QByteArray& line : lines.mid(std::max(0, from), count)) {
        text += prefix + line + '\n';
    }
    return text.isEmpty() ? prefix + QByteArray("(end)\n") : text;
}

/// The lines of a trace whose kind is one of `kinds`, unchanged and in their order.
inline QByteArrayList linesOfKinds(const QByteArray& trace, const QSet<QByteArray>& kinds) {
    QByteArrayList found;
    for (const QByteArray& line : trace.split('\n')) {
        const QByteArray kind = QJsonDocument::fromJson(line).object().value("kind").toString().toUtf8();
        if (!line.isEmpty() && (kinds.contains(kind) || kind.isEmpty())) {
            found.append(line);  // what is no trace line never goes unnoticed
        }
    }
    return found;
}

/// Empty when both are the same to the byte. Otherwise a report for a person: where they first differ, what
/// stood there before, and how each goes on.
inline QByteArray compareTraces(const QByteArrayList& expected, const QByteArrayList& actual) {
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
