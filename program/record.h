#pragma once

#include "mendo/branch.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QLatin1String>
#include <QString>
#include <QVariant>

#include <variant>

namespace prog {

/// A list of JSON values that are read when they are asked for, so that a long file needs no memory for all
/// of them at once.
class ElementSource {
public:
    virtual ~ElementSource() = default;
    [[nodiscard]] virtual int elementCount() const = 0;
    /// `position` is one of the list.
    [[nodiscard]] virtual QJsonValue element(int position) const = 0;

protected:
    ElementSource() = default;
    ElementSource(const ElementSource&) = default;
    ElementSource& operator=(const ElementSource&) = default;
};

/// A node of the data tree, or a value of a JSON document, read by the same rules.
///
/// What is missing, or does not convert, gives the default; text and numbers convert both ways (the rules
/// of mendo::ModuleObject's typed values). Reading makes no objects of the tree's records. A record of a
/// node is valid until the tree changes.
class Record {
public:
    Record(const mendo::ModuleObject* node);  // NOLINT(google-explicit-constructor)
    Record(const QJsonValue& json);           // NOLINT(google-explicit-constructor)
    Record(const QJsonObject& json);          // NOLINT(google-explicit-constructor)
    /// The list, which must outlive the record.
    Record(const ElementSource& list);  // NOLINT(google-explicit-constructor)

    /// What stands at a dotted path of names.
    [[nodiscard]] Record at(QLatin1String path) const;
    /// Element of a list by its position.
    [[nodiscard]] Record at(int position) const;

    /// Whether there is such a node or entry; null is one.
    [[nodiscard]] bool exists() const;
    /// Neither a value nor a map nor a list: null, or nothing at all.
    [[nodiscard]] bool isMissing() const;
    [[nodiscard]] bool isMap() const;
    [[nodiscard]] bool isList() const;
    /// Number of children.
    [[nodiscard]] int size() const;
    /// Calls `visit(name, record)` for each entry of a map, in its order.
    template <typename Visit>
    void eachEntry(Visit&& visit) const;

    /// Own value; invalid for a map, a list and null.
    [[nodiscard]] QVariant value() const;
    [[nodiscard]] int integer(int def = 0) const;
    [[nodiscard]] double number(double def = 0.0) const;
    [[nodiscard]] bool flag(bool def = false) const;
    [[nodiscard]] QString text() const;

private:
    explicit Record(const mendo::NodeRef& node) : source_(node) {}
    [[nodiscard]] Record child(QLatin1String name) const;
    [[nodiscard]] const mendo::NodeRef* node() const { return std::get_if<mendo::NodeRef>(&source_); }
    [[nodiscard]] const ElementSource* list() const;
    [[nodiscard]] QJsonValue json() const;

    std::variant<QJsonValue, mendo::NodeRef, const ElementSource*> source_;
};

template <typename Visit>
void Record::eachEntry(Visit&& visit) const {
    if (!isMap()) {
        return;
    }
    if (node()) {
        for (int i = 0; i < node()->size(); ++i) {
            visit(node()->branch()->entries[static_cast<std::size_t>(i)].name, Record(node()->child(i)));
        }
        return;
    }
    const QJsonObject entries = json().toObject();
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        visit(entry.key(), Record(*entry));
    }
}

}  // namespace prog
