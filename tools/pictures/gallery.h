#pragma once

#include <QString>

namespace pictures {

/// Takes all pictures in one language into a folder, which is made where it is missing. Language and
/// look are installed, time is virtual, and there is no other panel in the process. Problems are told
/// on standard error; the exit status.
int writeGallery(const QString& folder, const QString& language);

/// The same in every language, each in a process of its own: the package reads its texts only once,
/// when it is loaded.
int writeEveryGallery(const QString& folder);

/// Prints a problem on standard error; the exit status that goes with it.
int complain(const QString& text);

}  // namespace pictures
