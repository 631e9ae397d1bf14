#include "runner/jsonfault.h"

namespace run {

namespace {

/// Walks a JSON text until something is wrong.
class Walker {
public:
    explicit Walker(const QByteArray& text) : text_(text) {}

    bool document() {
        if (!value(0))
            return false;
        skipSpace();
        return pos_ == text_.size() || fail("the end of the file");
    }
    JsonFault fault() const { return {pos_, QLatin1String(expected_)}; }

private:
    bool fail(const char* expected) {
        expected_ = expected;
        return false;
    }
    char peek() const { return pos_ < text_.size() ? text_[pos_] : '\0'; }
    bool take(char c) {
        if (peek() != c || c == '\0')
            return false;
        ++pos_;
        return true;
    }
    void skipSpace() {
        while (peek() == ' ' || peek() == '\t' || peek() == '\n' || peek() == '\r')
            ++pos_;
    }
    bool isDigit() const { return peek() >= '0' && peek() <= '9'; }

    bool value(int depth) {
        constexpr int kDeepest = 1024;
        skipSpace();
        if (depth > kDeepest)
            return fail("less nesting");
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
        if (take('}'))
            return true;
        do {
            skipSpace();
            if (!string("a key in quotes"))
                return false;
            skipSpace();
            if (!take(':'))
                return fail("a colon");
            if (!value(depth + 1))
                return false;
            skipSpace();
        } while (take(','));
        return take('}') || fail("a comma or a closing brace");
    }

    bool array(int depth) {
        ++pos_;
        skipSpace();
        if (take(']'))
            return true;
        do {
            if (!value(depth + 1))
                return false;
            skipSpace();
        } while (take(','));
        return take(']') || fail("a comma or a closing bracket");
    }

    bool string(const char* expected) {
        if (!take('"'))
            return fail(expected);
        while (pos_ < text_.size() && text_[pos_] != '"')
            pos_ += text_[pos_] == '\\' ? 2 : 1;
        if (pos_ < text_.size())
            return take('"');
        pos_ = text_.size();
        return fail("the end of a string");
    }

    bool word(const char* whole) {
        const int size = int(qstrlen(whole));
        if (text_.mid(pos_, size) != whole)
            return fail("a value");
        pos_ += size;
        return true;
    }

    bool digits() {
        const int from = pos_;
        while (isDigit())
            ++pos_;
        return pos_ > from;
    }

    bool number() {
        const int from = pos_;
        take('-');
        if (!take('0') && !digits())  // nothing follows a leading zero
            return fail(pos_ == from ? "a value" : "a digit");
        if (take('.') && !digits())
            return fail("a digit");
        if (take('e') || take('E')) {
            if (!take('-'))
                take('+');
            if (!digits())
                return fail("a digit");
        }
        return true;
    }

    const QByteArray& text_;
    int pos_ = 0;
    const char* expected_ = "";
};

}  // namespace

std::optional<JsonFault> findJsonFault(const QByteArray& text) {
    Walker walker(text);
    if (walker.document())
        return std::nullopt;
    return walker.fault();
}

}  // namespace run
