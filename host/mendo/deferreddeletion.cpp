#include "mendo/deferreddeletion.h"

#include "mendo/moduleobject.h"

#include <QThread>

namespace mendo {

DeferredDeletion& DeferredDeletion::instance() {
    // Never destroyed: nodes are removed until the process ends.
    static auto* instance = new DeferredDeletion;
    return *instance;
}

void DeferredDeletion::add(ModuleObject* node) {
    node->removed_ = true;
    node->hint_ = static_cast<int>(nodes_.size());
    nodes_.push_back(node);
    QAbstractEventDispatcher* dispatcher = QAbstractEventDispatcher::instance();
    if (dispatcher != dispatcher_) {
        dispatcher_ = dispatcher;
        if (dispatcher) {
            connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this,
                    &DeferredDeletion::onAboutToBlock);
        }
    }
}

void DeferredDeletion::remove(ModuleObject* node) {
    if (!node->removed_) {
        return;
    }
    const auto place = static_cast<std::size_t>(node->hint_);
    nodes_[place] = nodes_.back();
    nodes_[place]->hint_ = node->hint_;
    nodes_.pop_back();
    node->removed_ = false;
    node->hint_ = -1;
}

void DeferredDeletion::deleteAll() {
    while (!nodes_.empty()) {
        delete nodes_.back();  // its destructor calls remove()
    }
}

void DeferredDeletion::onAboutToBlock() {
    if (QThread::currentThread()->loopLevel() > outermostLoop_) {
        return;
    }
    deleteAll();
    if (dispatcher_) {
        disconnect(dispatcher_, nullptr, this, nullptr);
        dispatcher_.clear();
    }
}

}  // namespace mendo
