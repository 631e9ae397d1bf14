#include "mendo/pathcache.h"

#include <QString>

#include <array>
#include <cstring>

namespace mendo {

struct PathCache::Entry {
    bool isFor(const ModuleObject* start, QStringView wanted) const {
        return from == start && part.size() == wanted.size() &&
               std::memcmp(part.constData(), wanted.data(),
                           sizeof(QChar) * static_cast<std::size_t>(wanted.size())) == 0;
    }

    QString part;
    const ModuleObject* from = nullptr;
    ModuleObject* node = nullptr;
    quint64 generation = 0;
};

quint64 PathCache::generation_ = 1;

/// The entry of a path, chosen by a few of its letters: a hash of all of them would cost more than the
/// comparison.
inline PathCache::Entry& PathCache::entryFor(const ModuleObject* from, QStringView part) {
    constexpr std::size_t count = 512;
    // Never destroyed: lookups go on until the process ends.
    static auto& entries = *new std::array<Entry, count>;
    const QChar* const text = part.data();
    const auto size = static_cast<std::size_t>(part.size());
    const auto letter = [text](std::size_t i) { return static_cast<std::size_t>(text[i].unicode()); };
    // A sum of independent terms, which the processor computes in parallel.
    const std::size_t mix = size + (reinterpret_cast<std::size_t>(from) >> 4) + letter(size - 1) * 31 +
                            letter(size / 2) * 961 + letter(size - size / 4 - 1) * 29791 +
                            letter(size / 4) * 923521;
    return entries[(mix ^ (mix >> 9)) % count];
}

ModuleObject* PathCache::find(const ModuleObject* from, QStringView path) {
    const Entry& entry = entryFor(from, path);
    return entry.generation == generation_ && entry.isFor(from, path) ? entry.node : nullptr;
}

ModuleObject* PathCache::start(ModuleObject* from, QStringView path, QStringView part, QStringView* rest) {
    *rest = path;
    if (part.isEmpty() || part.size() == path.size()) {
        return from;
    }
    ModuleObject* const node = find(from, part);
    if (!node) {
        return from;
    }
    *rest = path.mid(part.size() + 1);
    return node;
}

QStringView PathCache::cacheablePart(QStringView path) {
    qsizetype end = 0;
    while (end < path.size() && path[end] != QLatin1Char('#')) {
        ++end;
    }
    if (end == path.size()) {
        return path;
    }
    return end > 0 && path[end - 1] == QLatin1Char('.') ? path.left(end - 1) : QStringView();
}

void PathCache::store(const ModuleObject* from, QStringView part, qsizetype resolved, ModuleObject* node) {
    if (resolved != part.size() || part.isEmpty()) {
        return;
    }
    Entry& entry = entryFor(from, part);
    if (!entry.isFor(from, part)) {
        entry.part = part.toString();
        entry.from = from;
    }
    entry.node = node;
    entry.generation = generation_;
}

}  // namespace mendo
