#include "app/navigation.h"

#include "mendo/modulemanager.h"
#include "program/words.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QHBoxLayout>
#include <QIcon>
#include <QToolButton>
#include <QVector>

#include <algorithm>

namespace app {

namespace {

struct Page {
    QString key, title, group, icon;
};

/// The pages with a key, grouped; groups in the order of their first page.
QVector<Page> readPages() {
    QVector<Page> pages;
    for (const mendo::ModuleObject* node : m(prog::key::pages)->cmobjs()) {
        const auto field = [node](const char* name) { return node->c(QLatin1String(name))->getString(); };
        const Page page{field("nav"), field("title"), field("group"), field("icon")};
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
    button->setText(page.title);
    if (!page.icon.isEmpty()) {
        button->setIcon(QIcon(page.icon));
    }
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setCheckable(true);
    button->setMinimumSize(96, 48);
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
