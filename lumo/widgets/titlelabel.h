#pragma once

#include <QLabel>

namespace lumo {

/// The title of a page. Its text may be marked up as a heading; it is drawn plain, in the size and weight
/// that the page's style sheet gives.
class TitleLabel final : public QLabel {
public:
    using QLabel::QLabel;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QString plain() const;
};

}  // namespace lumo
