#pragma once

#include <QMetaType>
#include <QString>

namespace bridge {

/// The ends of the links that an Adapter has: to the robot controller, and to an I/O device beside it.
enum class LinkEnd { Robot, Device };

/// Why a controller or a device cannot be reached. A panel words the known kinds in its operator's language;
/// any other reason is a text, which is shown as it is.
struct LinkReason {
    enum class Kind {
        None,
        Words,         ///< `detail` says it, in words for the operator
        NoConnection,  ///< `place` cannot be reached; `detail`: the system's words
        UnknownHost,   ///< the network does not know `place`
        Refused,       ///< nothing listens at `place`
        Closed,        ///< `place` has closed the connection
        Lost,          ///< the connection to `place` broke; `detail`: the system's words
        NoAnswer,      ///< `place` is silent
        TooSlow,       ///< a write to `place` has waited `ms`
        NoHeartbeat,   ///< `place` got no heartbeat for `ms` and has switched its outputs off
        StaysOn,       ///< `place` does not switch off the output `detail`
        Cut,           ///< a cable is cut
    };

    LinkReason() = default;
    /// Not explicit: a backend gives a text where it has no known reason.
    LinkReason(const QString& words) : kind(words.isEmpty() ? Kind::None : Kind::Words), detail(words) {}
    LinkReason(Kind reason, const QString& where, const QString& more = {}, int duration = 0)
        : kind(reason), place(where), detail(more), ms(duration) {}

    bool isEmpty() const { return kind == Kind::None; }
    /// In English, for a log.
    QString text() const;

    Kind kind = Kind::None;
    QString place;   ///< who: "LinuxCNC", "192.168.0.20:502"
    QString detail;  ///< not translated
    int ms = 0;
};

bool operator==(const LinkReason& a, const LinkReason& b);
inline bool operator!=(const LinkReason& a, const LinkReason& b) {
    return !(a == b);
}

}  // namespace bridge

Q_DECLARE_METATYPE(bridge::LinkReason)
