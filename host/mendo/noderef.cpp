#include "mendo/noderef.h"

#include "mendo/graveyard.h"

#include <algorithm>

namespace mendo {

int NodeRef::find(QStringView element) const {
    Branch* children = branch();
    if (!children) {
        return -1;
    }
    const int position = positionOfElement(element);
    if (position >= 0) {
        return position < children->size() ? position : -1;
    }
    return children->find(element);
}

void NodeRef::dropChildren() const {
    Branch* children = branch();
    if (!children) {
        return;
    }
    children->forgetIndex();
    const SlotList dropped = std::move(children->entries);
    for (int i = 0; i < dropped.size(); ++i) {
        if (ModuleObject* child = dropped[i].object()) {
            child->name_ = dropped[i].name;
            child->parent_ = nullptr;
            child->hint_ = -1;
            Graveyard::instance().bury(child);
        }
    }
}

int heightOf(const NodeRef& node, int limit) {
    if (node.size() == 0 || limit <= 0) {
        return 0;
    }
    int height = 0;
    for (int i = 0; i < node.size() && height < limit; ++i) {
        height = std::max(height, 1 + heightOf(node.child(i), limit - 1));
    }
    return height;
}

}  // namespace mendo
