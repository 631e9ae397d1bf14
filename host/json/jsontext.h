#pragma once

#include "json/fileproblem.h"

#include <QByteArray>
#include <QJsonValue>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace mendo {

/// JSON that was read: its value, and what the value no longer tells: where the elements and their entries
/// stand in the text, and the order of their keys.
class JsonText {
public:
    enum class Reading {
        Whole,
        /// An array keeps no values, which take several times the memory of the text: see element().
        ByElement
    };

    /// The array or object that a text holds (UTF-8, a byte-order mark allowed). Nothing, with place and
    /// reason of the first fault in `problem`, for anything else.
    static std::optional<JsonText> parse(const QByteArray& text, FileProblem* problem,
                                         Reading reading = Reading::Whole);

    bool isArray() const { return value_.isArray(); }
    /// An empty array for one that was read by element.
    const QJsonValue& value() const { return value_; }

    /// Of the array; 0 for an object.
    int elementCount() const { return int(elements().size()); }
    /// An element of the array, read from the text again.
    QJsonValue element(int element) const;
    /// Frees text and value: an empty array remains.
    void clear();

    /// Where the array or object begins.
    TextPlace place() const { return placeOf(start_); }
    /// Where an element of the array begins; for a position outside, where the array does.
    TextPlace place(int element) const;
    /// The place of the value of a dotted path in an element ("point.trans"); where that is missing, of the
    /// last part of the path that is there. Of a key that comes twice the last one counts, as for the value.
    TextPlace place(int element, const QString& path) const;
    /// The same for the keys that lead to a value of the object; names of their own may have dots.
    TextPlace place(const QStringList& keys) const;

    /// A key that an object has more than once.
    struct Duplicate {
        int element;      ///< of the array
        QString path;     ///< dotted, of the key in the element; elements of inner lists as "#N"
        TextPlace place;  ///< of the last one's value, which counts
    };
    /// All of them in the elements of an array that are objects, in the order of the text.
    std::vector<Duplicate> duplicates() const;
    /// The first one in an object; its `element` says nothing.
    std::optional<Duplicate> duplicateInObject() const;

    /// An element as it stands in the text, its keys in their order, without white space; numbers in shortest
    /// form.
    QByteArray compact(int element) const;

private:
    struct Spot {
        int offset = 0;  ///< in bytes
        TextPlace place;
    };

    JsonText(const QByteArray& text, const QJsonValue& value, int start)
        : text_(text), value_(value), start_(start) {}

    bool readElements();

    bool hasElement(int element) const;
    const std::vector<Spot>& elements() const;
    Spot spotFrom(const Spot& before, int offset) const;
    TextPlace placeOf(int offset) const;
    int follow(int object, const QStringList& keys) const;
    std::optional<int> findEntry(int object, const QString& key) const;

    QByteArray text_;
    QJsonValue value_;
    int start_;
    mutable std::vector<Spot> elements_;  ///< where each element begins; found when first asked for
};

}  // namespace mendo
