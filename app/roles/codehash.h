#pragma once

#include <QByteArray>

namespace app {

/// PBKDF2 with HMAC-SHA-256 (RFC 8018), one block of 32 bytes, computed in parts: while a code is checked,
/// the timers of a weld go on.
class CodeHash {
public:
    CodeHash(const QByteArray& code, const QByteArray& salt, int iterations);

    /// At most `count` iterations more; true when all are done.
    bool advance(int count);
    /// When all are done.
    [[nodiscard]] const QByteArray& result() const { return result_; }

private:
    QByteArray code_;
    QByteArray block_;
    QByteArray result_;
    int left_;
};

/// Random bytes for a new code.
QByteArray newSalt();

}  // namespace app
