#pragma once

#include <QPushButton>
#include <QStringList>

/// A push button that breaks a caption into two lines if one is too narrow, between words or at a soft
/// hyphen. If two lines are too narrow too, the font becomes smaller, down to the smallest readable size.
class WrapButton : public QPushButton {
    Q_OBJECT
public:
    explicit WrapButton(QWidget* parent = nullptr);

    /// The caption as it is drawn now, in one or two lines.
    [[nodiscard]] QStringList shownLines() const;
    /// Pixel size of the font in which it is drawn.
    [[nodiscard]] int shownPixelSize() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Setting {
        QStringList lines;
        QFont font;
    };
    [[nodiscard]] Setting setting() const;
    [[nodiscard]] QSize hint(const QStringList& lines) const;
};
