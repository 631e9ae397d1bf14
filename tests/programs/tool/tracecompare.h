#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QSet>

/// The lines of a trace whose kind is one of `kinds`, unchanged and in their order.
QByteArrayList linesOfKinds(const QByteArray& trace, const QSet<QByteArray>& kinds);

/// Empty when both are the same to the byte. Otherwise a report for a person: where they first
/// differ, both lines there whole, and what stands around them in two columns.
QByteArray compareTraces(const QByteArrayList& expected, const QByteArrayList& actual);
