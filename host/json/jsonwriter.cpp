#include "json/jsonwriter.h"

#include "mendo/moduleobject.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QVariantHash>
#include <QVariantMap>

#include <charconv>
#include <cmath>

namespace mendo {

namespace {

QByteArray quoted(const QString& value) {
    QByteArray out("\"");
    for (const char c : value.toUtf8()) {
        switch (c) {
            case '"':
                out += "\\\"";
                break;
            case '\\':
                out += "\\\\";
                break;
            case '\n':
                out += "\\n";
                break;
            case '\r':
                out += "\\r";
                break;
            case '\t':
                out += "\\t";
                break;
            default:
                if (uchar(c) < 0x20) {
                    out += "\\u" + QByteArray::number(uchar(c), 16).rightJustified(4, '0');
                } else {
                    out += c;
                }
        }
    }
    return out + '"';
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
    needsComma_ = true;
}

JsonWriter& JsonWriter::open(char bracket) {
    separate();
    text_ += bracket;
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::close(char bracket) {
    text_ += bracket;
    needsComma_ = true;
    return *this;
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
    text_ += quoted(name) + ':';
    needsComma_ = false;
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
    return raw(numberText(value));
}

JsonWriter& JsonWriter::integer(qint64 value) {
    return raw(QByteArray::number(value));
}

JsonWriter& JsonWriter::string(const QString& value) {
    return raw(quoted(value));
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
        return number(value.toDouble());
    }
    return value.isString() ? string(value.toString()) : null();
}

JsonWriter& JsonWriter::variant(const QVariant& value) {
    switch (int(value.type())) {
        case QMetaType::Bool:
            return boolean(value.toBool());
        case QMetaType::Double:
        case QMetaType::Float:
            return number(value.toDouble());
        case QMetaType::QString:
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
        case QMetaType::Int:
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
    if (!node || node->isNull()) {
        return null();
    }
    if (node->cmobjCount() == 0) {
        return node->value().isValid() ? variant(node->value()) : json(node->exportToJson());
    }
    const bool list = node->isList();
    open(list ? '[' : '{');
    for (const ModuleObject* child : node->cmobjs()) {
        if (!list) {
            key(child->name());
        }
        this->node(child);
    }
    return close(list ? ']' : '}');
}

QByteArray JsonWriter::take() {
    QByteArray text;
    text.swap(text_);
    needsComma_ = false;
    return text;
}

}  // namespace mendo
