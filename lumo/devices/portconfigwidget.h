#pragma once

#include "module/host.h"

#include <QList>
#include <QStringList>
#include <QWidget>

#include <memory>

class QCheckBox;
class QComboBox;

namespace Ui {
class PortConfigWidget;
}

/// The page on which the logical ports are tied to the controller's bits and registers and switched on
/// or off. It shows the ports and the registers of the moment when it was made, and writes nothing
/// before save().
class PortConfigWidget final : public QWidget {
    Q_OBJECT
public:
    explicit PortConfigWidget(QWidget* parent = nullptr);
    ~PortConfigWidget() override;

    /// Takes the table over into the tree and the file "lumo_port.json". An output that is on is switched
    /// off before its port leaves it, in a run too, and before a safety lock the devices that it gates. A
    /// change of the wire feeder's use goes to the program's starts of welding as well. A file that cannot be
    /// written is reported by the host's file service.
    void save();

    /// Leaves a combo box that is pressed, or worked by the keyboard, only the names that no other has.
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// Lines of the program whose wire feed was switched on or off; sent by every save.
    void signalportconfigchangedProgramlist(QList<int> lines);

private:
    void listNames();
    void addRow(int row, const ModuleObject* port);
    QComboBox* nameBox(const ModuleObject* port);
    const QStringList& namesOf(const QString& type) const;
    void restrict(QComboBox* box);
    void switchWire(bool enabled);
    void switchOffLeaving();

    const std::unique_ptr<Ui::PortConfigWidget> ui_;
    ModuleObject* const ports_;
    QList<QComboBox*> nameBoxes_;    ///< by row
    QList<QCheckBox*> enableBoxes_;  ///< by row
    QStringList inputNames_, outputNames_, analogNames_;
    QList<int> changedLines_;
};
