#pragma once

#include "flight/record.h"
#include "json/fileproblem.h"

#include <QString>

#include <memory>

namespace flight {

/// Why a file cannot be written to.
struct RingProblem {
    enum class Kind {
        InUse,        ///< another process writes to it
        NoRecording,  ///< the file is no recording
        System,       ///< see `reason`
    };
    Kind kind = Kind::System;
    mendo::FileProblem::Reason reason{mendo::FileProblem::Kind::OtherError};

    /// In plain English, without a full stop.
    [[nodiscard]] QString text() const;
};

/// Writes records to a ring file (ringlayout.h), which is mapped into memory: a record is in the file as soon
/// as it is appended, whatever becomes of the process. Nothing waits for the disk; what a loss of power
/// leaves is what the system has written by then. One writer at a time has the file.
class RingFile : public Sink {
public:
    /// Makes the file with its whole size, or goes on behind what it holds. An existing one of another size
    /// or layout is kept as PATH.old. Null where it cannot be made. `bytes` are rounded up to whole segments,
    /// 1 MiB at least.
    static std::unique_ptr<RingFile> open(const QString& path, qint64 bytes, RingProblem* problem);
    ~RingFile() override;

    quint64 append(const Record& record) override;
    qint64 position() const override { return position_; }
    qint64 capacity() const override;

private:
    RingFile(int file, char* memory, quint32 segments);
    bool isOurs(quint32 segments) const;
    void begin(quint32 segments);
    void resume();
    void nextSegment();
    char* segment(quint64 sequence) const;
    void putFrame(quint8 part, const char* bytes, std::size_t count);
    std::size_t room() const;

    int file_;
    char* memory_;
    quint32 segments_;
    quint64 sequence_ = 0;  ///< of the segment that is written
    std::size_t used_ = 0;  ///< bytes of it
    quint64 records_ = 0;   ///< ever written
    qint64 position_ = 0;
};

}  // namespace flight
