#pragma once

#include "flight/record.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace flight {

/// What a ring file holds, oldest first. A record whose end is missing, and one whose beginning was replaced,
/// are left out.
struct Recording {
    std::vector<Record> records;
    int damaged = 0;  ///< segments in which something did not fit its checksum, other than at the very end
};

/// Reads a file, also while another process writes to it, or one that was killed has left it. Nothing, with
/// the reason in `error`, when it cannot be read or is no recording.
std::optional<Recording> readRing(const QString& path, QString* error);

/// Where a writer goes on.
struct RingEnd {
    quint64 sequence = 0;  ///< of the newest segment
    quint64 records = 0;   ///< written so far
};
RingEnd endOf(const QByteArray& file);

/// The newest segments of a file as a file of its own, at most about `bytes` long; empty if the
/// file has no whole segment.
QByteArray newestOf(const QString& path, qint64 bytes);

}  // namespace flight
