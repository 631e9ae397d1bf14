#pragma once

#include <QComboBox>
#include <QLabel>

namespace lumo {

// Widgets that shorten a text that does not fit, with "…" in its middle. The whole text is then their tool
// tip.

/// A label of one line.
class ElidedLabel : public QLabel {
    Q_OBJECT
public:
    using QLabel::QLabel;

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QString shownText() const;
};

class ElidedCombo : public QComboBox {
    Q_OBJECT
public:
    using QComboBox::QComboBox;

    /// The current text as it is shown.
    [[nodiscard]] QString shownText() const;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace lumo
