#pragma once

#include "program/finding.h"

#include <QAbstractButton>

/// The result of the program's check: a tick and a word where nothing was found, else a button with the
/// number of errors and warnings, each beside its mark. Empty before the first check.
class FindingsButton : public QAbstractButton {
    Q_OBJECT
public:
    explicit FindingsButton(QWidget* parent = nullptr);

    /// `done`: of a check that has come to its end.
    void showCounts(int errors, int warnings, bool done);
    /// Without the word beside the tick.
    void setCompact(bool compact);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    /// The width that it needs with and without the word.
    [[nodiscard]] int fullWidth() const;
    [[nodiscard]] int compactWidth() const;

signals:
    /// Its width may be another one.
    void countsShown();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] bool hasFindings() const { return errors_ + warnings_ > 0; }
    [[nodiscard]] int widthOf(int count) const;
    int paintCount(QPainter* painter, int x, prog::Severity severity, int count) const;
    void paintTick(QPainter* painter) const;
    void paintFrame(QPainter* painter) const;

    int errors_ = 0, warnings_ = 0;
    bool wasChecked_ = false;
    bool compact_ = false;
};
