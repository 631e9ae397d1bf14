#pragma once

#include <QLabel>
#include <QWidget>

namespace lumo {

class CaptionedBox;
class WrapToolButton;

/// The name of the project: large where it fits, else smaller, and at last in two lines.
class NameLabel : public QLabel {
    Q_OBJECT
public:
    using QLabel::QLabel;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QFont fontFor(int width) const;
};

/// The bar at the top of the project page: tool and work object, the project with what is known of its file,
/// and at the right what changes the project. Where they do not fit the two selectors stand in a second row.
/// While a program runs only what is possible then is shown.
class PageBar : public QWidget {
    Q_OBJECT
public:
    explicit PageBar(QWidget* parent = nullptr);

    struct Parts {
        CaptionedBox* tool;
        CaptionedBox* workObject;
        NameLabel* name;
        QLabel* stored;
        WrapToolButton* newProject;
        WrapToolButton* open;
        WrapToolButton* save;
        WrapToolButton* saveAs;
    };
    /// Children of the bar. To be called once.
    void setParts(const Parts& parts);
    /// The buttons of undo, which stand here or in the title of another page. Null: not here.
    void setUndo(QWidget* undo);
    void setRunning(bool running);
    void setProject(const QString& name);
    /// What is known of the file, empty for nothing; strong type asks for attention.
    void setStored(const QString& text, bool strong);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void arrange();
    [[nodiscard]] bool hasTwoRows() const;
    [[nodiscard]] static int boxWidth(const CaptionedBox* box);
    [[nodiscard]] int toolWidth(int usual) const;
    [[nodiscard]] int toolWidthNow() const;
    [[nodiscard]] static int toolsWidth(int each);
    [[nodiscard]] QList<WrapToolButton*> tools() const;
    [[nodiscard]] int placeTools(int right, int top, int height);
    void placeBoxes(int left, int right, int top);
    void placeName(const QRect& place);
    void placeInTwoRows(int toolsLeft);

    Parts parts_{};
    QWidget* undo_ = nullptr;
    QWidget* rule_;
    bool running_ = false;
    bool isStrong_ = false;
    bool isSized_ = false;  ///< the layout has given it a width
};

}  // namespace lumo
