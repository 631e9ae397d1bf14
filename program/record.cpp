#include "program/record.h"

#include "mendo/convert.h"

#include <QJsonArray>

#include <algorithm>
#include <array>
#include <cstring>

namespace prog {

using mendo::NodeRef;
using Kind = mendo::Branch::Kind;

namespace {

std::variant<QJsonValue, NodeRef, const ElementSource*> sourceOf(const mendo::ModuleObject* node) {
    if (!node || node->isNull()) {
        return QJsonValue(QJsonValue::Undefined);
    }
    // A NodeRef can write; this class only reads.
    return NodeRef(const_cast<mendo::ModuleObject*>(node));
}

}  // namespace

Record::Record(const mendo::ModuleObject* node) : source_(sourceOf(node)) {}

Record::Record(const QJsonValue& json) : source_(json) {}

Record::Record(const QJsonObject& json) : source_(QJsonValue(json)) {}

Record::Record(const ElementSource& list) : source_(&list) {}

const ElementSource* Record::list() const {
    const auto* const source = std::get_if<const ElementSource*>(&source_);
    return source ? *source : nullptr;
}

QJsonValue Record::json() const {
    const QJsonValue* const value = std::get_if<QJsonValue>(&source_);
    return value ? *value : QJsonValue(QJsonValue::Undefined);
}

Record Record::child(QLatin1String name) const {
    if (!node()) {
        return Record(json().toObject().value(name));
    }
    // On the stack: checks and runs look up many names.
    std::array<QChar, 32> buffer;
    const std::size_t length = static_cast<std::size_t>(name.size());
    if (length > buffer.size()) {
        const int found = node()->find(QString(name));
        return found < 0 ? Record(QJsonValue(QJsonValue::Undefined)) : Record(node()->child(found));
    }
    std::transform(name.data(), name.data() + length, buffer.begin(),
                   [](char letter) { return QLatin1Char(letter); });
    const int position = node()->find(QStringView(buffer.data(), name.size()));
    return position < 0 ? Record(QJsonValue(QJsonValue::Undefined)) : Record(node()->child(position));
}

Record Record::at(QLatin1String path) const {
    const void* const dot = std::memchr(path.data(), '.', static_cast<std::size_t>(path.size()));
    if (!dot) {
        return child(path);
    }
    const int length = static_cast<int>(static_cast<const char*>(dot) - path.data());
    return child(path.left(length)).at(path.mid(length + 1));
}

Record Record::at(int position) const {
    if (position < 0 || position >= size()) {
        return Record(QJsonValue(QJsonValue::Undefined));
    }
    if (list()) {
        return Record(list()->element(position));
    }
    return node() ? Record(node()->child(position)) : Record(json().toArray().at(position));
}

bool Record::exists() const {
    return node() || list() || !json().isUndefined();
}

bool Record::isMissing() const {
    return !isMap() && !isList() && !value().isValid();
}

bool Record::isMap() const {
    return node() ? node()->kind() == Kind::Map : json().isObject();
}

bool Record::isList() const {
    return list() || (node() ? node()->kind() == Kind::List : json().isArray());
}

int Record::size() const {
    if (node()) {
        return node()->size();
    }
    if (list()) {
        return list()->elementCount();
    }
    return isMap() ? json().toObject().size() : json().toArray().size();
}

QVariant Record::value() const {
    if (node()) {
        return node()->value();
    }
    const QJsonValue own = json();
    return own.isObject() || own.isArray() || own.isNull() || own.isUndefined() ? QVariant()
                                                                                : own.toVariant();
}

int Record::integer(int def) const {
    return mendo::toInt(value(), def);
}

double Record::number(double def) const {
    return mendo::toDouble(value(), def);
}

bool Record::flag(bool def) const {
    return mendo::toBool(value(), def);
}

QString Record::text() const {
    return mendo::toText(value(), QString());
}

}  // namespace prog
