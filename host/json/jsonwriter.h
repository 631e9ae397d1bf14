#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QString>
#include <QVariant>

namespace mendo {

class ModuleObject;

/// The shortest text that reads back as the same number; "null" for what is no number.
[[nodiscard]] QByteArray numberText(double number);

/// Writes JSON on one line with the keys in the order in which they are given. (Qt's own objects sort
/// them.) The caller keeps begin and end in pairs.
class JsonWriter {
public:
    JsonWriter& beginObject();
    JsonWriter& endObject();
    JsonWriter& beginArray();
    JsonWriter& endArray();
    JsonWriter& key(const QString& name);

    JsonWriter& null();
    JsonWriter& boolean(bool value);
    JsonWriter& number(double value);
    JsonWriter& integer(qint64 value);
    JsonWriter& string(const QString& value);
    /// Maps come out with sorted keys, lists as arrays; what JSON cannot hold (pointers) as null.
    JsonWriter& variant(const QVariant& value);
    JsonWriter& json(const QJsonValue& value);
    /// A node with its children in their order, lists as arrays; null for none.
    JsonWriter& node(const ModuleObject* node);
    /// Text that is JSON already.
    JsonWriter& raw(const QByteArray& text);

    /// The text so far; the writer is empty afterwards.
    QByteArray take();

private:
    void separate();
    JsonWriter& open(char bracket);
    JsonWriter& close(char bracket);

    QByteArray text_;
    bool needsComma_ = false;
};

}  // namespace mendo
