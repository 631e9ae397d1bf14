#pragma once

#include <QString>

namespace mendo {

class ModuleObject;

/// Where paths led to when they were last followed. The same few paths are written over and over, while
/// the tree seldom changes its shape: any change of any node's children forgets everything.
class PathMemory {
public:
    /// Null when the path was not followed from this node since the tree last changed.
    static ModuleObject* recall(const ModuleObject* from, const QString& path);
    static void remember(const ModuleObject* from, const QString& path, ModuleObject* node);
    /// To be called whenever a child comes, goes or moves, and when a node ends.
    static void forget() { ++shape_; }

private:
    struct Place;
    static Place& placeFor(const ModuleObject* from, const QString& path);
    static bool isFor(const Place& place, const ModuleObject* from, const QString& path);
    static quint64 shape_;
};

}  // namespace mendo
