#include "mendo/pathmemory.h"

#include <array>
#include <cstring>

namespace mendo {

struct PathMemory::Place {
    QString path;
    const ModuleObject* from = nullptr;
    ModuleObject* node = nullptr;
    quint64 shape = 0;
};

quint64 PathMemory::shape_ = 1;

/// One place for a path, chosen by a few of its letters: reading them all takes longer than comparing.
PathMemory::Place& PathMemory::placeFor(const ModuleObject* from, const QString& path) {
    constexpr std::size_t count = 512;
    // Never destroyed: nodes are looked up until the process ends.
    static auto& places = *new std::array<Place, count>;
    const QChar* const text = path.constData();
    const int size = path.size();
    std::size_t mix = static_cast<std::size_t>(size) + (reinterpret_cast<std::size_t>(from) >> 4);
    for (const int letter : {size - 1, size / 2, size - size / 4 - 1, size / 4}) {
        mix = mix * 31 + text[letter].unicode();
    }
    return places[(mix ^ (mix >> 9)) % count];
}

bool PathMemory::isFor(const Place& place, const ModuleObject* from, const QString& path) {
    return place.from == from && place.path.size() == path.size() &&
           std::memcmp(place.path.constData(), path.constData(),
                       sizeof(QChar) * static_cast<std::size_t>(path.size())) == 0;
}

ModuleObject* PathMemory::recall(const ModuleObject* from, const QString& path) {
    const Place& place = placeFor(from, path);
    return place.shape == shape_ && isFor(place, from, path) ? place.node : nullptr;
}

void PathMemory::remember(const ModuleObject* from, const QString& path, ModuleObject* node) {
    if (path.contains(QLatin1Char('#'))) {
        return;  // of paths through positions there is no end, and they seldom come again
    }
    Place& place = placeFor(from, path);
    if (!isFor(place, from, path)) {
        // A string without room of its own may lie in memory that somebody else owns.
        place.path = path.capacity() > 0 ? path : QString(path.constData(), path.size());
        place.from = from;
    }
    place.node = node;
    place.shape = shape_;
}

}  // namespace mendo
