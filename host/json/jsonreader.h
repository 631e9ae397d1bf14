#pragma once

#include "json/jsontext.h"

#include <QJsonObject>

namespace mendo {

/// Base class of readers that fill a value from a JSON object, entry by entry. A reader keeps the keys that
/// lead to the present entry, and stops at the first fault, which it tells with its place in the text. `text`
/// and `problem` must outlive it.
class JsonReader {
public:
    JsonReader(const JsonText& text, FileProblem* problem) : text_(text), problem_(problem) {}

protected:
    /// Calls `readEntry(key, value)` for each entry until it returns false. Meanwhile keys() leads to the
    /// entry, and stays there after a fault.
    template <typename ReadEntry>
    bool readObject(const QJsonValue& value, ReadEntry readEntry) {
        if (!value.isObject()) {
            return fail(keys_.isEmpty() ? FileProblem::Kind::NoRecord : FileProblem::Kind::NoObject);
        }
        const QJsonObject object = value.toObject();
        for (auto entry = object.begin(); entry != object.end(); ++entry) {
            keys_ << entry.key();
            if (!readEntry(entry.key(), entry.value())) {
                return false;
            }
            keys_.removeLast();
        }
        return true;
    }

    const JsonText& text() const { return text_; }
    const QStringList& keys() const { return keys_; }

    // They tell a fault, and return false.
    /// At the entry that is read, with its key as the argument.
    bool fail(FileProblem::Kind kind) { return fail(kind, keys_.mid(keys_.size() - 1)); }
    bool fail(FileProblem::Kind kind, const QStringList& arguments) {
        return failAt(text_.place(keys_), {kind, arguments});
    }
    bool failAt(const TextPlace& place, const FileProblem::Reason& reason) {
        problem_->place = place;
        problem_->reasons = {reason};
        return false;
    }

private:
    const JsonText& text_;
    FileProblem* problem_;
    QStringList keys_;
};

}  // namespace mendo
