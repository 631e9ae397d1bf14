#include "panel/pagelook.h"

#include "kord/thememanager.h"
#include "look/dialog.h"
#include "look/flick.h"
#include "look/scale.h"
#include "look/sheet.h"
#include "look/type.h"

#include <QDir>
#include <QEvent>
#include <QVariant>
#include <QWidget>

namespace lumo {

PageLook::PageLook(QWidget* page) : QObject(page), page_(page) {
    page->setProperty(look::veiledProperty, true);
    page->installEventFilter(this);
    look::letFlickIn(page);
}

QString PageLook::sheet() {
    QString whole = kord::ThemeManager::genStyleSheet(QStringLiteral(":/UI/style.json"));
    const QDir pieces(QStringLiteral(":/UI/style"));
    const QStringList names = pieces.entryList();
    for (const QString& name : names) {
        whole += kord::ThemeManager::genStyleSheet(pieces.filePath(name));
    }
    return look::filled(whole);
}

/// Sets the sheet only when the page has its parent: a page with a style sheet is styled anew when it gets
/// one.
bool PageLook::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    const bool inPlace = type == QEvent::ParentChange || type == QEvent::Polish;
    const bool resized = type == QEvent::Resize || type == QEvent::Show;
    if ((inPlace && factor_ == 0) || (resized && factor_ != 0 && look::factorFor(*page_) != factor_)) {
        dress();
    }
    return QObject::eventFilter(watched, event);
}

/// Takes the old sheet off first: a child that has one already is given the application's font, not the
/// page's, when it gets another.
void PageLook::dress() {
    factor_ = look::factorFor(*page_);
    look::setFactor(factor_);
    page_->setStyleSheet(QString());
    page_->setFont(look::font(look::Size::Text));
    kord::ThemeManager::setRecursiveWidgetStyleSheet(page_, sheet(), {});
}

}  // namespace lumo
