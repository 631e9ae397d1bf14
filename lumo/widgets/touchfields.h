#pragma once

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QRadioButton>

/// A radio button that a finger hits anywhere in its area, not only on its mark and caption.
class TouchRadioButton : public QRadioButton {
public:
    using QRadioButton::QRadioButton;

protected:
    bool hitButton(const QPoint& position) const override { return rect().contains(position); }
};

/// The same for a check box.
class TouchCheckBox : public QCheckBox {
public:
    using QCheckBox::QCheckBox;

protected:
    bool hitButton(const QPoint& position) const override { return rect().contains(position); }
};

/// A field for a percentage with two decimals. It shows a decimal point in every language, and takes a comma
/// as the point.
class PercentBox : public QDoubleSpinBox {
    Q_OBJECT
public:
    explicit PercentBox(QWidget* parent = nullptr);

    [[nodiscard]] QValidator::State validate(QString& text, int& position) const override;
};
