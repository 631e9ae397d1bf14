#pragma once

#include "mendo/moduleobject.h"

#include <QString>

namespace pel {
namespace navo {

/// Adds a page to the panel's navigation, the list "pel.navo.pages"; index -1 appends. Returns the page's
/// node with title, group, icon and index. The package adds "nav", the factory key of the page's module.
mendo::ModuleObject* registerPage(QObject* owner, const QString& title, const QString& group,
                                  const QString& icon, int index);

}  // namespace navo
}  // namespace pel
