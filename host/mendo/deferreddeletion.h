#pragma once

#include <QAbstractEventDispatcher>
#include <QObject>
#include <QPointer>

#include <vector>

namespace mendo {

class ModuleObject;

/// The removed nodes. Code on the stack may still hold one, so they are deleted when the event dispatcher is
/// about to wait and no loop runs inside the outermost one.
class DeferredDeletion : public QObject {
    Q_OBJECT
public:
    static DeferredDeletion& instance();

    /// Takes over a detached node.
    void add(ModuleObject* node);
    /// Gives up a node that is put into a tree again, or is being deleted. Any other node is ignored.
    void remove(ModuleObject* node);
    void deleteAll();
    void setOutermostLoop(int level) { outermostLoop_ = level; }

private:
    DeferredDeletion() = default;
    void onAboutToBlock();

    std::vector<ModuleObject*> nodes_;
    QPointer<QAbstractEventDispatcher> dispatcher_;
    int outermostLoop_ = 0;
};

}  // namespace mendo
