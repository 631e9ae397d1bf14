#include "flight/keyframes.h"

#include "json/jsonwriter.h"
#include "mendo/modulemanager.h"
#include "program/words.h"

#include <algorithm>
#include <iterator>

namespace flight {

using mendo::ModuleObject;
using prog::operator""_l1;

namespace {

/// Templates and dialogs are no state of a cell.
constexpr QLatin1String leftOut[] = {"default"_l1, "dialog"_l1, "keypad"_l1};
constexpr qint64 sharesOfRing = 8;

}  // namespace

void KeyFrames::touched(const Place& place, bool all) {
    if (place.part && !all) {
        known_.erase(place.part);
    } else if (place.isKnown) {
        known_.clear();
    }
}

QByteArray KeyFrames::write() {
    QByteArray list;
    const ModuleObject* const package = m(prog::key::lumo);
    for (const ModuleObject* child : package->cmobjs()) {
        const QString name = child->name();
        if (std::find(std::begin(leftOut), std::end(leftOut), name) == std::end(leftOut)) {
            section(mName(prog::key::lumo, name), child, &list);
        }
    }
    for (const char* name : {"kord", "rova"}) {
        section(QLatin1String(name), m(QLatin1String(name)), &list);
    }
    for (const ModuleObject* child : trees_->root(Record::Tree::Data)->cmobjs()) {
        section(QStringLiteral("data.") + child->name(), child, &list);
    }
    return '{' + list + '}';
}

void KeyFrames::section(const QString& name, const ModuleObject* node, QByteArray* list) {
    const auto known = known_.find(node);
    const bool isKept = known != known_.end() &&
                        sink_->position() - known->second.position < sink_->capacity() / sharesOfRing;
    quint64 number = isKept ? known->second.record : 0;
    if (!isKept) {
        mendo::JsonWriter writer;
        writer.beginObject().key(QStringLiteral("name")).string(name);
        const QByteArray body = writer.key(QStringLiteral("content")).node(node).endObject().take();
        if (body.size() > sink_->capacity() / sharesOfRing) {
            return;
        }
        number = append_(Record::Kind::Section, body);
        known_[node] = {number, sink_->position()};
    }
    *list += (list->isEmpty() ? "" : ",") + mendo::JsonWriter().string(name).take() + ':' +
             QByteArray::number(number);
}

}  // namespace flight
