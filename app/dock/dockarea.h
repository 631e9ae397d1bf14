#pragma once

#include <QPointer>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <vector>

namespace app {

class Dock;

enum class DockWidth {
    Narrow,  ///< 336 px at factor 1: number pad, cell
    Jog,     ///< 304 px: jogging, keys of the tool
    Wide,    ///< 400 px, 496 in a window of 1920, 704 of 2560: path, signals, handbook
    Page     ///< the place of the package's page, but not of its navigation: results, event log
};

/// The package's page and beside it the docks: columns of the window's full height. They make the page
/// narrower and never cover it. Where two columns would leave the page too little, the one that is opened
/// takes the other's place.
class DockArea : public QWidget {
    Q_OBJECT
public:
    using Make = std::function<QWidget*()>;

    /// `stage` has the package's page. Takes ownership.
    explicit DockArea(QWidget* stage, QWidget* parent = nullptr);

    QWidget* stage() const { return stage_; }

    /// Adds a closed dock; columns stand from left to right in the order of these calls. `make` makes the
    /// content when it is needed first. An empty title: the content has its own bar.
    void add(const QString& id, const Make& make, const QString& title, DockWidth width);
    /// The same with a content that is made already. Takes ownership.
    void add(const QString& id, QWidget* content, const QString& title, DockWidth width);
    /// A guest, such as the number pad, closes no other column for good: those come back when it is closed.
    void setGuest(const QString& id);

    void open(const QString& id);
    void close(const QString& id);
    void toggle(const QString& id);
    void closeAll();
    /// Closes what lies over the package's page.
    void closePages();
    /// Whether it is seen now.
    [[nodiscard]] bool isOpen(const QString& id) const;
    /// Made, where that was not done yet.
    QWidget* content(const QString& id);
    /// The columns without guests that are wanted, the last opened one last: to be remembered.
    [[nodiscard]] QStringList columns() const;

    /// The frame's measures have changed.
    void refit() { arrange(); }

    QSize minimumSizeHint() const override;

signals:
    /// A dock has appeared or gone.
    void changed(const QString& id, bool open);

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    struct Entry {
        QString id;
        QString title;
        DockWidth width;
        Make make;
        QPointer<Dock> dock;
        bool guest = false;
        bool shown = false;
    };

    Entry* find(const QString& id);
    Dock* made(Entry* entry);
    int widthOf(DockWidth width) const;
    int leastStage() const;
    bool fit(const std::vector<const Entry*>& columns) const;
    void makeRoomFor(const Entry& entry);
    bool isSeen(const Entry& entry) const;
    void arrange();
    void show(Entry* entry, bool shown);

    QWidget* stage_;
    std::vector<Entry> entries_;
    QStringList wanted_;  ///< ids, the last opened one last
};

}  // namespace app
