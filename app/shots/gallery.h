#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

#include <vector>

namespace app {

/// The sizes of the panel's window that pictures are taken in.
std::vector<QSize> pictureSizes();
/// The file of a picture: LANGUAGE-SIZE-NAME.png.
QString pictureName(const QString& language, const QSize& size, const QString& name);

/// Takes all pictures in one language into a folder, which is made where it is missing. Language and
/// look are installed, the time is virtual, and there is no other panel in the process. What goes
/// wrong is said on standard error; the exit status.
int writeGallery(const QString& folder, const QString& language);

/// The same in every language, each in a process of its own, because a package chooses its texts
/// once, when it starts.
int writeEveryGallery(const QString& folder);

}  // namespace app
