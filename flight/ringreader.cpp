#include "flight/ringreader.h"

#include "flight/ringlayout.h"

#include <QFile>

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace flight {

using namespace ring;

namespace {

struct Segment {
    SegmentHead head;
    const char* bytes;
};

std::optional<FileHead> headOf(const QByteArray& file) {
    FileHead head{};
    if (file.size() < int(headBytes)) {
        return std::nullopt;
    }
    std::memcpy(&head, file.constData(), sizeof head);
    const bool isWhole = std::memcmp(head.magic, magic, sizeof magic) == 0 && head.crc == crcOf(head) &&
                         head.segmentBytes == segmentBytes;
    return isWhole ? std::optional<FileHead>(head) : std::nullopt;
}

/// The segments that follow each other without a gap up to the newest, oldest first.
std::vector<Segment> segmentsOf(const QByteArray& file, quint32 count) {
    std::vector<Segment> found;
    for (quint32 place = 0; place < count; ++place) {
        const std::size_t offset = headBytes + std::size_t(place) * segmentBytes;
        if (offset + segmentBytes > std::size_t(file.size())) {
            break;
        }
        Segment segment{{}, file.constData() + offset};
        std::memcpy(&segment.head, segment.bytes, sizeof segment.head);
        if (segment.head.magic == segmentMagic && segment.head.crc == crcOf(segment.head)) {
            found.push_back(segment);
        }
    }
    std::sort(found.begin(), found.end(),
              [](const Segment& a, const Segment& b) { return a.head.sequence < b.head.sequence; });
    auto first = found.end();
    while (first != found.begin() &&
           (first == found.end() || std::prev(first)->head.sequence + 1 == first->head.sequence)) {
        --first;
    }
    found.erase(found.begin(), first);
    return found;
}

/// Puts the frames of segments together again.
class Joiner {
public:
    explicit Joiner(Recording* into) : into_(into) {}

    /// Reads a segment. False where something in it does not fit its checksum.
    bool read(const Segment& segment) {
        number_ = segment.head.firstRecord;
        for (std::size_t at = sizeof(SegmentHead); at + sizeof(FrameHead) < segmentBytes;) {
            FrameHead head{};
            std::memcpy(&head, segment.bytes + at, sizeof head);
            if (head.length == 0) {
                return true;
            }
            at += sizeof head;
            const char* const bytes = segment.bytes + at;
            if (head.part > Last || head.length > segmentBytes - at ||
                head.crc != crcOf(segment.head.sequence, head.part, bytes, head.length)) {
                isOpen_ = false;
                return false;
            }
            take(Part(head.part), QByteArray::fromRawData(bytes, int(head.length)));
            at += head.length;
        }
        return true;
    }

private:
    void take(Part part, const QByteArray& bytes) {
        if (part == Whole || part == First) {
            partsNumber_ = number_++;
            parts_ = QByteArray(bytes.constData(), bytes.size());
            isOpen_ = true;
        } else if (isOpen_) {
            parts_ += bytes;
        }
        if (isOpen_ && (part == Whole || part == Last)) {
            isOpen_ = false;
            Record record;
            if (Record::decode(parts_, &record)) {
                record.number = partsNumber_;
                into_->records.push_back(std::move(record));
            }
        }
    }

    Recording* into_;
    quint64 number_ = 0;  ///< of the record that begins next
    QByteArray parts_;
    quint64 partsNumber_ = 0;
    bool isOpen_ = false;
};

}  // namespace

std::optional<Recording> readRing(const QString& path, QString* error) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = file.errorString();
        return std::nullopt;
    }
    const QByteArray bytes = file.readAll();
    const std::optional<FileHead> head = headOf(bytes);
    if (!head) {
        *error = QStringLiteral("is no recording");
        return std::nullopt;
    }
    Recording recording;
    Joiner joiner(&recording);
    const std::vector<Segment> segments = segmentsOf(bytes, head->segments);
    for (const Segment& segment : segments) {
        const bool isNewest = segment.head.sequence == segments.back().head.sequence;
        if (!joiner.read(segment) && !isNewest) {
            ++recording.damaged;
        }
    }
    return recording;
}

RingEnd endOf(const QByteArray& file) {
    RingEnd end;
    const std::optional<FileHead> head = headOf(file);
    const std::vector<Segment> segments = segmentsOf(file, head ? head->segments : 0);
    if (!segments.empty()) {
        Recording last;
        Joiner joiner(&last);
        joiner.read(segments.back());
        end.sequence = segments.back().head.sequence;
        end.records = segments.back().head.firstRecord - 1;
        if (!last.records.empty()) {
            end.records = std::max(end.records, last.records.back().number);
        }
    }
    return end;
}

QByteArray newestOf(const QString& path, qint64 bytes) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const qint64 size = file.size();
    const uchar* const mapped = file.map(0, size);
    if (!mapped || size > std::numeric_limits<int>::max()) {
        return {};
    }
    const QByteArray whole = QByteArray::fromRawData(reinterpret_cast<const char*>(mapped), int(size));
    std::optional<FileHead> head = headOf(whole);
    if (!head) {
        return {};
    }
    const std::vector<Segment> all = segmentsOf(whole, head->segments);
    const auto count = std::min<std::size_t>(all.size(), std::size_t(bytes) / segmentBytes);
    head->segments = quint32(count);
    head->crc = crcOf(*head);
    QByteArray result(int(headBytes), '\0');
    std::memcpy(result.data(), &*head, sizeof *head);
    for (std::size_t i = all.size() - count; i < all.size(); ++i) {
        result.append(all[i].bytes, int(segmentBytes));
    }
    return count == 0 ? QByteArray() : result;
}

}  // namespace flight
