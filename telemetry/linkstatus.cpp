#include "telemetry/linkstatus.h"

namespace telemetry {

namespace {

QString reasonText(LinkStatus::Reason reason, const QString& words) {
    using Reason = LinkStatus::Reason;
    switch (reason) {
        case Reason::NoLibrary:
            return QStringLiteral(
                "the library libmosquitto.so.1 is missing: install the package libmosquitto1");
        case Reason::UnknownHost:
            return QStringLiteral("the host's name has no address");
        case Reason::Refused:
            return QStringLiteral("the connection is refused");
        case Reason::NoAnswer:
            return QStringLiteral("the broker does not answer");
        case Reason::Lost:
            return QStringLiteral("the broker has closed the connection");
        case Reason::BadLogin:
            return QStringLiteral("user or password is wrong");
        case Reason::NotAllowed:
            return QStringLiteral("the broker does not let this client in");
        case Reason::Certificate:
            return QStringLiteral("the certificates do not fit");
        case Reason::Other:
        case Reason::None:
            break;
    }
    return words;
}

}  // namespace

QString LinkStatus::text() const {
    switch (state) {
        case State::Off:
            return QStringLiteral("off");
        case State::Connecting:
            return QStringLiteral("connecting");
        case State::Connected:
            return QStringLiteral("connected");
        case State::Failed:
            break;
    }
    return QStringLiteral("not reachable: %1").arg(reasonText(reason, words));
}

}  // namespace telemetry
