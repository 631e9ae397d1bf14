#pragma once

#include <QByteArray>
#include <QString>

/// Every file that is read, as an attacker or a torn disk might leave it.
namespace fuzz {

/// Hands an input to what reads one kind of file and uses what it read, in the current folder, which is
/// emptied behind it, with the package's tree as after a start.
void read(const QString& target, const QByteArray& input);

/// Saving syncs a file and its folder: only one in so many inputs goes through it.
inline unsigned shareSaved = 1024;

}  // namespace fuzz
