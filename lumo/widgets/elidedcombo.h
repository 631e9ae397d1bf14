#pragma once

#include <QComboBox>

namespace lumo {

/// A combo box that shortens a text that does not fit, with "…" in its middle; the whole text is then
/// its tool tip.
class ElidedCombo : public QComboBox {
    Q_OBJECT
public:
    using QComboBox::QComboBox;

    /// The current text as it is to be seen.
    [[nodiscard]] QString shownText() const;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace lumo
