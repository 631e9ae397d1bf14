#include "pel/navo.h"

#include "mendo/modulemanager.h"

#include <QJsonArray>

namespace pel {
namespace navo {

namespace {

mendo::ModuleObject* pages(QObject* owner) {
    const QString path = QStringLiteral("pel.navo.pages");
    if (!m()->root()->hasRmobj(path)) {
        m()->root()->set(owner, path, QVariant());
        m(path)->loadJson(owner, QJsonArray());
    }
    return m(path);
}

}  // namespace

mendo::ModuleObject* registerPage(QObject* owner, const QString& title, const QString& group,
                                  const QString& icon, int index) {
    auto* page = new mendo::ModuleObject;
    page->set(owner, QStringLiteral("title"), title)
        ->set(owner, QStringLiteral("group"), group)
        ->set(owner, QStringLiteral("icon"), icon)
        ->set(owner, QStringLiteral("index"), index);
    pages(owner)->insert(owner, page, true, index);
    return page;
}

}  // namespace navo
}  // namespace pel
