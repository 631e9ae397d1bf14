#pragma once

#include "editor/fulltext.h"
#include "editor/linefield.h"
#include "module/host.h"

#include <QPointer>
#include <QVector>
#include <QWidget>

#include <array>

class ProgramTable;

namespace lumo {

/// The selected line of the program in full: number, icon and word, the full text of its statement and, where
/// there is room, entries for speed, radius and remark. Beside the list, whose rows stay compact then.
///
/// As high as its content at the width that it is given (heightForWidth). Nothing is shown without a selected
/// line; of several only how many there are.
class Inspector : public QWidget {
    Q_OBJECT
public:
    /// The table must outlive it. Tells the table while it is visible.
    explicit Inspector(ProgramTable* table, QWidget* parent = nullptr);
    ~Inspector() override;

    /// With entries, for columns that are high enough. At first without.
    void setWithEntries(bool with);
    /// With the line's number only, beside a run panel that names the line.
    void setBrief(bool brief);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    static constexpr int entryCount = 3;

    void refresh();
    void renewEntries();
    void placeEntries();
    void enableEntries();
    void storeEntry(LineEntry* entry);
    [[nodiscard]] QVector<FullLine> linesAt(int width) const;
    [[nodiscard]] int heightOfEntries() const;
    void paintTitle(QPainter* painter) const;
    void paintCaptions(QPainter* painter) const;
    [[nodiscard]] QRect entryPlace(LineField field) const;

    ProgramTable* table_;
    bool isWithEntries_ = false;
    bool isBrief_ = false;
    int row_ = -1;    ///< the selected one; -1: none, or several
    int chosen_ = 0;  ///< how many are selected
    QString type_;
    QString details_;
    QString seam_;             ///< which of the program's, empty outside of seams
    QVector<FullLine> lines_;  ///< of the details, at the present width
    QPointer<ModuleObject> statement_;
    std::array<LineEntry*, entryCount> entries_{};  ///< null where the statement has no such field
};

}  // namespace lumo
