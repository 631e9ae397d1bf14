#include "mendo/slotlist.h"

#include "mendo/branch.h"
#include "mendo/pathcache.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

namespace mendo {

namespace {
constexpr int smallestCapacity = 4;

// Slots are moved with memmove, which is safe because their members do not point into themselves.
static_assert(!QTypeInfo<QString>::isStatic && !QTypeInfo<QVariant>::isStatic, "movable members");

void relocate(Slot* to, const Slot* from, int count) {
    if (count > 0) {
        std::memmove(static_cast<void*>(to), static_cast<const void*>(from),
                     sizeof(Slot) * static_cast<std::size_t>(count));
    }
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

void Slot::setBranch(std::unique_ptr<Branch> branch) {
    drop();
    content_ = reinterpret_cast<quintptr>(branch.release());
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

SlotList::SlotList(SlotList&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)),
      size_(std::exchange(other.size_, 0)),
      capacity_(std::exchange(other.capacity_, 0)),
      gap_(std::exchange(other.gap_, 0)) {
    PathCache::invalidate();
}

SlotList& SlotList::operator=(SlotList&& other) noexcept {
    SlotList old(std::move(*this));
    std::swap(data_, other.data_);
    std::swap(size_, other.size_);
    std::swap(capacity_, other.capacity_);
    std::swap(gap_, other.gap_);
    return *this;
}

SlotList::~SlotList() {
    PathCache::invalidate();
    for (int i = 0; i < size_; ++i) {
        (*this)[i].~Slot();
    }
    std::free(data_);
}

void SlotList::reserve(int capacity) {
    if (capacity <= capacity_) {
        return;
    }
    moveGap(size_);
    void* memory = std::realloc(static_cast<void*>(data_), sizeof(Slot) * static_cast<std::size_t>(capacity));
    if (!memory) {
        qBadAlloc();
    }
    data_ = static_cast<Slot*>(memory);
    capacity_ = capacity;
}

void SlotList::moveGap(int position) {
    const int gapLength = gapSize();
    if (position < gap_) {
        relocate(data_ + position + gapLength, data_ + position, gap_ - position);
    } else if (position > gap_) {
        relocate(data_ + gap_, data_ + gap_ + gapLength, position - gap_);
    }
    gap_ = position;
}

void SlotList::insert(int position, Slot&& slot) {
    if (size_ == capacity_) {
        reserve(capacity_ < smallestCapacity ? smallestCapacity : capacity_ + capacity_ / 2);
    }
    PathCache::invalidate();
    moveGap(position);
    new (data_ + position) Slot(std::move(slot));
    ++gap_;
    ++size_;
}

Slot SlotList::take(int position) {
    PathCache::invalidate();
    Slot& place = (*this)[position];
    Slot taken(std::move(place));
    place.~Slot();
    // The freed position joins the gap. Nothing has to move when they are adjacent.
    if (position + 1 == gap_) {
        --gap_;
    } else {
        moveGap(position);
    }
    --size_;
    return taken;
}

}  // namespace mendo
