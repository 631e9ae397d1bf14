#pragma once

#include "undo/history.h"

#include <QWidget>

#include <functional>
#include <optional>

namespace lumo {

class WrapToolButton;

/// The two buttons that undo and redo, in the bar or the title of each page where they work, and their keys:
/// Ctrl+Z, and Ctrl+Shift+Z or Ctrl+Y. A field that is being typed in keeps these keys for itself.
///
/// A step changes only what is in view: where the next one belongs to another page, the first press shows
/// that page and says what would be undone, the second one undoes it.
class UndoBar : public QWidget {
    Q_OBJECT
public:
    /// What the bar asks the panel.
    struct Panel {
        std::function<std::optional<EditedList>()> inView;  ///< nothing for a page without undo
        std::function<bool()> isForm;          ///< whether a page is open whose values are not stored yet
        std::function<bool(EditedList)> show;  ///< false where the page cannot be reached
    };
    /// The keys are heard on `page` and below it.
    UndoBar(Panel panel, QWidget* page);

    /// To be called when another page is shown.
    void refresh();
    /// Goes behind the title of a page, a label of this name; false where that stands in no row.
    bool standIn(const QWidget* page, const QString& title);

    /// A row that is short of room takes it from others: these words have no shorter form.
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

private:
    WrapToolButton* makeButton(const char* name, const QString& icon, const QString& word, History::Way way);
    void addKey(const QKeySequence& keys, History::Way way);
    void go(History::Way way);
    [[nodiscard]] bool isLocked(EditedList list) const;
    void showStep(WrapToolButton* button, History::Way way, const QString& keys);
    void tell(const QString& text) const;

    const Panel panel_;
    WrapToolButton* undo_;
    WrapToolButton* redo_;
};

}  // namespace lumo
