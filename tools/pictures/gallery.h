#pragma once

#include <QSize>
#include <QString>

namespace pictures {

/// Which pictures are taken; empty: all of them.
struct Choice {
    QString part;  ///< of the picture's name
    QSize size;
    bool faultyOnly = false;  ///< of the pictures, those are written in which something is wrong
};

/// Reads "1280x800"; false when it is not of this kind.
bool readSize(const QString& text, QSize* size);

/// Takes all pictures in one language into a folder, which is made where it is missing. Language and
/// look are installed, time is virtual, and there is no other panel in the process. Problems are told
/// on standard error; the exit status.
int writeGallery(const QString& folder, const QString& language, const Choice& choice);

/// The same in every language, each in a process of its own: the package reads its texts only once,
/// when it is loaded.
int writeEveryGallery(const QString& folder, const Choice& choice);

/// Prints a problem on standard error; the exit status that goes with it.
int complain(const QString& text);

}  // namespace pictures
