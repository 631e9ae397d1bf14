#include "json/jsontext.h"

#include "mendo/convert.h"
#include "mendo/noderef.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QLocale>
#include <QVarLengthArray>

#include <algorithm>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstring>
#include <limits>
#include <numeric>
#include <utility>

namespace mendo {

namespace {

using Kind = Branch::Kind;

char hexDigit(uint number) {
    return static_cast<char>(number < 10 ? '0' + number : 'a' + number - 10);
}

/// The escape of a UTF-16 unit that has no letter of its own.
char* putUnit(char* to, uint unit) {
    *to++ = '\\';
    *to++ = 'u';
    for (int shift = 12; shift >= 0; shift -= 4) {
        *to++ = hexDigit((unit >> shift) & 0xf);
    }
    return to;
}

char* putAscii(char* to, uint letter) {
    constexpr char escaped[] = "\"\\\b\f\n\r\t";
    constexpr char letters[] = "\"\\bfnrt";
    if (letter >= 0x20 && letter != '"' && letter != '\\') {
        *to++ = static_cast<char>(letter);
        return to;
    }
    const char* const found = letter ? std::strchr(escaped, static_cast<int>(letter)) : nullptr;
    if (!found) {
        return putUnit(to, letter);
    }
    *to++ = '\\';
    *to++ = letters[found - escaped];
    return to;
}

/// A character above ASCII in UTF-8.
char* putWide(char* to, uint character) {
    const auto put = [&to](uint byte) { *to++ = static_cast<char>(byte); };
    const auto follow = [&put, character](int shift) { put(0x80 | ((character >> shift) & 0x3f)); };
    if (character < 0x800) {
        put(0xc0 | (character >> 6));
    } else if (character < 0x10000) {
        put(0xe0 | (character >> 12));
        follow(6);
    } else {
        put(0xf0 | (character >> 18));
        follow(12);
        follow(6);
    }
    follow(0);
    return to;
}

/// Positions of a map's children in the order of their names, as a QJsonObject keeps them.
QVarLengthArray<int, 64> inOrder(const Branch& branch) {
    QVarLengthArray<int, 64> positions(branch.size());
    std::iota(positions.begin(), positions.end(), 0);
    const auto before = [&branch](int a, int b) { return branch.entries[a].name < branch.entries[b].name; };
    if (!std::is_sorted(positions.cbegin(), positions.cend(), before)) {
        std::sort(positions.begin(), positions.end(), before);
    }
    return positions;
}

}  // namespace

void JsonText::add(const ModuleObject* node) {
    startItem();
    write(NodeRef(const_cast<ModuleObject*>(node)));
}

void JsonText::addElements(const ModuleObject* list) {
    const NodeRef node(const_cast<ModuleObject*>(list));
    for (int i = 0; node.kind() == Kind::List && i < node.size(); ++i) {
        startItem();
        write(node.child(i));
    }
}

QByteArray JsonText::take() {
    if (indented_) {
        append("\n", 1);
    }
    text_.resize(size_);
    size_ = 0;
    return std::exchange(text_, QByteArray());
}

void JsonText::begin(char bracket) {
    append(&bracket, 1);
    ++level_;
    isFirst_ = true;
}

void JsonText::end(char bracket) {
    --level_;
    startLine();
    append(&bracket, 1);
    isFirst_ = false;
}

void JsonText::startItem() {
    if (level_ == 0) {
        return;
    }
    if (!isFirst_) {
        append(",", 1);
    }
    startLine();
    isFirst_ = false;
}

void JsonText::startLine() {
    if (indented_) {
        const int indent = 4 * level_;
        char* const to = room(1 + indent);
        *to = '\n';
        std::memset(to + 1, ' ', static_cast<std::size_t>(indent));
        size_ += 1 + indent;
    }
}

void JsonText::writeKey(const QString& key) {
    startItem();
    write(key);
    append(": ", indented_ ? 2 : 1);
}

void JsonText::write(const NodeRef& node) {
    if (node.kind() == Kind::List) {
        begin('[');
        for (int i = 0; i < node.size(); ++i) {
            startItem();
            write(node.child(i));
        }
        end(']');
    } else if (node.kind() == Kind::Map && (node.size() > 0 || !node.value().isValid())) {
        const Branch& branch = *node.branch();
        begin('{');
        for (const int position : inOrder(branch)) {
            writeKey(branch.entries[position].name);
            write(node.child(position));
        }
        end('}');
    } else {
        write(node.value());
    }
}

void JsonText::write(const QVariant& value) {
    switch (static_cast<QMetaType::Type>(value.userType())) {
        case QMetaType::Int:
            write(static_cast<qlonglong>(value.toInt()));
            break;
        case QMetaType::Double:
            write(value.toDouble());
            break;
        case QMetaType::QString:
            write(*static_cast<const QString*>(value.constData()));
            break;
        case QMetaType::Bool:
            write(value.toBool());
            break;
        default:
            write(toJson(value));
    }
}

void JsonText::write(const QJsonValue& value) {
    switch (value.type()) {
        case QJsonValue::Array: {
            begin('[');
            for (const QJsonValue element : value.toArray()) {
                startItem();
                write(element);
            }
            end(']');
            break;
        }
        case QJsonValue::Object: {
            const QJsonObject object = value.toObject();
            begin('{');
            for (auto entry = object.constBegin(); entry != object.constEnd(); ++entry) {
                writeKey(entry.key());
                write(entry.value());
            }
            end('}');
            break;
        }
        case QJsonValue::Null:
        case QJsonValue::Undefined:
            append("null", 4);
            break;
        case QJsonValue::String:
            write(value.toString());
            break;
        case QJsonValue::Bool:
            write(value.toBool());
            break;
        case QJsonValue::Double: {
            const QVariant number = value.toVariant();
            const bool isInteger = number.userType() == QMetaType::LongLong;
            isInteger ? write(number.toLongLong()) : write(number.toDouble());
            break;
        }
    }
}

void JsonText::write(const QString& text) {
    constexpr int longestUnit = 6;
    constexpr int piece = 4096;
    const auto* from = reinterpret_cast<const ushort*>(text.constData());
    const auto* const end = from + text.size();
    append("\"", 1);
    while (from < end) {
        const auto* const pieceEnd = from + std::min<std::ptrdiff_t>(piece, end - from);
        char* const start = room(longestUnit * static_cast<int>(pieceEnd - from + 1));
        char* to = start;
        while (from < pieceEnd) {
            const uint unit = *from++;
            if (unit < 0x80) {
                to = putAscii(to, unit);
            } else if (!QChar::isSurrogate(unit)) {
                to = putWide(to, unit);
            } else if (QChar::isHighSurrogate(unit) && from < end && QChar::isLowSurrogate(*from)) {
                to = putWide(to, QChar::surrogateToUcs4(static_cast<ushort>(unit), *from++));
            } else {
                to = putUnit(to, unit);
            }
        }
        size_ += static_cast<int>(to - start);
    }
    append("\"", 1);
}

void JsonText::write(qlonglong number) {
    if (number == std::numeric_limits<qlonglong>::min()) {
        return write(static_cast<double>(number));  // a document keeps it as one
    }
    constexpr int longest = 20;
    char* const to = room(longest);
    size_ += static_cast<int>(std::to_chars(to, to + longest, number).ptr - to);
}

void JsonText::write(double number) {
    constexpr double beyondSigned = 9223372036854775808.0;
    constexpr double beyondUnsigned = 2 * beyondSigned;
    const double size = std::abs(number);
    const bool isWhole = std::trunc(size) == size && size < beyondUnsigned;
    if (isWhole && size < beyondSigned) {
        write(static_cast<qlonglong>(number));
    } else if (std::isfinite(number)) {
        const QByteArray digits =
            QByteArray::number(number, isWhole ? 'f' : 'g', QLocale::FloatingPointShortest);
        append(digits.constData(), digits.size());
    } else {
        append("null", 4);
    }
}

void JsonText::write(bool truth) {
    truth ? append("true", 4) : append("false", 5);
}

void JsonText::append(const char* bytes, int count) {
    std::memcpy(room(count), bytes, static_cast<std::size_t>(count));
    size_ += count;
}

/// Where to write so many bytes; `size_` grows by those that were written.
char* JsonText::room(int bytes) {
    constexpr int smallest = 4096;
    constexpr int most = INT_MAX - 64;  // what a QByteArray holds, less what it needs itself
    if (bytes > most - size_) {
        qBadAlloc();
    }
    if (bytes > text_.size() - size_) {
        text_.resize(size_ > most / 2 ? most : std::max({smallest, 2 * size_, size_ + bytes}));
    }
    return text_.data() + size_;
}

}  // namespace mendo
