#pragma once

#include <QList>
#include <QObject>
#include <QRect>

class QLabel;
class QWidget;
class WrapButton;

namespace Ui {
class ProgramWidget;
}

namespace lumo {

class Inspector;
class RunPanel;
class StartLine;

/// Divides the place of the project page between the program and what stands around it. The page has two
/// faces: while the program can be edited a desk (what inserts and changes lines), while it is locked a bench
/// (what runs). What belongs to the other face is hidden; the list keeps its place.
///
/// The page's width decides how: a column of tools beside the list, wider with captions beside the icons; in
/// a narrow page rows of buttons below the list; in a very narrow one two rows that show what inserts or what
/// changes. Where the column is high enough, what changes a line stands in it, too.
class ProjectFace : public QObject {
    Q_OBJECT
public:
    /// `form` is that of the page `page`; both and `start` must outlive the object.
    ProjectFace(const Ui::ProgramWidget* form, const StartLine* start, QWidget* page);

    /// The bench, or the desk.
    void setLocked(bool locked);
    /// After a change of the page's size.
    void arrange();
    /// Places everything anew after the scale or the visible groups have changed. Does nothing before the
    /// page has its size.
    void rearrange();
    [[nodiscard]] static QSize leastSize();

private:
    /// From the narrowest.
    enum class Width { Two, Rows, SmallColumn, Column, TwoColumns };
    using Widgets = QList<QWidget*>;

    void dress();
    void showPlace();
    [[nodiscard]] Widgets insertButtons() const;
    [[nodiscard]] QList<QList<WrapButton*>> editGroups() const;
    [[nodiscard]] Widgets editButtons() const;
    /// Without the caption.
    [[nodiscard]] Widgets jumpParts() const;
    [[nodiscard]] static Width widthOf(int pagePx);
    [[nodiscard]] int columnWidth() const;
    [[nodiscard]] bool isTall(int columnPx) const;

    void placeColumns(QRect area);
    void placeRows(QRect area);
    /// Each takes its place from the bottom of the area.
    void takeEditRow(QRect* area);
    void takeNotice(QRect* area);
    void takeSteps(QRect* area);
    void takeRowOfCells(QRect* area, const Widgets& cells);
    /// Each takes its place from the top of the column.
    void takeTitle(QRect* column, QLabel* title);
    void takeGrid(QRect* column, const Widgets& cells);
    void takeJump(QRect* column);
    void placeDesk(QRect column);
    void placeBench(QRect column);
    void placeInspector(const QRect& place);
    [[nodiscard]] int noticeHeight(int width) const;
    bool placeNotice(QRect* column);

    void show(QWidget* widget, const QRect& place);
    void hideOthers();

    const Ui::ProgramWidget* form_;
    const StartLine* start_;
    QWidget* page_;
    RunPanel* run_ = nullptr;         ///< from the first time that it is shown
    Inspector* inspector_ = nullptr;  ///< likewise
    bool locked_ = false;
    bool isArranged_ = false;
    Width width_ = Width::Column;
    Widgets shown_;  ///< while the page is being arranged: what has a place
};

}  // namespace lumo
