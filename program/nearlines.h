#pragma once

#include <iterator>
#include <map>
#include <utility>

namespace prog {

/// What was worked out for the lines of a long program that were asked for last, for a walk that goes
/// forward.
template <typename Value>
class NearLines {
public:
    /// Null for a line that is not kept.
    [[nodiscard]] const Value* find(int line) const {
        const auto known = values_.find(line);
        return known == values_.end() ? nullptr : &known->second;
    }
    /// Keeps a line's value in place of that of the line farthest from it. Valid until those of 32 other
    /// lines are kept.
    const Value& keep(int line, Value value) {
        constexpr std::size_t most = 32;
        if (values_.size() >= most) {
            const auto first = values_.begin();
            const auto last = std::prev(values_.end());
            values_.erase(line - first->first > last->first - line ? first : last);
        }
        return values_.emplace(line, std::move(value)).first->second;
    }
    [[nodiscard]] const std::map<int, Value>& all() const { return values_; }

private:
    std::map<int, Value> values_;
};

}  // namespace prog
