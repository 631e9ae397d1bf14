#pragma once

#include <QPushButton>
#include <QStringList>

/// A push button whose caption goes on in a second line where one line is too narrow for it, broken
/// between words or at a soft hyphen. What is too long for two lines as well is set smaller, down to the
/// smallest size that can be read.
class WrapButton : public QPushButton {
    Q_OBJECT
public:
    explicit WrapButton(QWidget* parent = nullptr);

    /// The caption as it is drawn at the present size, one or two lines.
    [[nodiscard]] QStringList shownLines() const;
    /// Pixel size of the font it is drawn in.
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
