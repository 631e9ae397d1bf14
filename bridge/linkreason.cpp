#include "bridge/linkreason.h"

namespace bridge {

QString LinkReason::text() const {
    switch (kind) {
        case Kind::NoConnection:
            return QStringLiteral("no connection to %1: %2").arg(place, detail);
        case Kind::UnknownHost:
            return QStringLiteral("no connection to %1: there is no such host").arg(place);
        case Kind::Refused:
            return QStringLiteral("no connection to %1: nothing listens there").arg(place);
        case Kind::Closed:
            return QStringLiteral("connection to %1 lost: it was closed there").arg(place);
        case Kind::Lost:
            return QStringLiteral("connection to %1 lost: %2").arg(place, detail);
        case Kind::NoAnswer:
            return QStringLiteral("%1 does not answer").arg(place);
        case Kind::TooSlow:
            return QStringLiteral("%1 answers too slowly: a write has waited %2 ms")
                .arg(place, QString::number(ms));
        case Kind::NoHeartbeat:
            return QStringLiteral("%1 got no heartbeat for %2 ms and has switched its outputs off")
                .arg(place, QString::number(ms));
        case Kind::StaysOn:
            return QStringLiteral("%1 does not switch off %2").arg(place, detail);
        case Kind::Cut:
            return QStringLiteral("the cable is cut");
        case Kind::Words:
        case Kind::None:
            break;
    }
    return detail;
}

bool operator==(const LinkReason& a, const LinkReason& b) {
    return a.kind == b.kind && a.place == b.place && a.detail == b.detail && a.ms == b.ms;
}

}  // namespace bridge
