#pragma once

#include "flight/record.h"

#include <QString>

namespace mendo {
class ModuleObject;
}

namespace flight {

/// Where a node stands in the trees that are recorded.
struct Place {
    bool isKnown = false;  ///< in one of them
    Record::Tree tree = Record::Tree::Host;
    /// The part of the state that it belongs to: a child of "lumo" or of the data root, "kord" or "rova".
    /// Null for the others, and for "lumo" itself.
    const mendo::ModuleObject* part = nullptr;
    bool isPackage = false;  ///< at or below "lumo"
    bool isPosture = false;  ///< at or below the data node of the robot's posture
};

/// The trees that are recorded: of the host's "lumo", "kord" and "rova", the data and command nodes of the
/// robot service, and the pendant's keys.
class Trees {
public:
    Trees();

    [[nodiscard]] Place placeOf(const mendo::ModuleObject* node) const;
    /// The path from the tree's root; for a key of the pendant its name.
    [[nodiscard]] static QString pathOf(const mendo::ModuleObject* node, Record::Tree tree);
    /// The node of a recorded path; the null node if the tree does not have it now.
    [[nodiscard]] mendo::ModuleObject* find(Record::Tree tree, const QString& path) const;
    [[nodiscard]] mendo::ModuleObject* root(Record::Tree tree) const;
    [[nodiscard]] mendo::ModuleObject* posture() const { return posture_; }

private:
    mendo::ModuleObject* host_;
    mendo::ModuleObject* data_;
    mendo::ModuleObject* results_;
    mendo::ModuleObject* keys_;
    mendo::ModuleObject* posture_;
    mendo::ModuleObject* aboveThat_;
};

}  // namespace flight
