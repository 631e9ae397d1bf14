#pragma once

#include "mendo/moduleobject.h"

#include <QString>

namespace pel {
namespace navo {

/// Adds a page to the panel's navigation and returns its node, which holds title, group, icon and
/// index; the package adds "nav", the factory key of the page's module. Index -1 appends.
/// Pages are children of the list "pel.navo.pages".
mendo::ModuleObject* registerPage(QObject* owner, const QString& title, const QString& group,
                                  const QString& icon, int index);

}  // namespace navo
}  // namespace pel
