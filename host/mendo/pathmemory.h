#pragma once

#include <QString>
#include <QStringView>

namespace mendo {

class ModuleObject;

/// Where paths led to when they were last followed. The same few paths are written over and over, while
/// the tree seldom changes its shape: any change of any node's children forgets everything.
///
/// Of a path through positions ("lumo.param.#7.power") only the part before the first position is kept:
/// of such paths there is no end.
class PathMemory {
public:
    /// The node as far as the path is known from this node, and in `rest` what remains to be followed from
    /// there. Null, and `rest` as it was, when the path was not followed since the tree last changed.
    static ModuleObject* recall(const ModuleObject* from, const QString& path, QStringView* rest);
    /// The part of the path that is kept; empty when there is none.
    static QStringView kept(QStringView path);
    /// To be told, of a path with that kept part, how many of its letters lead to `node`.
    static void remember(const ModuleObject* from, QStringView part, qsizetype followed, ModuleObject* node);
    /// To be called whenever a child comes, goes or moves, and when a node ends.
    static void forget() { ++shape_; }

private:
    struct Place;
    static Place& placeFor(const ModuleObject* from, QStringView part);
    static ModuleObject* known(const ModuleObject* from, QStringView part);
    static quint64 shape_;
};

}  // namespace mendo
