#include "app/dock/dockarea.h"

#include "app/dock/dock.h"
#include "app/framegrid.h"
#include "look/dialog.h"
#include "look/scale.h"

#include <QEvent>
#include <QVariant>

#include <algorithm>

namespace app {

namespace {

constexpr int leastPage = 656;  // px at factor 1 that two columns leave of the page without its navigation

}  // namespace

DockArea::DockArea(QWidget* stage, QWidget* parent) : QWidget(parent), stage_(stage) {
    stage->setParent(this);
    setProperty(look::veiledProperty, true);  // by the dialogs of a dock
}

void DockArea::add(const QString& id, const Make& make, const QString& title, DockWidth width) {
    entries_.push_back({id, title, width, make, {}});
}

void DockArea::add(const QString& id, QWidget* content, const QString& title, DockWidth width) {
    entries_.push_back({id, title, width, {}, new Dock(id, title, content, this)});
    Dock* const dock = entries_.back().dock;
    dock->hide();
    connect(dock, &Dock::closeAsked, this, [this, id] { close(id); });
}

void DockArea::setGuest(const QString& id) {
    if (Entry* const entry = find(id)) {
        entry->guest = true;
    }
}

DockArea::Entry* DockArea::find(const QString& id) {
    const auto found =
        std::find_if(entries_.begin(), entries_.end(), [&id](const Entry& entry) { return entry.id == id; });
    return found == entries_.end() ? nullptr : &*found;
}

Dock* DockArea::made(Entry* entry) {
    if (!entry->dock) {
        QWidget* const parent = entry->width == DockWidth::Page ? stage_ : this;
        entry->dock = new Dock(entry->id, entry->title, entry->make(), parent);
        entry->dock->hide();
        entry->dock->setProperty("covers",
                                 entry->width == DockWidth::Page);  // the package's page, on purpose
        connect(entry->dock, &Dock::closeAsked, this, [this, id = entry->id] { close(id); });
    }
    return entry->dock;
}

QWidget* DockArea::content(const QString& id) {
    Entry* const entry = find(id);
    return entry ? made(entry)->content() : nullptr;
}

void DockArea::open(const QString& id) {
    const Entry* const entry = find(id);
    if (!entry) {
        return;
    }
    wanted_.removeOne(id);
    if (!entry->guest) {
        makeRoomFor(*entry);
    }
    wanted_.append(id);
    arrange();
}

/// Closes those whose place the new dock takes. Not called for a guest: they come back when it is closed.
void DockArea::makeRoomFor(const Entry& entry) {
    std::vector<const Entry*> together{&entry};
    for (auto id = wanted_.crbegin(); id != wanted_.crend(); ++id) {
        const Entry* const other = find(*id);
        const bool isPage = other->width == DockWidth::Page;
        if (isPage != (entry.width == DockWidth::Page)) {
            continue;
        }
        together.push_back(other);
        if (isPage || !fit(together)) {
            together.pop_back();
        }
    }
    for (const Entry& other : entries_) {
        const bool isPage = other.width == DockWidth::Page;
        if (isPage == (entry.width == DockWidth::Page) &&
            std::find(together.begin(), together.end(), &other) == together.end()) {
            wanted_.removeOne(other.id);
        }
    }
}

void DockArea::close(const QString& id) {
    if (wanted_.removeOne(id)) {
        arrange();
    }
}

void DockArea::toggle(const QString& id) {
    if (isOpen(id)) {
        close(id);
    } else {
        open(id);
    }
}

void DockArea::closeAll() {
    wanted_.clear();
    arrange();
}

void DockArea::closePages() {
    for (const Entry& entry : entries_) {
        if (entry.width == DockWidth::Page) {
            close(entry.id);
        }
    }
}

bool DockArea::isOpen(const QString& id) const {
    return std::any_of(entries_.begin(), entries_.end(),
                       [&id](const Entry& entry) { return entry.id == id && entry.shown; });
}

QStringList DockArea::columns() const {
    QStringList kept = wanted_;
    for (const Entry& entry : entries_) {
        if (entry.guest || entry.width == DockWidth::Page) {
            kept.removeOne(entry.id);
        }
    }
    return kept;
}

// --- Places ---------------------------------------------------------------------------------------

int DockArea::widthOf(DockWidth width) const {
    switch (width) {
        case DockWidth::Narrow:
            return look::px(336);
        case DockWidth::Jog:
            return look::px(304);
        case DockWidth::Wide:
            return framegrid::wideDock(window()->width());
        case DockWidth::Page:
            break;
    }
    return 0;
}

int DockArea::leastStage() const {
    return framegrid::railWidth(window()->width()) + look::px(leastPage);
}

/// One column always has room.
bool DockArea::fit(const std::vector<const Entry*>& columns) const {
    int used = 0;
    for (const Entry* const entry : columns) {
        used += widthOf(entry->width);
    }
    return columns.size() <= 1 || width() - used >= leastStage();
}

/// Of the columns that are wanted the last opened ones that have room, of the pages the last one.
bool DockArea::isSeen(const Entry& entry) const {
    std::vector<const Entry*> columns;
    for (auto id = wanted_.crbegin(); id != wanted_.crend(); ++id) {
        const auto wanted =
            std::find_if(entries_.begin(), entries_.end(), [id](const Entry& e) { return e.id == *id; });
        if (wanted->width == DockWidth::Page) {
            if (entry.width == DockWidth::Page) {
                return wanted->id == entry.id;
            }
            continue;
        }
        columns.push_back(&*wanted);
        const bool has = fit(columns);
        if (wanted->id == entry.id) {
            return has;
        }
        if (!has) {
            columns.pop_back();
        }
    }
    return false;
}

void DockArea::arrange() {
    std::vector<Entry*> changing;
    int right = width();
    for (auto entry = entries_.rbegin(); entry != entries_.rend(); ++entry) {
        const bool seen = isSeen(*entry);
        if (seen && entry->width != DockWidth::Page) {
            const int columnWidth = widthOf(entry->width);
            right -= columnWidth;
            made(&*entry)->setGeometry(right, 0, columnWidth, height());
        }
        if (seen != entry->shown) {
            changing.push_back(&*entry);
        }
    }
    stage_->setGeometry(0, 0, right, height());
    const int navigation = framegrid::railWidth(window()->width());
    for (Entry& entry : entries_) {
        if (entry.width == DockWidth::Page && isSeen(entry)) {
            made(&entry)->setGeometry(navigation, 0, right - navigation, height());
        }
    }
    for (Entry* const entry : changing) {
        show(entry, !entry->shown);
    }
}

void DockArea::show(Entry* entry, bool shown) {
    entry->shown = shown;
    Dock* const dock = made(entry);
    if (!shown && dock->isAncestorOf(focusWidget())) {
        stage_->setFocus();
    }
    dock->setVisible(shown);
    if (shown) {
        dock->raise();
    }
    emit changed(entry->id, shown);
}

QSize DockArea::minimumSizeHint() const {
    return stage_->minimumSizeHint();
}

void DockArea::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrange();
}

bool DockArea::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) {
        updateGeometry();
    }
    return QWidget::event(event);
}

}  // namespace app
