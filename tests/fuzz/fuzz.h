#pragma once

#include <QByteArray>
#include <QString>

/// Reading damaged or malicious files.
namespace fuzz {

/// Reads an input as one kind of file and uses the result. Works in the current folder and empties it
/// afterwards; the package's tree is as after a start.
void read(const QString& target, const QByteArray& input);

/// Only one of so many inputs is saved through a file, because saving syncs file and folder.
inline unsigned shareSaved = 1024;

}  // namespace fuzz
