#include "flight/ringfile.h"

#include "flight/ringlayout.h"
#include "flight/ringreader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <unistd.h>
#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>

namespace flight {

using namespace ring;

namespace {

constexpr qint64 mostBytes = qint64(1) << 30;

/// All of the file is allotted now, so that a full disk cannot end the process later.
bool allot(int file, qint64 bytes) {
    if (::ftruncate(file, bytes) != 0) {
        return false;
    }
    const int failure = ::posix_fallocate(file, 0, bytes);
    if (failure == 0) {
        return true;
    }
    // A file with holes would be taken for a whole one the next time.
    const bool isEmptied = ::ftruncate(file, 0) == 0;
    errno = isEmptied ? failure : errno;
    return false;
}

/// Makes room for a new file where one of another size or layout stands.
bool keepOld(const QString& path) {
    QFile::remove(path + QStringLiteral(".old"));
    return QFile::rename(path, path + QStringLiteral(".old"));
}

/// Whether the file is empty, a recording, or one that was never begun. Anything else is somebody's.
bool mayReplace(int file) {
    char start[sizeof magic] = {};
    const ssize_t count = ::pread(file, start, sizeof start, 0);
    const char never[sizeof magic] = {};
    return count == 0 || std::memcmp(start, magic, sizeof magic) == 0 ||
           (count == ssize_t(sizeof start) && std::memcmp(start, never, sizeof never) == 0);
}

/// Opens and locks the file; -1 when that fails.
int openLocked(const QString& path) {
    const int file = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (file >= 0 && ::flock(file, LOCK_EX | LOCK_NB) != 0) {
        const int failure = errno;
        ::close(file);
        errno = failure;
        return -1;
    }
    return file;
}

}  // namespace

QString RingProblem::text() const {
    switch (kind) {
        case Kind::InUse:
            return QStringLiteral("another process writes to it");
        case Kind::NoRecording:
            return QStringLiteral("is another file, no recording");
        case Kind::System:
            break;
    }
    return reason.text();
}

std::unique_ptr<RingFile> RingFile::open(const QString& path, qint64 bytes, RingProblem* problem) {
    const qint64 wanted = std::min(bytes, mostBytes) + qint64(segmentBytes) - 1;
    const auto segments = quint32(std::max<qint64>(fewestSegments, wanted / qint64(segmentBytes)));
    const qint64 size = qint64(headBytes) + qint64(segments) * qint64(segmentBytes);
    QDir().mkpath(QFileInfo(path).absolutePath());
    const auto fail = [problem](int file) {
        *problem = {errno == EWOULDBLOCK ? RingProblem::Kind::InUse : RingProblem::Kind::System,
                    mendo::systemReason(errno)};
        if (file >= 0) {
            ::close(file);
        }
        return nullptr;
    };
    int file = openLocked(path);
    if (file >= 0 && !mayReplace(file)) {
        ::close(file);
        problem->kind = RingProblem::Kind::NoRecording;
        return nullptr;
    }
    const qint64 before = file < 0 ? 0 : QFileInfo(path).size();
    if (before > 0 && before != size) {
        if (!keepOld(path)) {
            return fail(file);
        }
        ::close(file);
        file = openLocked(path);
    }
    if (file < 0 || (before != size && !allot(file, size))) {
        return fail(file);
    }
    void* const memory = ::mmap(nullptr, std::size_t(size), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    if (memory == MAP_FAILED) {
        return fail(file);
    }
    std::unique_ptr<RingFile> ring(new RingFile(file, static_cast<char*>(memory), segments));
    if (before == size && ring->isOurs(segments)) {
        ring->resume();
    } else {
        ring->begin(segments);
    }
    return ring;
}

RingFile::RingFile(int file, char* memory, quint32 segments)
    : file_(file), memory_(memory), segments_(segments) {}

RingFile::~RingFile() {
    ::munmap(memory_, headBytes + std::size_t(segments_) * segmentBytes);
    ::close(file_);
}

qint64 RingFile::capacity() const {
    return qint64(segments_) * qint64(segmentBytes);
}

bool RingFile::isOurs(quint32 segments) const {
    FileHead head{};
    std::memcpy(&head, memory_, sizeof head);
    return std::memcmp(head.magic, magic, sizeof magic) == 0 && head.crc == crcOf(head) &&
           head.segmentBytes == segmentBytes && head.segments == segments;
}

void RingFile::begin(quint32 segments) {
    FileHead head{};
    std::memcpy(head.magic, magic, sizeof magic);
    head.segmentBytes = quint32(segmentBytes);
    head.segments = segments;
    head.crc = crcOf(head);
    std::memcpy(memory_, &head, sizeof head);
    nextSegment();
}

/// Goes on in a new segment behind the newest one.
void RingFile::resume() {
    const RingEnd end =
        endOf(QByteArray::fromRawData(memory_, int(headBytes + std::size_t(segments_) * segmentBytes)));
    sequence_ = end.sequence;
    records_ = end.records;
    nextSegment();
}

char* RingFile::segment(quint64 sequence) const {
    return memory_ + headBytes + std::size_t((sequence - 1) % segments_) * segmentBytes;
}

void RingFile::nextSegment() {
    char* const place = segment(++sequence_);
    std::memset(place, 0, segmentBytes);
    SegmentHead head{};
    head.magic = segmentMagic;
    head.sequence = sequence_;
    head.firstRecord = records_ + 1;
    head.crc = crcOf(head);
    std::atomic_signal_fence(std::memory_order_seq_cst);
    std::memcpy(place, &head, sizeof head);
    used_ = sizeof head;
}

std::size_t RingFile::room() const {
    return used_ + sizeof(FrameHead) < segmentBytes ? segmentBytes - used_ - sizeof(FrameHead) : 0;
}

/// The length is written last: what a process that is killed has not finished is no frame.
void RingFile::putFrame(quint8 part, const char* bytes, std::size_t count) {
    char* const place = segment(sequence_) + used_;
    FrameHead head{};
    head.part = part;
    head.crc = crcOf(sequence_, part, bytes, count);
    std::memcpy(place + sizeof head, bytes, count);
    std::memcpy(place, &head, sizeof head);
    std::atomic_thread_fence(std::memory_order_release);
    const auto length = quint32(count);
    std::memcpy(place, &length, sizeof length);
    used_ += sizeof head + count;
    position_ += qint64(sizeof head + count);
}

quint64 RingFile::append(const Record& record) {
    const QByteArray bytes = record.encoded();
    const char* from = bytes.constData();
    auto left = std::size_t(bytes.size());
    bool isFirst = true;
    constexpr std::size_t leastPiece = 256;
    while (left > 0) {
        if (room() < std::min(left, leastPiece)) {
            position_ += qint64(segmentBytes - used_);
            nextSegment();
        }
        const std::size_t count = std::min(left, room());
        const bool isLast = count == left;
        putFrame(isFirst ? (isLast ? Whole : First) : (isLast ? Last : Middle), from, count);
        from += count;
        left -= count;
        records_ += isFirst ? 1 : 0;  // it has begun
        isFirst = false;
    }
    return records_;
}

}  // namespace flight
