#pragma once

#include <QStringView>

namespace mendo {

class ModuleObject;

/// Where paths led to when they were last followed. The same few paths are written over and over, while
/// the tree seldom changes its shape: any change of any node's children forgets everything.
///
/// Of a path through positions ("lumo.param.#7.power") only the part before the first position is kept:
/// of such paths there is no end. Hidden in the library, which calls it at every write.
class Q_DECL_HIDDEN PathMemory {
public:
    /// Where the whole path leads; null when it was not followed from this node since the tree last changed.
    static ModuleObject* recall(const ModuleObject* from, QStringView path);
    /// The part of the path that is kept; empty when there is none.
    static QStringView kept(QStringView path);
    /// Where to start following a path that is not known as a whole: `from`, or where its kept part leads.
    /// `rest` becomes what remains to be followed from there.
    static ModuleObject* start(ModuleObject* from, QStringView path, QStringView part, QStringView* rest);
    /// To be told, of a path with that kept part, how many of its letters lead to `node`.
    static void remember(const ModuleObject* from, QStringView part, qsizetype followed, ModuleObject* node);
    /// To be called whenever a child comes, goes or moves, and when a node ends.
    static void forget() { ++shape_; }

private:
    struct Place;
    static Place& placeFor(const ModuleObject* from, QStringView part);
    static quint64 shape_;
};

}  // namespace mendo
