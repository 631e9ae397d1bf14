#pragma once

#include <QLabel>

namespace lumo {

/// A label of one line that shortens a text that does not fit, with "…" in its middle; the whole text
/// is then its tool tip.
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

}  // namespace lumo
