#include "json/jsonfault.h"

#include "json/jsonwalker.h"

namespace mendo {

namespace {

using Kind = FileProblem::Kind;

/// Reads a text by the grammar of JSON.
class FaultFinder : private JsonWalker {
public:
    using JsonWalker::JsonWalker;
    using JsonWalker::position;

    /// False, with the fault at the position, when the text is no JSON.
    bool document() {
        if (!value(0)) {
            return false;
        }
        skipSpace();
        return pos_ == text_.size() || fail(Kind::NoEndOfFile);
    }
    Kind fault() const { return fault_; }

private:
    bool fail(Kind fault) {
        fault_ = fault;
        return false;
    }

    bool value(int depth) {
        constexpr int deepest = 1024;
        skipSpace();
        if (depth > deepest) {
            return fail(Kind::TooDeep);
        }
        switch (peek()) {
            case '{':
                return object(depth);
            case '[':
                return array(depth);
            case '"':
                return string(Kind::NoValue);
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
            if (!string(Kind::NoKey)) {
                return false;
            }
            skipSpace();
            if (!take(':')) {
                return fail(Kind::NoColon);
            }
            if (!value(depth + 1)) {
                return false;
            }
            skipSpace();
        } while (take(','));
        return take('}') || fail(Kind::NoCommaOrBrace);
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
        return take(']') || fail(Kind::NoCommaOrBracket);
    }

    bool string(Kind otherwise) {
        return peek() == '"' ? skipString() || fail(Kind::NoEndOfString) : fail(otherwise);
    }

    bool word(const char* whole) {
        const int size = int(qstrlen(whole));
        if (text_.mid(pos_, size) != whole) {
            return fail(Kind::NoValue);
        }
        pos_ += size;
        return true;
    }

    bool digits() {
        const int from = pos_;
        while (peek() >= '0' && peek() <= '9') {
            ++pos_;
        }
        return pos_ > from;
    }

    bool number() {
        const int from = pos_;
        take('-');
        if (!take('0') && !digits()) {  // nothing follows a leading zero
            return fail(pos_ == from ? Kind::NoValue : Kind::NoDigit);
        }
        if (take('.') && !digits()) {
            return fail(Kind::NoDigit);
        }
        if (take('e') || take('E')) {
            if (!take('-')) {
                take('+');
            }
            if (!digits()) {
                return fail(Kind::NoDigit);
            }
        }
        return true;
    }

    Kind fault_ = Kind::NoValue;
};

}  // namespace

std::optional<JsonFault> findFault(const QByteArray& text, int from) {
    FaultFinder finder(text, from);
    return finder.document() ? std::nullopt : std::optional<JsonFault>({finder.position(), finder.fault()});
}

}  // namespace mendo
