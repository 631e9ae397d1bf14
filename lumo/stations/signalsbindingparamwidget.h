#pragma once

#include "module/host.h"
#include "stations/station.h"

#include <QPointer>
#include <QWidget>

#include <memory>

class QFileDialog;
class QTableWidget;

namespace Ui {
class SignalsBindingParamWidget;
}
namespace lumo {
class SignalSelector;
}

/// The page on which one station is made or changed. OK stores the station and its file and shows it in
/// the table of the stations' page; Cancel changes nothing.
class SignalsBindingParamWidget final : public QWidget {
    Q_OBJECT
public:
    /// Edits the station of the table's current row, or makes a new one. The table, which is not owned,
    /// is that of `lumo.signalsConfig`, row by row.
    SignalsBindingParamWidget(QTableWidget* table, bool isNew, QWidget* parent = nullptr);
    ~SignalsBindingParamWidget() override;

    /// Offers the controller's inputs, or outputs, and registers.
    void initDICmb();
    void initDOCmb();
    /// Writes the station, which a new one becomes part of the list by, and the stations' file. What goes
    /// wrong with the file is announced by the host's file service.
    void save();

public slots:
    /// Show the names of one signal's kind.
    void refreshDICmb();
    void refreshDOCmb();
    void refreshDI2Cmb();
    void refreshDO2Cmb();

signals:
    void okayBtnClicked();
    void cancelBtnClicked();

private:
    void makeSelectors();
    void showStation();
    void initSelector(lumo::StationSignal which);
    [[nodiscard]] lumo::SignalSelector* selector(lumo::StationSignal which) const;
    void chooseProject();
    void projectSelected(const QString& path);
    void showProject(const QString& fileName);
    void accept();

    const std::unique_ptr<Ui::SignalsBindingParamWidget> ui_;
    const QPointer<QTableWidget> table_;
    const bool isNew_;
    QPointer<ModuleObject> station_;  ///< null while a new one is not saved
    lumo::SignalSelector* selectors_[4] = {};
    QPointer<QFileDialog> fileDialog_;
};
