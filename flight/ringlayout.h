#pragma once

#include <QtGlobal>

#include <cstddef>

/// How a ring file is laid out. All numbers are little-endian.
///
/// A page with the file's head, then segments of equal size. A segment has a head and frames one behind the
/// other; the first frame of length 0 ends it. A record is one frame, or several where it reaches over the
/// end of a segment. Segments are numbered through; the one with the number n stands at the place
/// (n - 1) modulo the count of segments, so a new one replaces the oldest.
namespace flight::ring {

constexpr char magic[8] = {'L', 'U', 'M', 'O', 'F', 'L', 'T', '1'};
constexpr quint32 segmentMagic = 0x31474553;  // "SEG1"
constexpr std::size_t headBytes = 4096;
constexpr std::size_t segmentBytes = 64 * 1024;
constexpr int fewestSegments = 16;

struct FileHead {
    char magic[8];
    quint32 segmentBytes;
    quint32 segments;
    quint32 crc;  ///< of the two numbers
};

struct SegmentHead {
    quint32 magic;
    quint32 crc;  ///< of the two numbers below
    quint64 sequence;
    quint64 firstRecord;  ///< number of the first record that begins in this segment
};

enum Part : quint8 { Whole, First, Middle, Last };

struct FrameHead {
    quint32 length;  ///< of the bytes that follow; written last. 0: no frame
    quint32 crc;     ///< of the segment's number, the part and the bytes
    quint8 part;
    quint8 reserved[3];
};

/// CRC-32 (polynomial 0xEDB88320), continued from `crc`.
quint32 crc32(const void* bytes, std::size_t count, quint32 crc = 0);
quint32 crcOf(const FileHead& head);
quint32 crcOf(const SegmentHead& head);
quint32 crcOf(quint64 sequence, quint8 part, const char* bytes, std::size_t count);

}  // namespace flight::ring
