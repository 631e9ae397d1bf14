#pragma once

#include <QByteArray>

#include <algorithm>

namespace mendo {

inline bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

inline bool endsNumber(char c) {
    return isSpace(c) || c == ',' || c == ']' || c == '}' || c == ':';
}

/// A position in a JSON text that Qt's parser has accepted.
class JsonWalker {
public:
    JsonWalker(const QByteArray& text, int from) : text_(text), pos_(from) {}

    int position() const { return pos_; }
    char peek() const { return pos_ < text_.size() ? text_[pos_] : '\0'; }
    bool take(char c) {
        if (peek() != c || c == '\0') {
            return false;
        }
        ++pos_;
        return true;
    }
    void skipSpace() {
        while (isSpace(peek())) {
            ++pos_;
        }
    }
    /// False at the end of the text, where a quote is missing.
    bool skipString() {
        for (++pos_; pos_ < text_.size() && text_[pos_] != '"'; ++pos_) {
            if (text_[pos_] == '\\') {
                ++pos_;
            }
        }
        pos_ = std::min(pos_, text_.size());
        return take('"');
    }
    /// A number, true, false or null, in any form that Qt's parser accepts.
    void skipWord() {
        while (pos_ < text_.size() && !endsNumber(text_[pos_])) {
            ++pos_;
        }
    }
    void skipValue() {
        int depth = 0;
        do {
            const char c = peek();
            if (c == '"') {
                skipString();
            } else if (c == '{' || c == '[') {
                ++depth;
                ++pos_;
            } else if (c == '}' || c == ']') {
                --depth;
                ++pos_;
            } else if (depth == 0) {
                skipWord();
            } else {
                ++pos_;
            }
        } while (depth > 0 && pos_ < text_.size());
    }

protected:
    const QByteArray& text_;
    int pos_;
};

}  // namespace mendo
