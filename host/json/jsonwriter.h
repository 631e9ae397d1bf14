#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QString>
#include <QVariant>

namespace mendo {

class ModuleObject;
class NodeRef;

/// The shortest text that reads back as the same number; "null" for what is no number.
[[nodiscard]] QByteArray numberText(double number);

/// Writes JSON. The caller keeps begin and end in pairs.
class JsonWriter {
public:
    enum class Layout {
        /// On one line, keys in the order in which they are given, numbers by numberText().
        Line,
        /// For a file: byte for byte as QJsonDocument writes it indented, but straight from the tree. The
        /// document takes as long to build and to free as to write.
        Document
    };
    explicit JsonWriter(Layout layout = Layout::Line) : isDocument_(layout == Layout::Document) {}

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
    /// A node's value or children, lists as arrays; null for none. A document sorts the keys.
    JsonWriter& node(const ModuleObject* node);
    /// The elements of a list; nothing of any other node.
    JsonWriter& elements(const ModuleObject* list);
    /// One child of a node, by its position.
    JsonWriter& child(const ModuleObject* node, int position);
    /// Text that is JSON already.
    JsonWriter& raw(const QByteArray& text);

    /// The text so far, with a final line end for a document; the writer is empty afterwards.
    QByteArray take();

private:
    void separate();
    void startLine();
    void appendQuoted(const QString& text);
    JsonWriter& open(char bracket);
    JsonWriter& close(char bracket);
    JsonWriter& rareVariant(const QVariant& value);
    JsonWriter& record(const NodeRef& node);

    QByteArray text_;
    bool isDocument_;
    bool needsComma_ = false;
    bool isAfterKey_ = false;
    int level_ = 0;
};

}  // namespace mendo
