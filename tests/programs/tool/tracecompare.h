#pragma once

#include <QByteArrayList>
#include <QSet>

/// The lines of a trace whose kind is one of `kinds`, unchanged and in their order.
QByteArrayList linesOfKinds(const QByteArray& trace, const QSet<QByteArray>& kinds);

/// Empty when both are the same to the byte. Otherwise a report for a person: where they first differ, what
/// stood there before, and how each goes on.
QByteArray compareTraces(const QByteArrayList& expected, const QByteArrayList& actual);
