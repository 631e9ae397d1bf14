#include "files/jsonplace.h"

#include <cctype>

namespace lumo {

namespace {

/// The position behind the string that begins there.
int skipString(const QByteArray& json, int at) {
    for (++at; at < json.size() && json[at] != '"'; ++at) {
        if (json[at] == '\\') {
            ++at;
        }
    }
    return at + 1;
}

/// The position behind the value that begins there.
int skipValue(const QByteArray& json, int at) {
    int depth = 0;
    while (at < json.size()) {
        const char c = json[at];
        if (c == '"') {
            at = skipString(json, at);
            continue;
        }
        if (c == ']' || c == '}') {
            --depth;
        }
        if (depth < 0 || (depth == 0 && c == ',')) {
            break;
        }
        if (c == '[' || c == '{') {
            ++depth;
        }
        ++at;
    }
    return at;
}

int skipSpace(const QByteArray& json, int at) {
    while (at < json.size() && std::isspace(static_cast<unsigned char>(json[at]))) {
        ++at;
    }
    return at;
}

}  // namespace

TextPlace contentPlace(const QByteArray& json) {
    const QByteArray mark = QByteArrayLiteral("\xEF\xBB\xBF");
    return mendo::placeOf(json, skipSpace(json, json.startsWith(mark) ? mark.size() : 0));
}

TextPlace elementPlace(const QByteArray& json, int position) {
    int at = skipSpace(json, json.indexOf('[') + 1);
    for (int element = 0; at < json.size() && json[at] != ']'; ++element) {
        if (element == position) {
            return mendo::placeOf(json, at);
        }
        at = skipValue(json, at);
        if (at < json.size() && json[at] == ',') {
            at = skipSpace(json, at + 1);
        }
    }
    return {};
}

}  // namespace lumo
