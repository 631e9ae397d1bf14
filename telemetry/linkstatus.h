#pragma once

#include <QString>
#include <QtGlobal>

namespace telemetry {

/// How the connection to the broker stands.
struct LinkStatus {
    enum class State { Off, Connecting, Connected, Failed };
    /// Why there is no connection.
    enum class Reason {
        None,
        NoLibrary,    ///< libmosquitto is not installed
        UnknownHost,  ///< the name has no address
        Refused,      ///< nobody listens at the port, or no way leads there
        NoAnswer,     ///< nothing came back in time
        Lost,         ///< the broker has closed the connection
        BadLogin,     ///< user or password
        NotAllowed,   ///< the broker does not let this client in
        Certificate,  ///< TLS: the certificates are not those that are trusted
        Other,
    };

    State state = State::Off;
    Reason reason = Reason::None;
    QString words;        ///< of the system or the library, in English; empty: none
    qint64 sent = 0;      ///< documents that the broker has acknowledged
    qint64 replaced = 0;  ///< documents that were followed by a newer one before they were sent

    /// In plain English, without a full stop: "not reachable: the name has no address".
    [[nodiscard]] QString text() const;
};

}  // namespace telemetry
