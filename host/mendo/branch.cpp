#include "mendo/branch.h"

#include "mendo/deferreddeletion.h"
#include "mendo/pathcache.h"

#include <QSet>
#include <QStringBuilder>

#include <algorithm>
#include <climits>
#include <utility>

namespace mendo {

namespace {

// Maps up to this size are searched linearly.
constexpr int linearSearchSize = 8;
constexpr QLatin1String generatedPrefix("id");

/// The address of a string's shared data, which is different for each name of a branch.
const void* textOf(const QString& name) {
    return const_cast<QString&>(name).data_ptr();
}

/// Compares length and first letter before the whole name, because most names differ there.
bool isNamed(const Slot& slot, QStringView name) {
    const QString& own = slot.name;
    if (own.size() != name.size() || own.isNull()) {
        return false;
    }
    return own.isEmpty() || (own.front() == name.front() && QStringView(own) == name);
}

}  // namespace

Slot::Slot(Slot&& other) noexcept
    : name(std::move(other.name)),
      value(std::move(other.value)),
      content_(std::exchange(other.content_, 0)) {}

Slot& Slot::operator=(Slot&& other) noexcept {
    if (this != &other) {
        drop();
        name = std::exchange(other.name, QString());
        value = std::exchange(other.value, QVariant());
        content_ = std::exchange(other.content_, 0);
    }
    return *this;
}

Slot::~Slot() {
    drop();
}

void Slot::drop() {
    if (content_ && !(content_ & objectTag)) {
        delete reinterpret_cast<Branch*>(content_);
    }
    content_ = 0;
}

Branch& Slot::ensureBranch() {
    Q_ASSERT(!object());
    if (!content_) {
        content_ = reinterpret_cast<quintptr>(new Branch);
    }
    return *branch();
}

std::unique_ptr<Branch> Slot::takeBranch() {
    std::unique_ptr<Branch> taken(branch());
    if (taken) {
        content_ = 0;
    }
    return taken;
}

void Slot::setObject(ModuleObject* object) {
    drop();
    content_ = reinterpret_cast<quintptr>(object) | objectTag;
}

Branch::Names& Branch::names() {
    if (!names_) {
        names_ = std::make_unique<Names>();
    }
    return *names_;
}

/// The position nearest to `from` for which `matches` holds. -1 when a longer search would cost more than
/// renewing the hints. Each change of the branch moves a child by one position at most.
template <typename Matches>
int Branch::search(int from, Matches matches) {
    constexpr int minReach = 16;
    const int reach = std::max(minReach, size() - searched_);
    for (int distance = 0; distance <= reach; ++distance) {
        for (const int position : {from - distance, from + distance}) {
            if (position >= 0 && position < size() && matches(position)) {
                searched_ += distance;
                return position;
            }
        }
    }
    searched_ = 0;
    return -1;
}

int Branch::find(QStringView name) {
    if (size() <= linearSearchSize) {
        for (int i = 0; i < size(); ++i) {
            if (isNamed(entries[i], name)) {
                return i;
            }
        }
        return -1;
    }
    if (!names_ || !names_->complete) {
        buildIndex();
    }
    const auto entry = names_->index.constFind(name);
    if (entry == names_->index.constEnd()) {
        return -1;
    }
    const void* const text = entry->text;
    const int position =
        search(entry->hint + names_->drift, [this, text](int i) { return textOf(entries[i].name) == text; });
    if (position >= 0) {
        names_->drift = position - entry->hint;
        return position;
    }
    buildIndex();
    return names_->index.constFind(name)->hint;
}

int Branch::positionOf(const ModuleObject* object) {
    const int position = search(object->hint_, [&](int i) { return entries[i].object() == object; });
    if (position >= 0) {
        object->hint_ = position;
        return position;
    }
    for (int i = 0; i < size(); ++i) {
        if (const ModuleObject* child = entries[i].object()) {
            child->hint_ = i;
        }
    }
    return object->hint_;
}

void Branch::insert(int position, Slot&& slot) {
    if (!slot.name.isNull()) {
        if (kind == Kind::List) {
            reserveGenerated(slot.name);
        }
        addToIndex(slot.name, position);
    }
    PathCache::invalidate();
    entries.insert(entries.begin() + position, std::move(slot));
}

Slot Branch::take(int position) {
    PathCache::invalidate();
    Slot slot = std::move(entries[position]);
    entries.erase(entries.begin() + position);
    if (names_ && names_->complete && !slot.name.isNull()) {
        names_->index.remove(QStringView(slot.name));
    }
    return slot;
}

QString Branch::nameAt(int position) {
    Slot& slot = entries[position];
    if (slot.name.isNull() && kind == Kind::List) {
        slot.name = freshName();
        addToIndex(slot.name, position);
    }
    return slot.name;
}

void Branch::nameAll() {
    for (const Slot& slot : entries) {
        reserveGenerated(slot.name);
    }
    for (int i = 0; kind == Kind::List && i < size(); ++i) {
        if (entries[i].name.isNull()) {
            entries[i].name = generatedPrefix % QString::number(names().next++);
            addToIndex(entries[i].name, i);
        }
    }
}

QString Branch::freshName() {
    QString name;
    do {
        name = generatedPrefix + QString::number(names().next++);
    } while (find(name) >= 0);
    return name;
}

void Branch::forgetIndex() {
    PathCache::invalidate();
    if (names_) {
        names_->index.clear();
        names_->complete = false;
    }
}

void Branch::buildIndex() {
    names().index.clear();
    names_->drift = 0;
    names_->complete = true;
    for (int i = 0; i < size(); ++i) {
        if (!entries[i].name.isNull()) {
            addToIndex(entries[i].name, i);
        }
    }
}

void Branch::addToIndex(const QString& name, int position) {
    if (names_ && names_->complete) {
        names_->index.insert(QStringView(name), {textOf(name), position - names_->drift});
    }
}

void Branch::reserveGenerated(const QString& name) {
    if (!name.startsWith(generatedPrefix)) {
        return;
    }
    bool isNumber = false;
    const quint64 number = name.midRef(generatedPrefix.size()).toULongLong(&isNumber);
    if (isNumber && number >= names().next && number < ULLONG_MAX) {
        names_->next = number + 1;
    }
}

QString sharedKey(const QString& name) {
    // Records use few keys. The limits keep generated names from filling the table.
    constexpr int maxKeys = 4096;
    constexpr int maxLength = 64;
    static QSet<QString> keys;
    const auto known = keys.constFind(name);
    if (known != keys.constEnd()) {
        return *known;
    }
    if (keys.size() < maxKeys && name.size() <= maxLength) {
        keys.insert(name);
    }
    return name;
}

int numberOfElement(QStringView element) {
    qint64 number = 0;
    for (const QChar character : element.mid(1)) {
        if (character < QLatin1Char('0') || character > QLatin1Char('9')) {
            return -1;
        }
        number = number * 10 + (character.unicode() - '0');
        if (number > INT_MAX) {
            number = INT_MAX;
        }
    }
    return static_cast<int>(number);
}

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
    const std::vector<Slot> dropped = std::move(children->entries);
    for (const Slot& slot : dropped) {
        if (ModuleObject* child = slot.object()) {
            child->name_ = slot.name;
            child->parent_ = nullptr;
            child->hint_ = -1;
            DeferredDeletion::instance().add(child);
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
