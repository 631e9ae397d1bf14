#pragma once

#include <QFrame>

class QLabel;
class QListWidget;
class QListWidgetItem;

namespace prog {
struct Finding;
}

namespace lumo {

class ProgramCheck;

/// The list of the program's findings, errors first: a sheet that lies over the table. It is no window, so
/// that no button is blocked. It follows the findings, and closes with the last one or when the page is
/// hidden.
class FindingList : public QFrame {
    Q_OBJECT
public:
    /// Lies over `area`, a widget of the page `page`. `check` must outlive it.
    FindingList(const ProgramCheck* check, QWidget* area, QWidget* page);

    /// Shows the list, or closes it.
    void toggle();

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// A finding at this line, from 0, was chosen. The list is closed.
    void lineChosen(int line);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    [[nodiscard]] QWidget* makeHead();
    void refresh();
    void fill();
    void add(const prog::Finding& finding);
    void place();
    void choose(const QListWidgetItem* item);

    const ProgramCheck* check_;
    QWidget* area_;
    QLabel* counts_;
    QListWidget* rows_;
};

}  // namespace lumo
