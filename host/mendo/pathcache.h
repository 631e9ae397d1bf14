#pragma once

#include <QStringView>

namespace mendo {

class ModuleObject;

/// Cache of path lookups. The same few paths are written again and again, and the tree seldom changes its
/// structure; any such change invalidates the whole cache.
///
/// Of a path with a position ("lumo.param.#7.power") only the part before the position is cached, because
/// there are too many such paths. Not exported, so that its calls are fast.
class Q_DECL_HIDDEN PathCache {
public:
    /// The node at `path` below `from`; null when it is not cached.
    static ModuleObject* find(const ModuleObject* from, QStringView path);
    /// The part of the path before its first position: the whole path when it has none, empty when it
    /// starts with one.
    static QStringView cacheablePart(QStringView path);
    /// Where to start resolving a path that is not cached: the node of its cached `part`, else `from`.
    /// `rest` is set to the remaining path.
    static ModuleObject* start(ModuleObject* from, QStringView path, QStringView part, QStringView* rest);
    /// Stores `node` for `part` if the resolved length of the path is exactly that of the part.
    static void store(const ModuleObject* from, QStringView part, qsizetype resolved, ModuleObject* node);
    /// Call it whenever a child is added, removed or moved, and when a node is deleted.
    static void invalidate() { ++generation_; }

private:
    struct Entry;
    static Entry& entryFor(const ModuleObject* from, QStringView part);
    static quint64 generation_;
};

}  // namespace mendo
