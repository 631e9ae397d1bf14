#include "app/navigation.h"

#include "look/scale.h"
#include "look/type.h"
#include "mendo/modulemanager.h"
#include "program/words.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QHBoxLayout>
#include <QToolButton>
#include <QVector>

#include <algorithm>

namespace app {

namespace {

struct Page {
    QString key, title, group;
};

/// The pages with a key, grouped; groups in the order of their first page.
QVector<Page> readPages() {
    QVector<Page> pages;
    for (const mendo::ModuleObject* node : m(prog::key::pages)->cmobjs()) {
        const auto field = [node](const char* name) { return node->c(QLatin1String(name))->getString(); };
        const Page page{field("nav"), field("title"), field("group")};
        if (page.key.isEmpty()) {
            continue;
        }
        const auto last =
            std::find_if(pages.rbegin(), pages.rend(), [&](const Page& p) { return p.group == page.group; });
        pages.insert(last == pages.rend() ? pages.end() : last.base(), page);
    }
    return pages;
}

QToolButton* makeButton(const Page& page) {
    auto* button = new QToolButton;
    button->setObjectName(QStringLiteral("nav_") + page.key);
    button->setProperty("key", page.key);
    button->setProperty("tab", page.title);
    button->setText(page.title);
    button->setCheckable(true);
    button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

}  // namespace

Navigation::Navigation(QWidget* parent)
    : QWidget(parent), row_(new QHBoxLayout(this)), buttons_(new QButtonGroup(this)) {
    row_->setContentsMargins(0, 0, 0, 0);
    row_->setSpacing(0);
    connect(buttons_, QOverload<QAbstractButton*>::of(&QButtonGroup::buttonClicked), this,
            [this](const QAbstractButton* button) { emit chosen(button->property("key").toString()); });
}

void Navigation::refresh() {
    posted_ = false;
    mendo::ModuleObject* list = m(prog::key::pages);
    if (!following_ && !list->isNull()) {
        following_ = true;
        connect(list, &mendo::ModuleObject::added, this, &Navigation::refreshLater);
        connect(list, &mendo::ModuleObject::removed, this, &Navigation::refreshLater);
        connect(list, &mendo::ModuleObject::changed, this, &Navigation::refreshLater);
    }
    const QList<QAbstractButton*> old = buttons_->buttons();
    for (QAbstractButton* button : old) {
        buttons_->removeButton(button);
        button->hide();
        button->deleteLater();
    }
    const QVector<Page> pages = readPages();
    for (const Page& page : pages) {
        QToolButton* button = makeButton(page);
        row_->addWidget(button);
        buttons_->addButton(button);
        button->setChecked(page.key == selected_);
    }
    fit();
}

void Navigation::setNarrow(bool narrow) {
    narrow_ = narrow;
    fit();
}

void Navigation::fit() {
    constexpr int longTitle = 112;
    const QFontMetrics metrics(look::font(look::Size::Text, look::Weight::Strong));
    const QList<QAbstractButton*> all = buttons_->buttons();
    for (QAbstractButton* const button : all) {
        const QString title = button->property("tab").toString();
        const bool broken = narrow_ && metrics.horizontalAdvance(title) > look::px(longTitle);
        button->setText(broken ? QString(title).replace(QLatin1Char(' '), QLatin1Char('\n')) : title);
        const QSize words = metrics.size(0, button->text());
        button->setFixedWidth(words.width() + 2 * look::px(narrow_ ? 10 : 20));
    }
}

/// Delayed, because a page gets its key after it was added.
void Navigation::refreshLater() {
    if (posted_) {
        return;
    }
    posted_ = true;
    QMetaObject::invokeMethod(this, &Navigation::refresh, Qt::QueuedConnection);
}

void Navigation::select(const QString& key) {
    selected_ = key;
    const QList<QAbstractButton*> buttons = buttons_->buttons();
    for (QAbstractButton* button : buttons) {
        button->setChecked(button->property("key").toString() == key);
    }
}

}  // namespace app
