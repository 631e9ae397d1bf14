#include "flight/trees.h"

#include "kord/controllermanager.h"
#include "kord/kordservice.h"
#include "mendo/modulemanager.h"
#include "program/words.h"

namespace flight {

using mendo::ModuleObject;
using Tree = Record::Tree;

Trees::Trees()
    : host_(m()->root()),
      data_(kordservice()->dataNode(QString())),
      results_(kordservice()->commandNode(QString())),
      keys_(kord::ControllerManager::cmdItemMobj(QStringLiteral("endtool.keypad.state_change"),
                                                 QStringLiteral("notify"))),
      posture_(kordservice()->dataNode(prog::key::posture)),
      aboveThat_(posture_->pmobj()) {}

Place Trees::placeOf(const ModuleObject* node) const {
    Place place;
    // Most writes by far: a number of one of its lists.
    const ModuleObject* const above = node->pmobj();
    if (node == posture_ || above == posture_ || above->pmobj() == posture_) {
        place.isKnown = true;
        place.isPosture = true;
        place.tree = Tree::Data;
        place.part = aboveThat_;
        return place;
    }
    const ModuleObject* top = nullptr;     // child of the root
    const ModuleObject* second = nullptr;  // child of that
    const ModuleObject* root = node;
    for (const ModuleObject* next = above; next != ModuleObject::null(); next = root->pmobj()) {
        place.isKnown = place.isKnown || root == keys_;
        second = top;
        top = root;
        root = next;
    }
    if (place.isKnown) {
        place.tree = Tree::Pendant;
    } else if (root == data_) {
        place.tree = Tree::Data;
        place.part = top;
        place.isKnown = top;
    } else if (root == results_) {
        place.tree = Tree::Results;
        place.isKnown = top;
    } else if (root == host_ && top) {
        const QString name = top->name();
        place.isPackage = name == prog::key::lumo;
        place.isKnown = place.isPackage || name == QLatin1String("kord") || name == QLatin1String("rova");
        place.part = place.isPackage ? second : top;
    }
    return place;
}

QString Trees::pathOf(const ModuleObject* node, Tree tree) {
    return tree == Tree::Pendant ? node->name() : node->path();
}

ModuleObject* Trees::root(Tree tree) const {
    switch (tree) {
        case Tree::Host:
            break;
        case Tree::Data:
            return data_;
        case Tree::Results:
            return results_;
        case Tree::Pendant:
            return keys_;
    }
    return host_;
}

/// The name of a command has dots of its own.
ModuleObject* Trees::find(Tree tree, const QString& path) const {
    return tree == Tree::Results || tree == Tree::Pendant ? root(tree)->c(path) : root(tree)->r(path);
}

}  // namespace flight
