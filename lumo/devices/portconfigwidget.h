#pragma once

#include "module/host.h"
#include "program/finding.h"

#include <QHash>
#include <QList>
#include <QStringList>
#include <QWidget>

#include <memory>

class QCheckBox;

namespace Ui {
class PortConfigWidget;
}

namespace lumo {
class PortNameBox;
class PortState;
class PortTable;
class TestButton;
}  // namespace lumo

/// The page on which the logical ports are assigned to the controller's bits and registers and taken into
/// use. It shows the ports and registers as they were when it was made, and assigns nothing before save().
///
/// Each row shows, every 160 ms, the level of the signal that is chosen in it, stored or not, and what a
/// check finds of the assignment on the page. Digital outputs have a test, but for the laser (see
/// TestButton).
class PortConfigWidget final : public QWidget {
    Q_OBJECT
public:
    explicit PortConfigWidget(QWidget* parent = nullptr);
    ~PortConfigWidget() override;

    /// Writes the table to the tree and to "lumo_port.json". An output that is on is switched off before its
    /// port leaves it, also during a run; a safety lock after the devices behind it. When the wire feeder is
    /// taken into or out of use, the program's starts of welding follow. The host's file service reports a
    /// file that cannot be written.
    void save();
    /// Adds what is left of the rows, for a program that operates the page. A page that is opened while lines
    /// are executed or the laser is on by hand gets one row at a time: a stop must not wait for the whole
    /// page.
    Q_INVOKABLE void completeRows();

    /// Before a combo box opens or changes, removes from it the names that other ports have.
    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

signals:
    /// Emitted by every save: the lines of the program whose wire feed was switched on or off.
    void signalportconfigchangedProgramlist(QList<int> lines);

private:
    void listNames();
    QWidget* testCell(int row);
    [[nodiscard]] bool isStored(int row) const;
    void check();
    void showFindings(const prog::Findings& findings);
    void refresh();
    [[nodiscard]] bool hasAllRows() const;
    void addNextRow();
    void rowsComplete();
    void addRow(int row, const ModuleObject* port);
    lumo::PortNameBox* nameBox(int row, const ModuleObject* port);
    void showCount();
    void place();
    const QStringList& namesOf(const QString& type) const;
    void restrict(lumo::PortNameBox* box);
    void storePorts();
    void switchWire(bool enabled);
    void switchOffLeaving();

    const std::unique_ptr<Ui::PortConfigWidget> ui_;
    ModuleObject* const ports_;
    lumo::PortTable* table_ = nullptr;     ///< lays out the table, which owns it
    QList<lumo::PortNameBox*> nameBoxes_;  ///< by row
    QList<QCheckBox*> enableBoxes_;        ///< by row
    QList<lumo::PortState*> states_;       ///< by row
    QHash<int, lumo::TestButton*> tests_;  ///< of the rows that have one
    bool restricting_ = false;             ///< a box is filled anew
    QStringList inputNames_, outputNames_, analogNames_;
    QList<int> changedLines_;
};
