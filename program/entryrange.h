#pragma once

#include <QString>

#include <optional>

namespace prog {

/// The number in a text, as an operator types it: with a decimal point or comma, blanks around it. Nothing
/// for a text that is no number, or no finite one.
[[nodiscard]] std::optional<double> figureIn(const QString& text);

/// The figures that a page takes in a field.
struct EntryRange {
    /// Digits that a field without an upper limit takes; a longer number would not fit into an int.
    static constexpr int mostDigits = 9;
    static constexpr double unlimited = 999'999'999;

    double least = 0;
    double most = unlimited;  ///< `unlimited`: as many as `mostDigits` digits can write
    const char* unit = "";
    int decimals = 0;  ///< 0: whole numbers

    /// Without an upper limit.
    [[nodiscard]] constexpr EntryRange upward() const { return {least, unlimited, unit, decimals}; }
    [[nodiscard]] bool takes(const QString& text) const;
};

}  // namespace prog
