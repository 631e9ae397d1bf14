#pragma once

#include <QString>

#include <vector>

namespace lumo {

/// Which rows of the program's list show tool and work object: moves with other ones than the nearest move
/// above, which has them too.
class ToolRows {
public:
    void reset(int count) { tools_.assign(static_cast<std::size_t>(count), 0); }
    void insert(int row) { tools_.insert(tools_.begin() + row, 0); }
    void remove(int row) { tools_.erase(tools_.begin() + row); }
    /// Tool and work object of a row; empty for one without.
    void set(int row, const QString& tool) { at(row) = tool.isEmpty() ? 0 : qHash(tool) | 1U; }

    [[nodiscard]] bool shows(int row) const {
        const uint own = at(row);
        int above = row - 1;
        while (own != 0 && above >= 0 && at(above) == 0) {
            --above;
        }
        return own != 0 && (above < 0 || at(above) != own);
    }
    /// The nearest row from this one on that has a tool; -1: none. It may show another one than before when
    /// a row above it is changed.
    [[nodiscard]] int nextFrom(int row) const {
        for (int next = row; next < static_cast<int>(tools_.size()); ++next) {
            if (at(next) != 0) {
                return next;
            }
        }
        return -1;
    }

private:
    [[nodiscard]] const uint& at(int row) const { return tools_[static_cast<std::size_t>(row)]; }
    uint& at(int row) { return tools_[static_cast<std::size_t>(row)]; }

    std::vector<uint> tools_;  ///< hashes; 0: none
};

}  // namespace lumo
