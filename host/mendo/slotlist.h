#pragma once

#include <QString>
#include <QVariant>

#include <memory>

namespace mendo {

struct Branch;
class ModuleObject;

/// One child in its parent: a plain record of name, value and children or, after the first lookup, the
/// child's object, which then holds value and children.
///
/// The name of a list element is null until it is asked for. A slot does not own its object: the caller
/// of Branch::take() has to.
class Slot {
public:
    Slot() = default;
    explicit Slot(const QString& slotName) : name(slotName) {}
    Slot(Slot&& other) noexcept;
    Slot& operator=(Slot&& other) noexcept;
    ~Slot();

    /// Children of a record; null for an object and for a record without children.
    Branch* branch() const { return content_ & objectTag ? nullptr : reinterpret_cast<Branch*>(content_); }
    /// The record's branch, made if missing.
    Branch& ensureBranch();
    void setBranch(std::unique_ptr<Branch> branch);
    std::unique_ptr<Branch> takeBranch();

    /// Null for a record.
    ModuleObject* object() const {
        return content_ & objectTag ? reinterpret_cast<ModuleObject*>(content_ & ~objectTag) : nullptr;
    }
    void setObject(ModuleObject* object);

    QString name;
    QVariant value;

private:
    static constexpr quintptr objectTag = 1;
    void drop();
    quintptr content_ = 0;  // 0, a Branch*, or a ModuleObject* with the lowest bit set
};

/// A gap buffer of slots: access by position in constant time, and insertions or removals near the last
/// one without moving the other slots.
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
