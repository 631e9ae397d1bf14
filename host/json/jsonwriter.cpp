#include "json/jsonwriter.h"

#include "mendo/branch.h"
#include "mendo/convert.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QLocale>
#include <QVarLengthArray>
#include <QVariantHash>
#include <QVariantMap>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <numeric>
#include <utility>

namespace mendo {

namespace {

using Kind = Branch::Kind;

/// The escape of a UTF-16 unit; empty for a unit that stands for itself. A surrogate is escaped where its
/// other half is missing.
QByteArray escapeOf(ushort unit) {
    constexpr char escaped[] = "\"\\\b\f\n\r\t";
    constexpr char letters[] = "\"\\bfnrt";
    if (unit >= ' ' && unit != '"' && unit != '\\' && !QChar::isSurrogate(unit)) {
        return {};
    }
    const char* const found = unit > 0 && unit < 0x80 ? std::strchr(escaped, unit) : nullptr;
    return found ? QByteArray("\\") + letters[found - escaped]
                 : "\\u" + QByteArray::number(unit, 16).rightJustified(4, '0');
}

/// A number as QJsonDocument writes it.
QByteArray documentNumber(double number) {
    constexpr double beyondSigned = 9223372036854775808.0;
    constexpr double beyondUnsigned = 2 * beyondSigned;
    const double size = std::abs(number);
    const bool isWhole = std::trunc(size) == size && size < beyondUnsigned;
    if (isWhole && size < beyondSigned) {
        return QByteArray::number(static_cast<qint64>(number));
    }
    return std::isfinite(number)
               ? QByteArray::number(number, isWhole ? 'f' : 'g', QLocale::FloatingPointShortest)
               : QByteArray("null");
}

/// Positions of a map's children in the order of their names, as QJsonObject keeps them.
QVarLengthArray<int, 64> sortedPositions(const Branch& branch) {
    QVarLengthArray<int, 64> positions(branch.size());
    std::iota(positions.begin(), positions.end(), 0);
    const auto before = [&branch](int a, int b) { return branch.entries[a].name < branch.entries[b].name; };
    if (!std::is_sorted(positions.cbegin(), positions.cend(), before)) {
        std::sort(positions.begin(), positions.end(), before);
    }
    return positions;
}

}  // namespace

QByteArray numberText(double number) {
    if (!std::isfinite(number)) {
        return "null";
    }
    constexpr double exactIntegers = 1e15;
    char buffer[64];
    const bool plain = std::abs(number) < exactIntegers && number == std::trunc(number);
    const std::to_chars_result end =
        plain ? std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::fixed)
              : std::to_chars(buffer, buffer + sizeof buffer, number);
    return QByteArray(buffer, int(end.ptr - buffer));
}

void JsonWriter::separate() {
    if (needsComma_) {
        text_ += ',';
    }
    if (level_ > 0 && !isAfterKey_) {
        startLine();
    }
    needsComma_ = true;
    isAfterKey_ = false;
}

void JsonWriter::startLine() {
    if (isDocument_) {
        constexpr int indent = 4;
        const int size = text_.size();
        text_.resize(size + 1 + indent * level_);
        text_[size] = '\n';
        std::fill(text_.begin() + size + 1, text_.end(), ' ');
    }
}

JsonWriter& JsonWriter::open(char bracket) {
    separate();
    text_ += bracket;
    needsComma_ = false;
    ++level_;
    return *this;
}

JsonWriter& JsonWriter::close(char bracket) {
    --level_;
    startLine();
    text_ += bracket;
    needsComma_ = true;
    return *this;
}

void JsonWriter::appendQuoted(const QString& text) {
    text_ += '"';
    int from = 0;
    for (int i = 0; i < text.size(); ++i) {
        const ushort unit = text[i].unicode();
        const bool isPair =
            QChar::isHighSurrogate(unit) && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        const QByteArray escape = isPair ? QByteArray() : escapeOf(unit);
        if (!escape.isEmpty()) {
            text_ += text.midRef(from, i - from).toUtf8() + escape;
            from = i + 1;
        }
        i += isPair ? 1 : 0;
    }
    text_ += text.midRef(from).toUtf8();
    text_ += '"';
}

JsonWriter& JsonWriter::beginObject() {
    return open('{');
}

JsonWriter& JsonWriter::endObject() {
    return close('}');
}

JsonWriter& JsonWriter::beginArray() {
    return open('[');
}

JsonWriter& JsonWriter::endArray() {
    return close(']');
}

JsonWriter& JsonWriter::key(const QString& name) {
    separate();
    appendQuoted(name);
    text_ += isDocument_ ? ": " : ":";
    needsComma_ = false;
    isAfterKey_ = true;
    return *this;
}

JsonWriter& JsonWriter::raw(const QByteArray& text) {
    separate();
    text_ += text;
    return *this;
}

JsonWriter& JsonWriter::null() {
    return raw("null");
}

JsonWriter& JsonWriter::boolean(bool value) {
    return raw(value ? "true" : "false");
}

JsonWriter& JsonWriter::number(double value) {
    return raw(isDocument_ ? documentNumber(value) : numberText(value));
}

JsonWriter& JsonWriter::integer(qint64 value) {
    // The least integer is a floating-point number for QJsonDocument.
    return isDocument_ && value == std::numeric_limits<qint64>::min() ? number(double(value))
                                                                      : raw(QByteArray::number(value));
}

JsonWriter& JsonWriter::string(const QString& value) {
    separate();
    appendQuoted(value);
    return *this;
}

JsonWriter& JsonWriter::json(const QJsonValue& value) {
    if (value.isArray()) {
        beginArray();
        for (const QJsonValue item : value.toArray()) {
            json(item);
        }
        return endArray();
    }
    if (value.isObject()) {
        beginObject();
        const QJsonObject object = value.toObject();
        for (auto item = object.begin(); item != object.end(); ++item) {
            key(item.key()).json(item.value());
        }
        return endObject();
    }
    if (value.isBool()) {
        return boolean(value.toBool());
    }
    if (value.isDouble()) {
        const QVariant exact = value.toVariant();
        return isDocument_ && exact.userType() == QMetaType::LongLong ? integer(exact.toLongLong())
                                                                      : number(value.toDouble());
    }
    return value.isString() ? string(value.toString()) : null();
}

JsonWriter& JsonWriter::variant(const QVariant& value) {
    switch (int(value.type())) {
        case QMetaType::Bool:
            return boolean(value.toBool());
        case QMetaType::Double:
            return number(value.toDouble());
        case QMetaType::Int:
            return integer(value.toInt());
        case QMetaType::QString:
            return string(value.toString());
        default:
            return isDocument_ ? json(toJson(value)) : rareVariant(value);
    }
}

/// A value of a type that the tree and the robot service use seldom.
JsonWriter& JsonWriter::rareVariant(const QVariant& value) {
    switch (int(value.type())) {
        case QMetaType::Float:
            return number(value.toDouble());
        case QMetaType::QByteArray:
        case QMetaType::QChar:
            return string(value.toString());
        case QMetaType::QVariantList:
        case QMetaType::QStringList:
            beginArray();
            for (const QVariant& item : value.toList()) {
                variant(item);
            }
            return endArray();
        case QMetaType::QVariantHash:
        case QMetaType::QVariantMap: {
            beginObject();
            const QVariantMap map = value.toMap();
            for (auto item = map.begin(); item != map.end(); ++item) {
                key(item.key()).variant(item.value());
            }
            return endObject();
        }
        case QMetaType::QJsonValue:
        case QMetaType::QJsonArray:
        case QMetaType::QJsonObject:
            return json(value.toJsonValue());
        case QMetaType::UInt:
        case QMetaType::Short:
        case QMetaType::UShort:
        case QMetaType::Long:
        case QMetaType::LongLong:
            return integer(value.toLongLong());
        default:
            return null();
    }
}

JsonWriter& JsonWriter::node(const ModuleObject* node) {
    return node ? record(NodeRef(const_cast<ModuleObject*>(node))) : null();
}

JsonWriter& JsonWriter::elements(const ModuleObject* list) {
    const NodeRef node(const_cast<ModuleObject*>(list));
    for (int i = 0; node.kind() == Kind::List && i < node.size(); ++i) {
        record(node.child(i));
    }
    return *this;
}

JsonWriter& JsonWriter::child(const ModuleObject* node, int position) {
    return record(NodeRef(const_cast<ModuleObject*>(node)).child(position));
}

JsonWriter& JsonWriter::record(const NodeRef& node) {
    if (node.kind() == Kind::List) {
        beginArray();
        for (int i = 0; i < node.size(); ++i) {
            record(node.child(i));
        }
        return endArray();
    }
    if (node.kind() == Kind::Plain || (node.size() == 0 && node.value().isValid())) {
        return variant(node.value());
    }
    beginObject();
    const Branch& branch = *node.branch();
    const auto sorted = isDocument_ ? sortedPositions(branch) : QVarLengthArray<int, 64>();
    for (int i = 0; i < branch.size(); ++i) {
        const int position = isDocument_ ? sorted[i] : i;
        key(branch.entries[position].name).record(node.child(position));
    }
    return endObject();
}

QByteArray JsonWriter::take() {
    if (isDocument_) {
        text_ += '\n';
    }
    needsComma_ = false;
    return std::exchange(text_, QByteArray());
}

}  // namespace mendo
