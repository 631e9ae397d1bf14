#pragma once

#include "look/tokens.h"
#include "look/type.h"
#include "widgets/buttonface.h"

#include <QToolButton>

#include <optional>

namespace lumo {

/// A tool button with the face of a WrapButton.
class WrapToolButton : public QToolButton {
    Q_OBJECT
public:
    explicit WrapToolButton(QWidget* parent = nullptr);

    /// An icon of the look by its name, in a colour of its own where one is given.
    void setFace(const QString& icon, ButtonFace::Place place, QRgb colour = 0, QRgb checked = 0);
    /// Usual type unless told otherwise: small over a caption, that of the widget before one.
    void setCaptionFont(look::Size size, look::Weight weight);
    /// What the press will do, in small type below the caption.
    void setSecondLine(const QString& text);
    [[nodiscard]] QString secondLine() const { return second_; }
    /// Pale, because a press would only say why not; it can still be pressed.
    void setMuted(bool muted);

    [[nodiscard]] QSize sizeHint() const override;
    /// For the caption in two lines.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    /// Colour of the caption: that of the style sheet, but white on a checked button.
    [[nodiscard]] virtual QColor ink() const;
    [[nodiscard]] ButtonFace face() const;

private:
    ButtonFace::Place place_ = ButtonFace::Place::Over;
    std::optional<look::Size> size_;  ///< empty: the usual one
    look::Weight weight_ = look::Weight::Plain;
    QString second_;
    bool muted_ = false;
};

}  // namespace lumo
