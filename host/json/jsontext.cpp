#include "json/jsontext.h"

#include "json/jsonfault.h"
#include "json/jsonwalker.h"
#include "json/jsonwriter.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <map>
#include <string_view>
#include <unordered_set>

namespace mendo {

namespace {

using Kind = FileProblem::Kind;

/// Length of the byte-order mark at the beginning of a text.
int markSize(const QByteArray& text) {
    const QByteArray mark = QByteArrayLiteral("\xEF\xBB\xBF");
    return text.startsWith(mark) ? mark.size() : 0;
}

/// Every byte of a character in UTF-8 but its first one is of the form 10xxxxxx.
int characterCount(const char* begin, const char* end) {
    return int(std::count_if(begin, end, [](char byte) { return (byte & 0xC0) != 0x80; }));
}

/// The text of a string with its quotes.
QString keyFrom(const QByteArray& quoted) {
    return quoted.contains('\\') ? QJsonDocument::fromJson('[' + quoted + ']').array().first().toString()
                                 : QString::fromUtf8(quoted.mid(1, quoted.size() - 2));
}

/// Walks through a value and tells the keys that an object has more than once.
class DuplicateFinder : private JsonWalker {
public:
    struct Found {
        QString path;
        int offset;  ///< of the last value
    };

    using JsonWalker::JsonWalker;

    const std::vector<Found>& find() {
        value();
        return found_;
    }

private:
    using Key = std::string_view;  ///< with its quotes

    void value() {
        skipSpace();
        if (take('{')) {
            object();
        } else if (take('[')) {
            list();
        } else {
            skipValue();
        }
    }

    void object() {
        std::vector<Key> keys;
        std::unordered_set<Key> manyKeys;
        std::map<QString, int> again;
        for (skipSpace(); peek() == '"'; skipSpace()) {
            const Key key = takeKey();
            path_.push_back({key, 0});
            if (isAmong(keys, manyKeys, key)) {
                again[path()] = pos_;
            } else {
                keys.push_back(key);
            }
            value();
            path_.pop_back();
            skipSpace();
            take(',');
        }
        take('}');
        for (const auto& [name, offset] : again) {
            found_.push_back({name, offset});
        }
    }

    void list() {
        skipSpace();
        for (int i = 0; peek() != ']' && pos_ < text_.size(); ++i) {
            path_.push_back({Key(), i});
            value();
            path_.pop_back();
            skipSpace();
            take(',');
            skipSpace();
        }
        take(']');
    }

    Key takeKey() {
        const int from = pos_;
        skipString();
        const Key key(text_.constData() + from, std::size_t(pos_ - from));
        skipSpace();
        take(':');
        skipSpace();
        return key;
    }

    /// Short lists are searched, long ones get an index.
    static bool isAmong(const std::vector<Key>& keys, std::unordered_set<Key>& manyKeys, Key key) {
        constexpr std::size_t many = 64;
        if (keys.size() >= many) {
            if (manyKeys.empty()) {
                manyKeys.insert(keys.begin(), keys.end());
            }
            return !manyKeys.insert(key).second;
        }
        const bool isEscaped = key.find('\\') != Key::npos;
        return std::any_of(keys.begin(), keys.end(), [key, isEscaped](Key other) {
            return other == key ||
                   ((isEscaped || other.find('\\') != Key::npos) && textOf(other) == textOf(key));
        });
    }

    static QString textOf(Key key) { return keyFrom(QByteArray(key.data(), int(key.size()))); }

    QString path() const {
        QStringList parts;
        for (const Part& part : path_) {
            parts.append(part.key.empty() ? QStringLiteral("#%1").arg(part.index) : textOf(part.key));
        }
        return parts.join(QLatin1Char('.'));
    }

    struct Part {
        Key key;    ///< empty in a list
        int index;  ///< in a list
    };
    std::vector<Part> path_;
    std::vector<Found> found_;
};

/// What only Qt's parser finds.
Kind kindOf(QJsonParseError::ParseError error) {
    switch (error) {
        case QJsonParseError::IllegalNumber:
            return Kind::BadNumber;
        case QJsonParseError::IllegalEscapeSequence:
            return Kind::BadEscape;
        case QJsonParseError::IllegalUTF8String:
            return Kind::BadUtf8;
        case QJsonParseError::DeepNesting:
            return Kind::TooDeep;
        case QJsonParseError::DocumentTooLarge:
            return Kind::FileTooLarge;
        default:
            return Kind::BadValue;
    }
}

TextPlace placeIn(const QByteArray& text, int offset) {
    const int start = std::min(markSize(text), offset);
    const char* const begin = text.constData();
    const int newline = offset > 0 ? text.lastIndexOf('\n', offset - 1) : -1;
    const int lineStart = newline < 0 ? start : newline + 1;
    return {1 + int(std::count(begin + start, begin + offset, '\n')),
            1 + characterCount(begin + lineStart, begin + offset)};
}

}  // namespace

std::optional<JsonText> JsonText::parse(const QByteArray& text, FileProblem* problem, Reading reading) {
    if (reading == Reading::ByElement) {
        JsonWalker start(text, markSize(text));
        start.skipSpace();
        JsonText list(text, QJsonArray(), start.position());
        if (list.readElements()) {
            return list;
        }
        // An object, an empty array or a fault: Qt's parser tells which.
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    JsonWalker walker(text, markSize(text));
    walker.skipSpace();
    if (error.error == QJsonParseError::NoError) {
        return JsonText(text, document.isArray() ? QJsonValue(document.array()) : document.object(),
                        walker.position());
    }
    if (const std::optional<JsonFault> fault = findFault(text, walker.position())) {
        problem->place = placeIn(text, fault->offset);
        problem->reasons = {{fault->kind}};
    } else if (walker.peek() != '[' && walker.peek() != '{') {  // JSON, but no document for Qt's parser
        problem->place = placeIn(text, walker.position());
        problem->reasons = {{Kind::NoContainer}};
    } else {
        problem->place = placeIn(text, error.offset);
        problem->reasons = {{kindOf(error.error)}};
    }
    return std::nullopt;
}

/// Finds the elements of the text's array, each read by itself. False when it is no sound array with
/// elements.
bool JsonText::readElements() {
    JsonWalker walker(text_, start_);
    Spot spot{start_, placeOf(start_)};
    for (char before = '['; walker.take(before); before = ',') {
        walker.skipSpace();
        spot = spotFrom(spot, walker.position());
        walker.skipValue();
        const QByteArray element = text_.mid(spot.offset, walker.position() - spot.offset);
        if (element.isEmpty() || QJsonDocument::fromJson('[' + element + ']').isNull()) {
            return false;
        }
        elements_.push_back(spot);
        walker.skipSpace();
    }
    const bool isClosed = walker.take(']');
    walker.skipSpace();
    return isClosed && walker.position() == text_.size() && !elements_.empty();
}

QJsonValue JsonText::element(int element) const {
    JsonWalker end(text_, elements()[std::size_t(element)].offset);
    const int begin = end.position();
    end.skipValue();
    const QByteArray list = '[' + text_.mid(begin, end.position() - begin) + ']';
    return QJsonDocument::fromJson(list).array().first();
}

void JsonText::clear() {
    *this = JsonText(QByteArray(), QJsonArray(), 0);
}

TextPlace JsonText::place(int element) const {
    return hasElement(element) ? elements()[std::size_t(element)].place : place();
}

TextPlace JsonText::place(int element, const QString& path) const {
    if (!hasElement(element)) {
        return place();
    }
    const Spot& from = elements()[std::size_t(element)];
    return spotFrom(from, follow(from.offset, path.split(QLatin1Char('.')))).place;
}

TextPlace JsonText::place(const QStringList& keys) const {
    return placeOf(follow(start_, keys));
}

std::vector<JsonText::Duplicate> JsonText::duplicates() const {
    std::vector<Duplicate> all;
    for (int element = 0; value_.isArray() && element < int(elements().size()); ++element) {
        const Spot& from = elements()[std::size_t(element)];
        DuplicateFinder finder(text_, from.offset);
        for (const DuplicateFinder::Found& found : finder.find()) {
            all.push_back({element, found.path, spotFrom(from, found.offset).place});
        }
    }
    return all;
}

std::optional<JsonText::Duplicate> JsonText::duplicateInObject() const {
    DuplicateFinder finder(text_, start_);
    const std::vector<DuplicateFinder::Found>& found = finder.find();
    return value_.isObject() && !found.empty()
               ? std::optional<Duplicate>({-1, found[0].path, placeOf(found[0].offset)})
               : std::nullopt;
}

QByteArray JsonText::compact(int element) const {
    JsonWalker walker(text_, elements()[std::size_t(element)].offset);
    JsonWalker end = walker;
    end.skipValue();
    QByteArray out;
    while (walker.position() < end.position()) {
        const int from = walker.position();
        const char c = walker.peek();
        const auto passed = [&] { return text_.mid(from, walker.position() - from); };
        if (isSpace(c)) {
            walker.skipSpace();
        } else if (c == '"') {
            walker.skipString();
            out += passed();
        } else if (c == '-' || (c >= '0' && c <= '9')) {
            walker.skipWord();
            out += numberText(passed().toDouble());
        } else {
            walker.take(c);
            out += c;
        }
    }
    return out;
}

bool JsonText::hasElement(int element) const {
    return element >= 0 && value_.isArray() && element < int(elements().size());
}

const std::vector<JsonText::Spot>& JsonText::elements() const {
    const int count = elements_.empty() ? value_.toArray().size() : 0;
    if (count > 0) {
        elements_.reserve(std::size_t(count));
        JsonWalker walker(text_, start_);
        Spot spot{start_, placeOf(start_)};
        for (int i = 0; i < count; ++i) {
            walker.take(i == 0 ? '[' : ',');
            walker.skipSpace();
            spot = spotFrom(spot, walker.position());
            elements_.push_back(spot);
            walker.skipValue();
            walker.skipSpace();
        }
    }
    return elements_;
}

/// The spot at `offset`, which lies behind another one: counted from there, as a project may be one long
/// line.
JsonText::Spot JsonText::spotFrom(const Spot& before, int offset) const {
    const char* const begin = text_.constData() + before.offset;
    const char* const end = text_.constData() + offset;
    const int lines = int(std::count(begin, end, '\n'));
    if (lines == 0) {
        return {offset, {before.place.line, before.place.column + characterCount(begin, end)}};
    }
    const char* const line = text_.constData() + text_.lastIndexOf('\n', offset - 1) + 1;
    return {offset, {before.place.line + lines, 1 + characterCount(line, end)}};
}

TextPlace JsonText::placeOf(int offset) const {
    return placeIn(text_, offset);
}

/// Offset of the value under a key of the object at `object`.
int JsonText::follow(int object, const QStringList& keys) const {
    int pos = object;
    for (const QString& key : keys) {
        const std::optional<int> value = findEntry(pos, key);
        if (!value) {
            break;
        }
        pos = *value;
    }
    return pos;
}

std::optional<int> JsonText::findEntry(int object, const QString& key) const {
    std::optional<int> found;
    JsonWalker walker(text_, object);
    if (!walker.take('{')) {
        return found;
    }
    do {
        walker.skipSpace();
        const int from = walker.position();
        if (walker.peek() != '"') {
            break;  // an empty object
        }
        walker.skipString();
        const QString name = keyFrom(text_.mid(from, walker.position() - from));
        walker.skipSpace();
        walker.take(':');
        walker.skipSpace();
        if (name == key) {
            found = walker.position();
        }
        walker.skipValue();
        walker.skipSpace();
    } while (walker.take(','));
    return found;
}

}  // namespace mendo
