#include "mendo/graveyard.h"

#include "mendo/moduleobject.h"

#include <QThread>

namespace mendo {

Graveyard& Graveyard::instance() {
    // Never destroyed: nodes may be removed by whatever ends last in the process.
    static auto* graveyard = new Graveyard;
    return *graveyard;
}

void Graveyard::bury(ModuleObject* node) {
    node->removed_ = true;
    node->hint_ = static_cast<int>(nodes_.size());
    nodes_.push_back(node);
    QAbstractEventDispatcher* dispatcher = QAbstractEventDispatcher::instance();
    if (dispatcher != dispatcher_) {
        dispatcher_ = dispatcher;
        if (dispatcher) {
            connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, &Graveyard::onAboutToBlock);
        }
    }
}

void Graveyard::release(ModuleObject* node) {
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

void Graveyard::purge() {
    while (!nodes_.empty()) {
        delete nodes_.back();  // leaves through release()
    }
}

void Graveyard::onAboutToBlock() {
    if (QThread::currentThread()->loopLevel() > outermostLoop_) {
        return;
    }
    purge();
    if (dispatcher_) {
        disconnect(dispatcher_, nullptr, this, nullptr);
        dispatcher_.clear();
    }
}

}  // namespace mendo
