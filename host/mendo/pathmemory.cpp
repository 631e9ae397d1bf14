#include "mendo/pathmemory.h"

#include <QString>

#include <array>
#include <cstring>

namespace mendo {

struct PathMemory::Place {
    bool isFor(const ModuleObject* start, QStringView wanted) const {
        return from == start && part.size() == wanted.size() &&
               std::memcmp(part.constData(), wanted.data(),
                           sizeof(QChar) * static_cast<std::size_t>(wanted.size())) == 0;
    }

    QString part;
    const ModuleObject* from = nullptr;
    ModuleObject* node = nullptr;
    quint64 shape = 0;
};

quint64 PathMemory::shape_ = 1;

/// One place for a path, chosen by a few of its letters: reading them all takes longer than comparing.
inline PathMemory::Place& PathMemory::placeFor(const ModuleObject* from, QStringView part) {
    constexpr std::size_t count = 512;
    // Never destroyed: nodes are looked up until the process ends.
    static auto& places = *new std::array<Place, count>;
    const QChar* const text = part.data();
    const auto size = static_cast<std::size_t>(part.size());
    const auto letter = [text](std::size_t place) { return static_cast<std::size_t>(text[place].unicode()); };
    // A sum, whose parts the processor works out side by side.
    const std::size_t mix = size + (reinterpret_cast<std::size_t>(from) >> 4) + letter(size - 1) * 31 +
                            letter(size / 2) * 961 + letter(size - size / 4 - 1) * 29791 +
                            letter(size / 4) * 923521;
    return places[(mix ^ (mix >> 9)) % count];
}

ModuleObject* PathMemory::recall(const ModuleObject* from, QStringView path) {
    const Place& place = placeFor(from, path);
    return place.shape == shape_ && place.isFor(from, path) ? place.node : nullptr;
}

ModuleObject* PathMemory::start(ModuleObject* from, QStringView path, QStringView part, QStringView* rest) {
    *rest = path;
    if (part.isEmpty() || part.size() == path.size()) {
        return from;
    }
    ModuleObject* const node = recall(from, part);
    if (!node) {
        return from;
    }
    *rest = path.mid(part.size() + 1);
    return node;
}

QStringView PathMemory::kept(QStringView path) {
    qsizetype end = 0;
    while (end < path.size() && path[end] != QLatin1Char('#')) {
        ++end;
    }
    if (end == path.size()) {
        return path;
    }
    return end > 0 && path[end - 1] == QLatin1Char('.') ? path.left(end - 1) : QStringView();
}

void PathMemory::remember(const ModuleObject* from, QStringView part, qsizetype followed,
                          ModuleObject* node) {
    if (followed != part.size() || part.isEmpty()) {
        return;
    }
    Place& place = placeFor(from, part);
    if (!place.isFor(from, part)) {
        place.part = part.toString();
        place.from = from;
    }
    place.node = node;
    place.shape = shape_;
}

}  // namespace mendo
