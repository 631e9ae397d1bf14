// Replacing and exporting the whole content of a node. A source is first copied to separate records, which
// then replace the old content. So a node can be copied into itself.

#include "mendo/branch.h"
#include "mendo/convert.h"
#include "mendo/observer.h"

#include <QDebug>
#include <QJsonArray>
#include <QJsonObject>
#include <QSet>

#include <algorithm>
#include <limits>
#include <utility>

namespace mendo {

namespace {

using Kind = Branch::Kind;

void adopt(const NodeRef& target, Slot& content, bool merge, bool keepValue);

QVariant numberOf(const QJsonValue& json) {
    const QVariant number = json.toVariant();
    if (number.userType() != QMetaType::LongLong) {
        return number;
    }
    const qlonglong integer = number.toLongLong();
    const bool fits =
        integer >= std::numeric_limits<int>::min() && integer <= std::numeric_limits<int>::max();
    return fits ? QVariant(static_cast<int>(integer)) : number;
}

/// A text of many records, as the names of types and tools are, in memory once.
QString sharedText(const QString& text) {
    constexpr int mostTexts = 256;
    constexpr int mostCharacters = 16;
    static QSet<QString> texts;
    if (text.size() > mostCharacters || text.isEmpty()) {
        return text;
    }
    const auto known = texts.constFind(text);
    if (known != texts.constEnd()) {
        return *known;
    }
    if (texts.size() < mostTexts) {
        texts.insert(text);
    }
    return text;
}

/// Writes a JSON value to a record; content deeper than `levels` is left out.
void fill(Slot& record, const QJsonValue& json, int levels) {
    if (json.isArray()) {
        const QJsonArray array = json.toArray();
        Branch& branch = record.ensureBranch();
        branch.kind = Kind::List;
        if (levels <= 0) {
            qWarning("JSON content below the deepest level of the tree is left out");
            return;
        }
        branch.entries.reserve(array.size());
        for (const QJsonValue element : array) {
            branch.entries.emplace_back();
            fill(branch.entries.back(), element, levels - 1);
        }
    } else if (json.isObject()) {
        const QJsonObject object = json.toObject();
        Branch& branch = record.ensureBranch();
        branch.kind = Kind::Map;
        if (levels <= 0) {
            qWarning("JSON content below the deepest level of the tree is left out");
            return;
        }
        branch.entries.reserve(object.size());
        for (auto entry = object.constBegin(); entry != object.constEnd(); ++entry) {
            branch.entries.emplace_back(sharedKey(entry.key()));
            fill(branch.entries.back(), entry.value(), levels - 1);
        }
    } else if (json.isDouble()) {
        record.value = numberOf(json);
    } else if (json.isString()) {
        record.value = sharedText(json.toString());
    } else if (!json.isNull() && !json.isUndefined()) {
        record.value = json.toVariant();
    }
}

/// Copies a node to a record, without the names of list elements (they belong to their list).
void copy(Slot& record, const NodeRef& source, int levels) {
    record.value = source.value();
    const Branch* from = source.branch();
    if (!from || from->kind == Kind::Plain) {
        return;
    }
    Branch& branch = record.ensureBranch();
    branch.kind = from->kind;
    if (levels <= 0) {
        qWarning("content below the deepest level of the tree is left out");
        return;
    }
    branch.entries.reserve(from->size());
    for (int i = 0; i < from->size(); ++i) {
        branch.entries.emplace_back(branch.kind == Kind::Map ? from->entries[i].name : QString());
        copy(branch.entries.back(), source.child(i), levels - 1);
    }
}

void adoptList(const NodeRef& target, Branch& fresh, bool merge, bool keepValue) {
    Branch& branch = target.ensureBranch();
    if (!merge || branch.kind != Kind::List) {
        target.dropChildren();
    }
    branch.kind = Kind::List;
    const int common = std::min(branch.size(), fresh.size());
    for (int i = 0; i < common; ++i) {
        adopt(target.child(i), fresh.entries[i], merge, keepValue);
    }
    branch.entries.reserve(fresh.size());
    for (int i = common; i < fresh.size(); ++i) {
        branch.insert(i, std::move(fresh.entries[i]));
    }
}

void adoptMap(const NodeRef& target, Branch& fresh, bool merge, bool keepValue) {
    Branch& branch = target.ensureBranch();
    if (branch.kind != Kind::Map) {
        target.dropChildren();
    }
    branch.kind = Kind::Map;
    if (merge) {
        for (int i = 0; i < fresh.size(); ++i) {
            const int position = branch.find(fresh.entries[i].name);
            if (position >= 0) {
                adopt(target.child(position), fresh.entries[i], merge, keepValue);
            } else {
                branch.insert(branch.size(), std::move(fresh.entries[i]));
            }
        }
        return;
    }
    // Move the children that stay into the source's order and drop the others.
    for (int i = 0; branch.size() > 0 && i < fresh.size(); ++i) {
        const int position = branch.find(fresh.entries[i].name);
        if (position >= 0) {
            adopt(target.child(position), fresh.entries[i], merge, keepValue);
            fresh.entries[i] = std::move(branch.entries[position]);
        }
    }
    target.dropChildren();
    branch.entries = std::move(fresh.entries);
}

/// Replaces the target's content by the rules of ModuleObject::copyFrom.
void adopt(const NodeRef& target, Slot& content, bool merge, bool keepValue) {
    const std::unique_ptr<Branch> fresh = content.takeBranch();
    const Kind kind = fresh ? fresh->kind : Kind::Plain;
    const bool hasValue = content.value.isValid();
    const bool isEmpty = !hasValue && kind != Kind::List && (!fresh || fresh->size() == 0);
    // Older files hold {} for an empty list.
    const bool staysList = isEmpty && target.kind() == Kind::List;

    const bool valueStays =
        kind == Kind::Plain ? merge && target.size() > 0 && !hasValue : keepValue || (merge && !hasValue);
    if (!valueStays) {
        target.value() = std::move(content.value);
    }
    if (merge && (staysList || kind == Kind::Plain)) {
        return;
    }
    if (staysList) {
        target.dropChildren();
    } else if (kind == Kind::List) {
        adoptList(target, *fresh, merge, keepValue);
    } else if (kind == Kind::Map) {
        adoptMap(target, *fresh, merge, keepValue);
    } else if (target.branch()) {
        target.dropChildren();
        target.branch()->kind = Kind::Plain;
    }
}

QJsonValue jsonOf(const NodeRef& node, bool withNulls) {
    if (node.kind() == Kind::List) {
        QJsonArray array;
        for (int i = 0; i < node.size(); ++i) {
            array.append(jsonOf(node.child(i), withNulls));
        }
        return array;
    }
    if (node.kind() == Kind::Map && (node.size() > 0 || !node.value().isValid())) {
        QJsonObject object;
        for (int i = 0; i < node.size(); ++i) {
            const QJsonValue child = jsonOf(node.child(i), withNulls);
            if (withNulls || !child.isNull()) {
                object.insert(node.branch()->entries[i].name, child);
            }
        }
        return object;
    }
    return toJson(node.value());
}

}  // namespace

void ModuleObject::replaceContent(QObject* sender, Slot& content, bool notify, bool merge, bool keepValue) {
    const QVariant oldValue = value_;
    adopt(NodeRef(this), content, merge, keepValue);
    const Observed scope([&](Observer* observer) { observer->contentSet(this, sender); });
    if (notify) {
        const QVariant newValue = value_;
        emit changed(newValue, oldValue, sender);
    }
}

void ModuleObject::copyFrom(QObject* sender, const ModuleObject* source, bool notify, bool merge) {
    if (isNull()) {
        return;
    }
    Slot content;
    if (source && !source->isNull()) {
        copy(content, NodeRef(const_cast<ModuleObject*>(source)), deepest - depth());
    } else {
        // No source: a copy clears the node and keeps its kind, a merge changes nothing.
        content.ensureBranch().kind = branch_ ? branch_->kind : Kind::Plain;
        content.value = merge ? value_ : QVariant();
    }
    replaceContent(sender, content, notify, merge, false);
}

void ModuleObject::loadJson(QObject* sender, const QJsonValue& value, bool notify, bool merge,
                            bool keepValue) {
    if (value.isUndefined()) {
        return;
    }
    Slot content;
    fill(content, value, deepest - depth());
    replaceContent(sender, content, notify, merge, keepValue);
}

void ModuleObject::loadList(QObject* sender, int count, const std::function<QJsonValue(int)>& element) {
    Slot content;
    Branch& branch = content.ensureBranch();
    branch.kind = Kind::List;
    branch.entries.reserve(std::size_t(count));
    for (int i = 0; i < count; ++i) {
        branch.entries.emplace_back();
        fill(branch.entries.back(), element(i), deepest - depth() - 1);
    }
    replaceContent(sender, content, true, false, false);
}

QJsonValue ModuleObject::exportToJson(bool withNulls) const {
    return jsonOf(NodeRef(const_cast<ModuleObject*>(this)), withNulls);
}

}  // namespace mendo
