#pragma once

#include <QPointer>
#include <QString>

class QEvent;
class QLineEdit;
class QWidget;

namespace app {

/// A field that the operator types into: a line, a box for a figure, or a text of several lines, of the panel
/// or of a package. What is typed here reaches it as keys of a keyboard would, so that every rule of the
/// field holds.
///
/// A field may tell in dynamic properties what it takes: padCaption, padUnit and padRange (QString; the range
/// is the limits alone, "1 to 199"), padDecimals (int), padSigned, padTaken (bool). What it does not tell
/// follows from its validator, its box and the label beside it.
class EntryField {
public:
    EntryField() = default;
    /// The field that a widget is, or belongs to. Without a field, or where it takes no typing now, one whose
    /// widget() is null.
    static EntryField of(QWidget* widget);

    /// Null without a field, and after the field was deleted.
    [[nodiscard]] QWidget* widget() const { return widget_; }
    /// The line that is seen now, which may be a draft over the field's own; null for a text of several
    /// lines.
    [[nodiscard]] QLineEdit* line() const;
    [[nodiscard]] bool isNumber() const { return isNumber_; }
    /// Whether it is an entry in a cell of a table, which is gone when it is done.
    [[nodiscard]] bool isInCell() const;

    /// Empty where the field has no name.
    [[nodiscard]] QString caption() const;
    [[nodiscard]] QString unit() const;
    /// The limits in words; empty where there are none.
    [[nodiscard]] QString limits() const;
    [[nodiscard]] bool takesSign() const;
    [[nodiscard]] bool takesPoint() const;
    /// The sign before the decimals.
    [[nodiscard]] QChar point() const;

    /// What the operator sees, without the unit that a box writes behind its figure.
    [[nodiscard]] QString text() const;
    /// Whether the field takes what stands in it; `before` is what stood in it before any typing.
    [[nodiscard]] bool isTaken(const QString& before) const;

    /// A key with the text that it writes, pressed and released.
    void press(int key, const QString& text = QString()) const;
    /// A text that was put together elsewhere, as an input method does.
    void commit(const QString& text) const;
    void selectAll() const;
    /// Replaces what stands in the field of a figure.
    void replace(const QString& text) const;
    /// Sets or takes away the minus before a figure. What was selected of it stays selected.
    void turnSign() const;
    /// What follows Enter on a keyboard, but in a dialog, which would be answered by it.
    void finish() const;

private:
    [[nodiscard]] QWidget* target() const;
    [[nodiscard]] QLineEdit* ownLine() const;
    [[nodiscard]] QString affix(const char* property) const;
    [[nodiscard]] bool allows(const QString& text) const;

    QPointer<QWidget> widget_;
    bool isNumber_ = false;
};

}  // namespace app
