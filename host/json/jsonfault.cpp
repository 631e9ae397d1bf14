#include "json/jsonfault.h"

#include <algorithm>

namespace mendo {

namespace {

const QByteArray byteOrderMark = QByteArrayLiteral("\xEF\xBB\xBF");

/// Length of the byte-order mark.
int markSize(const QByteArray& text) {
    return text.startsWith(byteOrderMark) ? byteOrderMark.size() : 0;
}

/// Walks a JSON text until something is wrong: the offsets of Qt's parser are off by one or more.
class Walker {
public:
    Walker(const QByteArray& text, int from) : text_(text), pos_(from) {}

    bool document() {
        skipSpace();
        start_ = pos_;
        if (!value(0)) {
            return false;
        }
        skipSpace();
        return pos_ == text_.size() || fail("the end of the file");
    }
    JsonFault fault() const {
        return {pos_, QStringLiteral("no JSON: expected ") + QLatin1String(expected_)};
    }

    /// Where the value begins.
    int start() const { return start_; }
    /// Of a text that is JSON: one value that is neither an array nor an object.
    bool isPlain() const { return text_[start_] != '[' && text_[start_] != '{'; }

private:
    bool fail(const char* expected) {
        expected_ = expected;
        return false;
    }
    char peek() const { return pos_ < text_.size() ? text_[pos_] : '\0'; }
    bool take(char c) {
        if (peek() != c || c == '\0') {
            return false;
        }
        ++pos_;
        return true;
    }
    void skipSpace() {
        while (peek() == ' ' || peek() == '\t' || peek() == '\n' || peek() == '\r') {
            ++pos_;
        }
    }
    bool isDigit() const { return peek() >= '0' && peek() <= '9'; }

    bool value(int depth) {
        constexpr int deepest = 1024;
        skipSpace();
        if (depth > deepest) {
            return fail("less nesting");
        }
        switch (peek()) {
            case '{':
                return object(depth);
            case '[':
                return array(depth);
            case '"':
                return string("a string");
            case 't':
                return word("true");
            case 'f':
                return word("false");
            case 'n':
                return word("null");
            default:
                return number();
        }
    }

    bool object(int depth) {
        ++pos_;
        skipSpace();
        if (take('}')) {
            return true;
        }
        do {
            skipSpace();
            if (!string("a key in quotes")) {
                return false;
            }
            skipSpace();
            if (!take(':')) {
                return fail("a colon");
            }
            if (!value(depth + 1)) {
                return false;
            }
            skipSpace();
        } while (take(','));
        return take('}') || fail("a comma or a closing brace");
    }

    bool array(int depth) {
        ++pos_;
        skipSpace();
        if (take(']')) {
            return true;
        }
        do {
            if (!value(depth + 1)) {
                return false;
            }
            skipSpace();
        } while (take(','));
        return take(']') || fail("a comma or a closing bracket");
    }

    bool string(const char* expected) {
        if (!take('"')) {
            return fail(expected);
        }
        while (pos_ < text_.size() && text_[pos_] != '"') {
            pos_ += text_[pos_] == '\\' ? 2 : 1;
        }
        if (pos_ < text_.size()) {
            return take('"');
        }
        pos_ = text_.size();
        return fail("the end of a string");
    }

    bool word(const char* whole) {
        const int size = int(qstrlen(whole));
        if (text_.mid(pos_, size) != whole) {
            return fail("a value");
        }
        pos_ += size;
        return true;
    }

    bool digits() {
        const int from = pos_;
        while (isDigit()) {
            ++pos_;
        }
        return pos_ > from;
    }

    bool number() {
        const int from = pos_;
        take('-');
        if (!take('0') && !digits()) {  // nothing follows a leading zero
            return fail(pos_ == from ? "a value" : "a digit");
        }
        if (take('.') && !digits()) {
            return fail("a digit");
        }
        if (take('e') || take('E')) {
            if (!take('-')) {
                take('+');
            }
            if (!digits()) {
                return fail("a digit");
            }
        }
        return true;
    }

    const QByteArray& text_;
    int pos_;
    int start_ = 0;
    const char* expected_ = "";
};

}  // namespace

int characterCount(const char* text, int bytes) {
    // Every byte of a character but its first one is of the form 10xxxxxx.
    return int(std::count_if(text, text + bytes, [](char byte) { return (byte & 0xC0) != 0x80; }));
}

TextPlace placeOf(const QByteArray& text, int offset) {
    const int start = std::min(markSize(text), offset);
    const char* const end = text.constData() + offset;
    const int newline = offset > 0 ? text.lastIndexOf('\n', offset - 1) : -1;
    const int lineStart = newline < 0 ? start : newline + 1;
    return {1 + int(std::count(text.constData() + start, end, '\n')),
            1 + characterCount(text.constData() + lineStart, offset - lineStart)};
}

std::optional<QJsonDocument> parseJson(const QByteArray& text, JsonFault* fault) {
    QJsonParseError error;
    QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error == QJsonParseError::NoError) {
        return document;
    }
    Walker walker(text, markSize(text));
    if (!walker.document()) {
        *fault = walker.fault();
    } else if (walker.isPlain()) {  // JSON, but no document for Qt's parser
        *fault = {walker.start(), QStringLiteral("holds no array and no object")};
    } else {  // only the parser knows: text that is no UTF-8, numbers out of range
        *fault = {error.offset, QStringLiteral("no JSON: ") + error.errorString()};
    }
    return std::nullopt;
}

}  // namespace mendo
