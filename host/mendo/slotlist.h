#pragma once

#include <QString>
#include <QVariant>

#include <memory>

namespace mendo {

struct Branch;
class ModuleObject;

/// The place of one child in its parent: a plain record of name, value and children or, once somebody
/// has asked for the child, the child's object, which then holds value and children itself.
///
/// The name of a list element is null until somebody asks for it. A slot only points at its object;
/// whoever takes a slot out of a branch decides what becomes of the object.
class Slot {
public:
    Slot() = default;
    explicit Slot(const QString& slotName) : name(slotName) {}
    Slot(Slot&& other) noexcept;
    Slot& operator=(Slot&& other) noexcept;
    ~Slot();

    /// Children of a record; null where it has none and for an object.
    Branch* branch() const { return content_ & objectTag ? nullptr : reinterpret_cast<Branch*>(content_); }
    /// The record's branch, made where missing.
    Branch& ensureBranch();
    void setBranch(std::unique_ptr<Branch> branch);
    std::unique_ptr<Branch> takeBranch();

    /// Null as long as the child is a record.
    ModuleObject* object() const {
        return content_ & objectTag ? reinterpret_cast<ModuleObject*>(content_ & ~objectTag) : nullptr;
    }
    void setObject(ModuleObject* object);

    QString name;
    QVariant value;

private:
    static constexpr quintptr objectTag = 1;
    void drop();
    quintptr content_ = 0;  // nothing, a Branch, or with the lowest bit set a ModuleObject
};

/// A sequence of slots with a gap at the place of the last change: access by position in constant
/// time, and a run of insertions or removals at neighbouring places without moving the rest each time.
class SlotList {
public:
    SlotList() = default;
    SlotList(SlotList&& other) noexcept;
    SlotList& operator=(SlotList&& other) noexcept;
    ~SlotList();

    int size() const { return size_; }
    Slot& operator[](int position) { return data_[position < gap_ ? position : position + gapSize()]; }
    const Slot& operator[](int position) const {
        return data_[position < gap_ ? position : position + gapSize()];
    }
    void reserve(int capacity);
    void insert(int position, Slot&& slot);
    void append(Slot&& slot) { insert(size_, std::move(slot)); }
    Slot take(int position);

private:
    int gapSize() const { return capacity_ - size_; }
    void moveGap(int position);

    Slot* data_ = nullptr;
    int size_ = 0;
    int capacity_ = 0;
    int gap_ = 0;
};

}  // namespace mendo
