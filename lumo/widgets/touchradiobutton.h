#pragma once

#include <QRadioButton>

/// A radio button that a finger hits anywhere in its area, not on its mark and caption only.
class TouchRadioButton : public QRadioButton {
public:
    using QRadioButton::QRadioButton;

protected:
    bool hitButton(const QPoint& position) const override { return rect().contains(position); }
};
