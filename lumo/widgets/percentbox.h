#pragma once

#include <QDoubleSpinBox>

/// A field for a percentage with two decimals. It is written with a point in every language; a comma
/// that is typed or pasted counts as the point.
class PercentBox : public QDoubleSpinBox {
    Q_OBJECT
public:
    explicit PercentBox(QWidget* parent = nullptr);

    [[nodiscard]] QValidator::State validate(QString& text, int& position) const override;
};
