#include "telemetry/connection.h"

#include <QFile>

#include <poll.h>

#include <cerrno>
#include <cstring>

namespace telemetry {

using Reason = LinkStatus::Reason;
using State = LinkStatus::State;

namespace {

constexpr int keepAliveS = 15;
/// The longest time without an answer, to a connection as to a message.
constexpr int answerMs = 10000;
/// The broker must have all documents and "offline" within this time, as the cell's thread waits for it.
constexpr int leaveMs = 400;
constexpr int atLeastOnce = 1;
constexpr int longestPollMs = 500;  // keep-alive is looked after as often
const QByteArray onlineTopic = QByteArrayLiteral("online");

/// Null for an empty text.
class CText {
public:
    explicit CText(const QString& text, bool isFile = false)
        : bytes_(isFile ? QFile::encodeName(text) : text.toUtf8()) {}
    operator const char*() const { return bytes_.isEmpty() ? nullptr : bytes_.constData(); }  // NOLINT

private:
    QByteArray bytes_;
};

/// For an error of the system before the broker has answered.
Reason reasonOf(int error) {
    if (error == ECONNRESET || error == EPIPE) {
        return Reason::Lost;
    }
    return error == ETIMEDOUT ? Reason::NoAnswer : Reason::Refused;
}

}  // namespace

Connection::Connection(const MosquittoLibrary* library, const Settings& settings, int change,
                       Exchange* exchange)
    : library_(*library),
      settings_(settings),
      change_(change),
      exchange_(exchange),
      root_(settings.root().toUtf8()),
      // The same name at each connection: the broker ends a lost one that it still holds for alive, with its
      // will, before it takes the new one in.
      mosquitto_(library->create(QByteArray("lumo-" + settings.cell.toUtf8()).constData(), true, this),
                 library->destroy) {
    clock_.start();
}

Connection::~Connection() = default;

// --- Making it ------------------------------------------------------------------------------------

bool Connection::prepare() {
    mosquitto* const m = mosquitto_.get();
    library_.connect_callback_set(m, &Connection::onConnect);
    library_.publish_callback_set(m, &Connection::onPublish);
    library_.log_callback_set(m, &Connection::onLog);
    int code =
        library_.will_set(m, QByteArray(root_ + onlineTopic).constData(), 5, "false", atLeastOnce, true);
    if (code == MOSQ_ERR_SUCCESS && !settings_.user.isEmpty()) {
        code = library_.username_pw_set(m, CText(settings_.user), CText(settings_.password));
    }
    if (code != MOSQ_ERR_SUCCESS) {
        failWith(code, errno);
    }
    return code == MOSQ_ERR_SUCCESS && prepareTls();
}

/// Certificate and name of the broker are always checked: the library's default.
bool Connection::prepareTls() {
    if (!settings_.tls) {
        return true;
    }
    mosquitto* const m = mosquitto_.get();
    if (settings_.caFile.isEmpty() && settings_.certificateFile.isEmpty()) {
        return library_.int_option(m, MOSQ_OPT_TLS_USE_OS_CERTS, 1) == MOSQ_ERR_SUCCESS;
    }
    const CText authorities(settings_.caFile, true);
    const int code =
        library_.tls_set(m, authorities, authorities ? nullptr : "/etc/ssl/certs",
                         CText(settings_.certificateFile, true), CText(settings_.keyFile, true), nullptr);
    if (code != MOSQ_ERR_SUCCESS) {
        fail(Reason::Certificate, QString::fromUtf8(library_.strerror(code)));
    }
    return code == MOSQ_ERR_SUCCESS;
}

void Connection::run() {
    exchange_->setState(State::Connecting);
    if (!prepare()) {
        return;
    }
    const int code = library_.connect_async(mosquitto_.get(), settings_.host.trimmed().toUtf8().constData(),
                                            settings_.port, keepAliveS);
    if (code != MOSQ_ERR_SUCCESS) {
        failWith(code, errno);
        return;
    }
    beganMs_ = clock_.elapsed();
    while (!exchange_->isObsolete(change_)) {
        wait(longestPollMs);
        if (!step()) {
            return;
        }
        // The library overlooks a refusal when it makes an encrypted connection.
        if (!isConnected_ && hasHungUp_) {
            fail(Reason::Refused);
            return;
        }
        if (isOverdue()) {
            fail(Reason::NoAnswer);
            return;
        }
        if (isConnected_) {
            sendDue();
        }
    }
    leave();
}

/// What the broker has of the cell is from an earlier connection.
void Connection::begin() {
    isConnected_ = true;
    sendOnline(true);
    exchange_->resendAll();
    exchange_->setState(State::Connected);
}

void Connection::onConnect(mosquitto*, void* self, int code) {
    auto* const connection = static_cast<Connection*>(self);
    connection->refusal_ = code;
    if (code == 0) {
        connection->begin();
    }
}

// --- While it lasts -------------------------------------------------------------------------------

/// What ends it: the broker, a document or a change in the exchange, and the time.
void Connection::wait(int mostMs) {
    const bool wantsToSend = library_.want_write(mosquitto_.get());
    pollfd watched[] = {
        {library_.socket(mosquitto_.get()), short(wantsToSend ? POLLIN | POLLOUT : POLLIN), 0},
        {exchange_->wakeDescriptor(), POLLIN, 0}};
    ::poll(watched, 2, isConnected_ ? exchange_->msUntilDue(clock_.elapsed(), mostMs) : mostMs);
    hasHungUp_ = (watched[0].revents & (POLLHUP | POLLERR)) != 0;
    exchange_->clearWake();
}

/// Lets the library receive and send, without waiting. False when the connection is broken.
bool Connection::step() {
    errno = 0;
    const int code = library_.loop(mosquitto_.get(), 0, 1);
    if (code == MOSQ_ERR_SUCCESS && refusal_ == 0) {
        return true;
    }
    failWith(code, errno);
    return false;
}

void Connection::sendDue() {
    while (const auto letter = exchange_->take(clock_.elapsed())) {
        send(letter->topic, letter->document());
    }
}

void Connection::send(const QByteArray& topic, const QByteArray& payload) {
    int message = 0;
    const int code = library_.publish(mosquitto_.get(), &message, QByteArray(root_ + topic).constData(),
                                      int(payload.size()), payload.constData(), atLeastOnce, true);
    if (code == MOSQ_ERR_SUCCESS) {
        if (underWay_.isEmpty()) {
            oldestMs_ = clock_.elapsed();
        }
        underWay_.insert(message, topic);
    }
}

void Connection::sendOnline(bool online) {
    send(onlineTopic, online ? QByteArrayLiteral("true") : QByteArrayLiteral("false"));
}

void Connection::onPublish(mosquitto*, void* self, int message) {
    auto* const connection = static_cast<Connection*>(self);
    connection->exchange_->acknowledge(connection->underWay_.take(message));
    connection->oldestMs_ = connection->clock_.elapsed();
}

bool Connection::isOverdue() const {
    const qint64 now = clock_.elapsed();
    return isConnected_ ? !underWay_.isEmpty() && now - oldestMs_ > answerMs : now - beganMs_ > answerMs;
}

// --- Its end --------------------------------------------------------------------------------------

/// The last documents, then "offline", which a polite end leaves to the client. What ends it: the broker's
/// acknowledgements, a broken connection, and leaveMs.
void Connection::leave() {
    if (!isConnected_) {
        return;
    }
    constexpr int pollMs = 20;
    const qint64 endMs = clock_.elapsed() + leaveMs;
    bool isSaid = false;
    while (clock_.elapsed() < endMs) {
        while (const auto letter = exchange_->take(clock_.elapsed(), true)) {
            send(letter->topic, letter->document());
        }
        if (underWay_.isEmpty() && isSaid) {
            break;
        }
        if (underWay_.isEmpty()) {
            sendOnline(false);
            isSaid = true;
        }
        wait(pollMs);
        if (!step()) {
            return;
        }
    }
    if (isSaid) {
        library_.disconnect(mosquitto_.get());
        library_.loop(mosquitto_.get(), 0, 1);
    }
}

void Connection::onLog(mosquitto*, void* self, int level, const char* text) {
    if (level == MOSQ_LOG_ERR) {
        static_cast<Connection*>(self)->tlsWords_ = QString::fromUtf8(text);
    }
}

void Connection::fail(Reason reason, const QString& words) {
    exchange_->setState(State::Failed, reason, words);
}

void Connection::failWith(int code, int systemError) {
    constexpr int badLogin = 4, notAllowed = 5;  // answers of a broker to a connection
    const QString words = code == MOSQ_ERR_ERRNO ? QString::fromUtf8(std::strerror(systemError))
                                                 : QString::fromUtf8(library_.strerror(code));
    if (refusal_ == badLogin) {
        fail(Reason::BadLogin);
    } else if (refusal_ == notAllowed) {
        fail(settings_.user.isEmpty() ? Reason::NotAllowed : Reason::BadLogin);
    } else if (refusal_ != 0) {
        fail(Reason::NotAllowed, QString::fromUtf8(library_.connack_string(refusal_)));
    } else if (code == MOSQ_ERR_EAI || code == MOSQ_ERR_UNKNOWN) {
        fail(Reason::UnknownHost);
    } else if (code == MOSQ_ERR_KEEPALIVE) {
        fail(Reason::NoAnswer);
    } else if (code == MOSQ_ERR_TLS || (settings_.tls && !isConnected_ && !tlsWords_.isEmpty())) {
        fail(Reason::Certificate, tlsWords_);
    } else if (!isConnected_ && code == MOSQ_ERR_ERRNO) {
        fail(reasonOf(systemError), words);
    } else {
        fail(code == MOSQ_ERR_CONN_LOST || code == MOSQ_ERR_ERRNO ? Reason::Lost : Reason::Other, words);
    }
}

}  // namespace telemetry
