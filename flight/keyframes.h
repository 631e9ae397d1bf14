#pragma once

#include "flight/record.h"
#include "flight/trees.h"

#include <QString>

#include <functional>
#include <unordered_map>

namespace flight {

/// Writes the whole state of package, robot and cell in sections, each only where it has changed since it was
/// written last, or would soon be replaced in the ring.
class KeyFrames {
public:
    /// Appends a record that the caller completes with time and writer, and returns its number.
    using Append = std::function<quint64(Record::Kind kind, const QByteArray& body)>;

    KeyFrames(const Trees* trees, const Sink* sink, Append append)
        : trees_(trees), sink_(sink), append_(std::move(append)) {}

    /// Something was written at a place; `all`: the part may have got another node.
    void touched(const Place& place, bool all);
    /// Writes the sections that are due. Returns a JSON object: the name of each section and its record's
    /// number; without those that are too large for the ring.
    QByteArray write();

private:
    struct Known {
        quint64 record;
        qint64 position;  ///< of the sink behind it
    };
    void section(const QString& name, const mendo::ModuleObject* node, QByteArray* list);

    const Trees* trees_;
    const Sink* sink_;
    Append append_;
    std::unordered_map<const mendo::ModuleObject*, Known> known_;
};

}  // namespace flight
