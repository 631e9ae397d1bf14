#pragma once

#include <QAbstractEventDispatcher>
#include <QObject>
#include <QPointer>

#include <vector>

namespace mendo {

class ModuleObject;

/// The removed nodes, kept until nobody on the stack can hold one any more: when the event
/// dispatcher is about to wait and no loop runs beyond the outermost one.
class Graveyard : public QObject {
    Q_OBJECT
public:
    static Graveyard& instance();

    /// Takes over a detached node.
    void bury(ModuleObject* node);
    /// Gives a node back, which is put into a tree again or deleted by somebody else.
    void release(ModuleObject* node);
    void purge();
    void setOutermostLoop(int level) { outermostLoop_ = level; }

private:
    Graveyard() = default;
    void onAboutToBlock();

    std::vector<ModuleObject*> nodes_;
    QPointer<QAbstractEventDispatcher> dispatcher_;
    int outermostLoop_ = 0;
};

}  // namespace mendo
