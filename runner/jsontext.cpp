#include "runner/jsontext.h"

#include "json/jsonfault.h"
#include "mendo/plainfile.h"
#include "runner/jsonwriter.h"

#include <QFileInfo>
#include <QJsonDocument>

#include <algorithm>

namespace run {

namespace {

bool isSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool endsNumber(char c) {
    return isSpace(c) || c == ',' || c == ']' || c == '}' || c == ':';
}

QByteArray withoutMark(const QByteArray& text) {
    return text.startsWith("\xEF\xBB\xBF") ? text.mid(3) : text;
}

}  // namespace

std::optional<JsonText> JsonText::read(const QString& file, const QString& shown, Problem* problem) {
    *problem = Problem{shown, 0, 0, QString()};
    std::optional<QByteArray> text;
    if (!QFileInfo::exists(file)) {
        problem->reason = QStringLiteral("there is no such file");
    } else if (QFileInfo(file).isDir()) {
        problem->reason = QStringLiteral("is a folder");
    } else {
        text = mendo::readPlainFile(file, &problem->reason);
    }
    if (!text) {
        return std::nullopt;
    }
    return parse(*text, shown, problem);
}

std::optional<JsonText> JsonText::parse(const QByteArray& text, const QString& shown, Problem* problem) {
    JsonText json;
    json.file_ = shown;
    json.text_ = withoutMark(text);
    int pos = json.skipSpace(0);
    mendo::JsonFault fault{pos, QStringLiteral("holds no array")};
    const std::optional<QJsonDocument> document = mendo::parseJson(json.text_, &fault);
    if (!document || !document->isArray()) {
        *problem = json.problemAtOffset(fault.offset, fault.reason);
        return std::nullopt;
    }
    json.array_ = document->array();
    json.elements_.reserve(std::size_t(json.array_.size()));
    Place place;
    for (int i = 0; i < json.array_.size(); ++i) {
        pos = json.skipSpace(pos + 1);  // behind the bracket or comma
        place = json.placeFrom(place, pos);
        json.elements_.push_back(place);
        pos = json.skipSpace(json.skipValue(pos));
    }
    return json;
}

/// The place at `offset`, which does not lie before another one.
JsonText::Place JsonText::placeFrom(const Place& before, int offset) const {
    const QByteArray between = text_.mid(before.offset, offset - before.offset);
    const int newline = between.lastIndexOf('\n');
    const int columns =
        mendo::characterCount(between.constData() + newline + 1, between.size() - newline - 1);
    return {offset, before.line + between.count('\n'), newline < 0 ? before.column + columns : columns + 1};
}

// From the element before it: a project may be one long line.
Problem JsonText::problemAtOffset(int offset, const QString& reason) const {
    const auto behind =
        std::upper_bound(elements_.begin(), elements_.end(), offset,
                         [](int wanted, const Place& element) { return wanted < element.offset; });
    const Place place = placeFrom(behind == elements_.begin() ? Place() : *(behind - 1), offset);
    return {file_, place.line, place.column, reason};
}

Problem JsonText::problemAt(int element, const QString& reason) const {
    return problemAtOffset(elements_[std::size_t(element)].offset, reason);
}

Problem JsonText::problemAt(int element, const QString& path, const QString& reason) const {
    int pos = elements_[std::size_t(element)].offset;
    for (const QString& key : path.split(QLatin1Char('.'))) {
        const std::optional<int> value = findEntry(pos, key);
        if (!value) {
            break;
        }
        pos = *value;
    }
    return problemAtOffset(pos, reason);
}

// The text below was parsed before, so these walks only meet well-formed JSON.

int JsonText::skipSpace(int pos) const {
    while (pos < text_.size() && isSpace(text_[pos])) {
        ++pos;
    }
    return pos;
}

int JsonText::skipString(int pos) const {
    for (++pos; pos < text_.size() && text_[pos] != '"'; ++pos) {
        if (text_[pos] == '\\') {
            ++pos;
        }
    }
    return pos + 1;
}

int JsonText::skipValue(int pos) const {
    int depth = 0;
    while (pos < text_.size()) {
        const char c = text_[pos];
        if (c == '"') {
            pos = skipString(pos);
        } else if (c == '{' || c == '[') {
            ++depth;
            ++pos;
        } else if (c == '}' || c == ']') {
            --depth;
            ++pos;
        } else if (depth == 0) {
            while (pos < text_.size() && !endsNumber(text_[pos])) {
                ++pos;
            }
        } else {
            ++pos;
            continue;
        }
        if (depth == 0) {
            break;
        }
    }
    return pos;
}

/// Offset of the value under a key of the object at `object`; the last one where a key comes twice.
std::optional<int> JsonText::findEntry(int object, const QString& key) const {
    std::optional<int> found;
    if (text_[object] != '{') {
        return found;
    }
    int pos = skipSpace(object + 1);
    while (text_[pos] == '"') {
        const int end = skipString(pos);
        const QByteArray name = '[' + text_.mid(pos, end - pos) + ']';
        const int value = skipSpace(skipSpace(end) + 1);  // behind the colon
        if (QJsonDocument::fromJson(name).array().first().toString() == key) {
            found = value;
        }
        pos = skipSpace(skipValue(value));
        if (text_[pos] == ',') {
            pos = skipSpace(pos + 1);
        }
    }
    return found;
}

QByteArray JsonText::compact(int element) const {
    int pos = elements_[std::size_t(element)].offset;
    const int end = skipValue(pos);
    QByteArray out;
    while (pos < end) {
        const int from = pos;
        const char c = text_[pos];
        if (isSpace(c)) {
            ++pos;
        } else if (c == '"') {
            pos = skipString(pos);
            out += text_.mid(from, pos - from);
        } else if (c == '-' || (c >= '0' && c <= '9')) {
            while (pos < end && !endsNumber(text_[pos])) {
                ++pos;
            }
            out += numberText(text_.mid(from, pos - from).toDouble());
        } else {
            out += c;
            ++pos;
        }
    }
    return out;
}

}  // namespace run
