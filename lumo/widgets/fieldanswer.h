#pragma once

#include "program/entryrange.h"

#include <QLineEdit>
#include <QObject>

class QAbstractSpinBox;
class QDoubleSpinBox;
class QKeyEvent;
class QLabel;

namespace lumo {

/// A unit in the operator's language.
[[nodiscard]] QString unitText(const char* unit);
/// What a field takes, in words: "Allowed: 1 to 199 mm/s, whole numbers".
[[nodiscard]] QString rangeText(const prog::EntryRange& range);
/// What is said of a field that takes any figure: "Enter a number".
[[nodiscard]] QString numberText();
/// The limits alone: "1 to 199"; empty for a field that takes any figure.
[[nodiscard]] QString limitsText(const prog::EntryRange& range);

/// Dynamic properties that FieldAnswer sets for a number pad, on its field and on the lines in it. The
/// caption is without a colon, and missing where the field has no name; limits are missing where there
/// are none.
namespace pad {
constexpr const char* caption = "padCaption";    ///< QString
constexpr const char* unit = "padUnit";          ///< QString
constexpr const char* range = "padRange";        ///< QString, limitsText()
constexpr const char* decimals = "padDecimals";  ///< int
constexpr const char* isSigned = "padSigned";    ///< bool
constexpr const char* minimum = "padMinimum";    ///< double
constexpr const char* maximum = "padMaximum";    ///< double
constexpr const char* isTaken = "padTaken";      ///< bool, isTaken() of now
}  // namespace pad

/// Answers what is typed into a field: a figure that is not taken gets a red frame and the allowed range, and
/// stays to be corrected.
///
/// The field's own text only ever becomes what its validator takes. A key that the validator would refuse is
/// not lost: it goes on in a draft, which lies over the field and shows what was typed, until the text can be
/// taken or is removed. OK has to ask isTaken().
class FieldAnswer final : public QObject {
    Q_OBJECT
public:
    /// The field is the answer's parent. What stands in it now counts as taken, also above the range, as long
    /// as it is not changed. Call it after the field has its text and its validator.
    FieldAnswer(QLineEdit* line, const prog::EntryRange& range);
    /// The range is that of the box.
    explicit FieldAnswer(QDoubleSpinBox* box);

    /// What the field is called, as its caption on the page says it.
    void nameIt(const QString& caption);
    [[nodiscard]] const QString& caption() const { return caption_; }
    /// Shows the unit of the range in the line, at its right end.
    void showUnit();
    /// Says the range in a label: "1 to 199 mm/s, whole numbers", in red where the figure is not taken. Not
    /// owned.
    void tellIn(QLabel* note);
    /// The same in a label of its own, which takes a place below the field in the layout of its page.
    void tellBelow();
    /// An empty field is no fault.
    void allowEmpty();
    /// What stands in the field now is what it was before any typing.
    void keep();
    [[nodiscard]] bool isTaken() const;
    /// Whether something else is seen than what stood there before any typing.
    [[nodiscard]] bool isChanged() const { return shownText() != kept_; }
    /// What the operator sees in the field.
    [[nodiscard]] QString shownText() const;
    /// So that typing replaces what the operator sees.
    void selectAll();

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// isTaken() or the text may have changed.
    void answered();

private:
    FieldAnswer(QWidget* field, QLineEdit* line, const prog::EntryRange& range);
    [[nodiscard]] bool refuses(const QString& text) const;
    bool typeInDraft(QEvent* event);
    bool isRefusedKey(QEvent* event);
    void beginDraft();
    void endDraft();
    void draftEdited();
    void fieldEdited();
    [[nodiscard]] QString noteText() const;
    void describe();
    void tellPad(const char* property, const QVariant& value);
    void refresh();

    QWidget* const field_;  ///< the line, or the spin box that it is in
    QLineEdit* const line_;
    QLineEdit* const draft_;  ///< over the line
    QWidget* const frame_;    ///< over both
    const prog::EntryRange range_;
    QString kept_;
    QString caption_;
    QLabel* note_ = nullptr;
    bool mayBeEmpty_ = false;
    bool isDrafting_ = false;
    bool isOwnChange_ = false;
};

}  // namespace lumo
