#pragma once

#include "json/jsontext.h"
#include "program/record.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace run {

/// A fault of an input, and its place.
struct Problem {
    QString file;            ///< as named on the command line; empty without a file
    mendo::TextPlace place;  ///< none for the file as a whole
    QString reason;          ///< plain English, no full stop

    /// "FILE:LINE:COLUMN: REASON" with the parts that are known; always one line.
    QString text() const;
};

/// An input file that holds a JSON array. Its elements are read from the text when they are asked for.
class InputArray : public prog::ElementSource {
public:
    /// Nothing, with the reason in `problem`, when the file cannot be read, is no JSON or holds no array.
    /// `shown` is the name used in problems.
    static std::optional<InputArray> read(const QString& file, const QString& shown, Problem* problem);
    /// The same for a text (UTF-8, a byte-order mark allowed).
    static std::optional<InputArray> parse(const QByteArray& text, const QString& shown, Problem* problem);
    /// The same for JSON that was read before.
    static std::optional<InputArray> from(const mendo::JsonText& text, const QString& shown,
                                          Problem* problem);

    /// The name used in problems.
    const QString& shown() const { return shown_; }
    /// The place of the value of a dotted path in an element, of the element for an empty path, of the array
    /// for an element outside; see JsonText::place.
    mendo::TextPlace place(int element, const QString& path) const;
    /// See JsonText::duplicates.
    std::vector<mendo::JsonText::Duplicate> duplicates() const { return text_.duplicates(); }
    int elementCount() const override { return text_.elementCount(); }
    QJsonValue element(int position) const override { return text_.element(position); }
    /// Frees the text: an empty array remains.
    void clear() { text_.clear(); }

    /// A problem at such a place.
    Problem problemAt(int element, const QString& path, const QString& reason) const;

    /// An element as it stands in the file, on one line; see JsonText::compact.
    QByteArray compact(int element) const { return text_.compact(element); }

private:
    InputArray(const mendo::JsonText& text, const QString& shown) : text_(text), shown_(shown) {}

    mendo::JsonText text_;
    QString shown_;
};

/// One line on standard error: "lumo-run: TEXT".
void printError(const QString& text);
/// One line on standard error: "lumo-run: warning: TEXT".
void printWarning(const QString& text);

}  // namespace run
