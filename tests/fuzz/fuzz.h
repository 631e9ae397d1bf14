#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QStringList>

/// Every file that is read, as an attacker or a torn disk might leave it.
namespace fuzz {

/// What reads one kind of file, and uses what it read.
using Target = void (*)(const QByteArray& input);
struct Registered {
    Registered(const char* name, Target target);
};
QStringList targets();

/// Hands an input to a target, in a working folder of its own with the package's tree as after a start.
void read(const QString& target, const QByteArray& input);

/// For targets: puts a file into the folder, which is emptied behind each input.
void write(const QString& name, const QByteArray& content);
/// Ends the process, saying what does not hold, when it does not.
void require(bool holds, const char* what);
/// Takes what was read: here only the reading matters.
template <typename... Values>
void use(const Values&...) {}

/// Whether two values say the same: of an integer a tree holds as many digits as a double does, and Qt does
/// not compare objects whose names hold a zero character.
bool isSame(const QJsonValue& one, const QJsonValue& other);

/// Saving syncs a file and its folder: only one in so many inputs goes through it, or all.
constexpr unsigned shareSaved = 1024;
bool isSavedToo(const QByteArray& input);
void saveAll();

}  // namespace fuzz

#define FUZZ_TARGET(name)                                        \
    static void name(const QByteArray& input);                   \
    static const fuzz::Registered name##Registered(#name, name); \
    static void name(const QByteArray& input)
