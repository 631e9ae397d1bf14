#include "flight/ringlayout.h"

#include <array>

namespace flight::ring {

namespace {

constexpr std::array<quint32, 256> makeTable() {
    std::array<quint32, 256> table{};
    for (quint32 byte = 0; byte < table.size(); ++byte) {
        quint32 value = byte;
        for (int bit = 0; bit < 8; ++bit) {
            value = (value & 1) ? 0xEDB88320U ^ (value >> 1) : value >> 1;
        }
        table[byte] = value;
    }
    return table;
}

constexpr std::array<quint32, 256> table = makeTable();

}  // namespace

quint32 crc32(const void* bytes, std::size_t count, quint32 crc) {
    const auto* const data = static_cast<const quint8*>(bytes);
    crc = ~crc;
    for (std::size_t i = 0; i < count; ++i) {
        // cppcheck-suppress objectIndex  ; the bytes of a number
        crc = table[(crc ^ data[i]) & 0xFFU] ^ (crc >> 8);
    }
    return ~crc;
}

quint32 crcOf(const FileHead& head) {
    return crc32(&head.segments, sizeof head.segments, crc32(&head.segmentBytes, sizeof head.segmentBytes));
}

quint32 crcOf(const SegmentHead& head) {
    return crc32(&head.firstRecord, sizeof head.firstRecord, crc32(&head.sequence, sizeof head.sequence));
}

quint32 crcOf(quint64 sequence, quint8 part, const char* bytes, std::size_t count) {
    const quint32 crc = crc32(&part, sizeof part, crc32(&sequence, sizeof sequence));
    return crc32(bytes, count, crc);
}

}  // namespace flight::ring
