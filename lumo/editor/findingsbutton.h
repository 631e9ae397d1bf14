#pragma once

#include "program/finding.h"

#include <QAbstractButton>

/// A flat button with the number of errors and warnings, each beside its mark. Hidden while there are none.
class FindingsButton : public QAbstractButton {
    Q_OBJECT
public:
    explicit FindingsButton(QWidget* parent = nullptr);

    void showCounts(int errors, int warnings);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    [[nodiscard]] int widthOf(int count) const;
    int paintCount(QPainter* painter, int x, prog::Severity severity, int count) const;
    void describe();

    int errors_ = 0, warnings_ = 0;
};
