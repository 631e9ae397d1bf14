#include "flight/record.h"

#include <QJsonDocument>

#include <cstring>

namespace flight {

namespace {

constexpr int ownBytes = 20;

}  // namespace

QJsonObject Record::object() const {
    return kind == Kind::Posture ? QJsonObject() : QJsonDocument::fromJson(body).object();
}

QByteArray Record::encoded() const {
    QByteArray bytes(ownBytes + body.size(), Qt::Uninitialized);
    char* const to = bytes.data();
    to[0] = char(kind);
    to[1] = char(by);
    to[2] = char(inside);
    to[3] = char(tree);
    std::memcpy(to + 4, &ms, sizeof ms);
    std::memcpy(to + 12, &wallMs, sizeof wallMs);
    std::memcpy(to + ownBytes, body.constData(), std::size_t(body.size()));
    return bytes;
}

bool Record::decode(const QByteArray& bytes, Record* record) {
    if (bytes.size() < ownBytes) {
        return false;
    }
    const char* const from = bytes.constData();
    const auto within = [from](int place, int first, auto last) {
        return from[place] >= first && from[place] <= char(last);
    };
    if (!within(0, 1, Kind::Posture) || !within(1, 0, By::Nobody) || !within(2, 0, Inside::Act) ||
        !within(3, 0, Tree::Pendant)) {
        return false;
    }
    record->kind = Kind(from[0]);
    record->by = By(from[1]);
    record->inside = Inside(from[2]);
    record->tree = Tree(from[3]);
    std::memcpy(&record->ms, from + 4, sizeof record->ms);
    std::memcpy(&record->wallMs, from + 12, sizeof record->wallMs);
    record->body = bytes.mid(ownBytes);
    return true;
}

}  // namespace flight
