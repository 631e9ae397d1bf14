#include "app/roles/codehash.h"

#include <QCryptographicHash>
#include <QMessageAuthenticationCode>
#include <QRandomGenerator>

#include <algorithm>

namespace app {

namespace {

constexpr int saltWords = 4;

QByteArray keyed(const QByteArray& message, const QByteArray& key) {
    return QMessageAuthenticationCode::hash(message, key, QCryptographicHash::Sha256);
}

}  // namespace

/// The salt is followed by the number of the block, 1, in four bytes.
CodeHash::CodeHash(const QByteArray& code, const QByteArray& salt, int iterations)
    : code_(code),
      block_(keyed(salt + QByteArray::fromHex("00000001"), code)),
      result_(block_),
      left_(iterations - 1) {}

bool CodeHash::advance(int count) {
    for (int i = std::min(count, left_); i > 0; --i) {
        block_ = keyed(block_, code_);
        for (int byte = 0; byte < result_.size(); ++byte) {
            result_[byte] = char(result_.at(byte) ^ block_.at(byte));
        }
        --left_;
    }
    return left_ <= 0;
}

QByteArray newSalt() {
    quint32 words[saltWords];
    QRandomGenerator::system()->fillRange(words);
    return {reinterpret_cast<const char*>(words), int(sizeof words)};
}

}  // namespace app
