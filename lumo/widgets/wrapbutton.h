#pragma once

#include "widgets/buttonface.h"

#include <QPushButton>

/// A push button whose icon stands over or before its caption, and whose caption may take two lines (see
/// lumo::ButtonFace).
class WrapButton : public QPushButton {
    Q_OBJECT
public:
    explicit WrapButton(QWidget* parent = nullptr);

    /// An icon of the look by its name, before the caption (usual type) or over it (small type).
    void setFace(const QString& icon, lumo::ButtonFace::Place place);

    void setPlace(lumo::ButtonFace::Place place);
    /// Icon and caption begin at the left, so that those of a column stand below one another.
    void setLeftAligned(bool left) { isLeft_ = left; }

    /// What stands on it, px: with the caption in one line, and the caption alone in two.
    [[nodiscard]] QSize faceSize() const { return face().size(); }
    [[nodiscard]] QSize leastFaceSize() const { return face().leastSize(); }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] lumo::ButtonFace face() const;
    [[nodiscard]] QSize hint(const QSize& content) const;

    lumo::ButtonFace::Place place_ = lumo::ButtonFace::Place::Before;
    bool isLeft_ = false;
};
