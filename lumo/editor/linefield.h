#pragma once

#include "module/host.h"
#include "program/entryrange.h"

#include <QLineEdit>
#include <QPointer>

class QLabel;

namespace lumo {

class FieldAnswer;
class RowView;

/// What of a line is edited without a dialog.
enum class LineField { None, Speed, Zone, Note };

/// The field's name in the statement's record: the speed of a start of welding is its weld speed. Empty where
/// the statement has no such field.
[[nodiscard]] QLatin1String fieldName(const ModuleObject* statement, LineField field);

/// An entry for one field of a line: takes what the line's own page takes, says what it does not take, and
/// writes as one step of undo.
class LineEntry final : public QLineEdit {
    Q_OBJECT
public:
    /// The statement has the field; see fieldName().
    LineEntry(ModuleObject* statement, LineField field, QWidget* parent);

    [[nodiscard]] LineField field() const { return field_; }
    /// Null when it is gone.
    [[nodiscard]] ModuleObject* statement() const { return statement_; }
    /// What the field is called.
    [[nodiscard]] QString caption() const;
    /// Of a figure.
    [[nodiscard]] const prog::EntryRange& range() const { return range_; }
    [[nodiscard]] bool isInProgram() const;
    [[nodiscard]] bool isTaken() const;
    /// Whether something else is seen than the statement's value.
    [[nodiscard]] bool isChanged() const;
    [[nodiscard]] QString shownText() const;
    /// Writes the allowed range, or why a value is refused, into a label. Not owned.
    void tellIn(QLabel* note);
    /// The statement's value again.
    void revert();
    /// Writes what stands in the entry, if it is another value than before. The list shows the statement.
    /// False, and nothing is written, where the entry is not taken or the statement has left the program.
    bool store(RowView* list);

signals:
    /// isTaken() may have changed.
    void answered();

private:
    const QPointer<ModuleObject> statement_;
    const LineField field_;
    const QLatin1String name_;
    const prog::EntryRange range_;
    FieldAnswer* answer_ = nullptr;  ///< of a figure
};

}  // namespace lumo
