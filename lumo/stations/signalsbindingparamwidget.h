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

/// The page on which one station is added or edited. OK stores the station and the stations' file, and shows
/// the station in the table of the stations' page. A project with errors is refused when it is chosen, and by
/// OK, which is disabled while the field of the time holds no number. Cancel changes nothing.
class SignalsBindingParamWidget final : public QWidget {
    Q_OBJECT
public:
    /// Edits the station of the table's current row, or adds a new one. The table is not owned; its rows are
    /// those of `lumo.signalsConfig`.
    SignalsBindingParamWidget(QTableWidget* table, bool isNew, QWidget* parent = nullptr);
    ~SignalsBindingParamWidget() override;

    /// Fill the selectors of the inputs, or outputs, with what the controller has.
    void initDICmb();
    void initDOCmb();
    /// Writes the station, appending a new one to the list, and the stations' file. The host's file service
    /// reports a file that cannot be written.
    void save();

public slots:
    /// Show the widgets of one signal's chosen kind.
    void refreshDICmb();
    void refreshDOCmb();
    void refreshDI2Cmb();
    void refreshDO2Cmb();

signals:
    void okayBtnClicked();
    void cancelBtnClicked();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void layOut();
    void makeSelectors();
    void answerTime();
    void showStation();
    void initSelector(lumo::StationSignal which);
    [[nodiscard]] lumo::SignalSelector* selector(lumo::StationSignal which) const;
    void chooseProject();
    void projectSelected(const QString& path);
    [[nodiscard]] static bool refusedProject(const QString& path);
    void showProject(const QString& fileName);
    void accept();

    const std::unique_ptr<Ui::SignalsBindingParamWidget> ui_;
    const QPointer<QTableWidget> table_;
    const bool isNew_;
    QPointer<ModuleObject> station_;  ///< null until a new one is saved
    lumo::SignalSelector* selectors_[4] = {};
    QPointer<QFileDialog> fileDialog_;
    int columns_ = 0;  ///< of groups
};
