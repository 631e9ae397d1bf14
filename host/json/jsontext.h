#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QString>
#include <QVariant>

namespace mendo {

class ModuleObject;
class NodeRef;

/// JSON text written straight from the tree: byte for byte what QJsonDocument makes of the nodes'
/// `exportToJson()`, without the document, which takes longer to build and to free than the text.
///
/// Either one node is added, or beginArray, nodes and endArray; then the text is taken.
class JsonText {
public:
    /// `indented`: for a reader; else compact.
    explicit JsonText(bool indented) : indented_(indented) {}

    void beginArray() { begin('['); }
    void endArray() { end(']'); }
    void add(const ModuleObject* node);
    /// The elements of a list; nothing of any other node.
    void addElements(const ModuleObject* list);
    /// The text so far, as a file holds it.
    QByteArray take();

private:
    void begin(char bracket);
    void end(char bracket);
    void startItem();
    void startLine();
    void writeKey(const QString& key);
    void write(const NodeRef& node);
    void write(const QVariant& value);
    void write(const QJsonValue& value);
    void write(const QString& text);
    void write(qlonglong number);
    void write(double number);
    void write(bool truth);
    void append(const char* bytes, int count);
    char* room(int bytes);

    QByteArray text_;  // longer than what is written
    int size_ = 0;
    int level_ = 0;
    bool indented_;
    bool isFirst_ = true;  // nothing stands in the innermost container yet
};

}  // namespace mendo
