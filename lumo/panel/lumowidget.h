#pragma once

#include "module/globals.h"
#include "module/host.h"
#include "undo/history.h"

#include <QList>
#include <QWidget>

#include <memory>
#include <optional>

class DeviceControlWidget;
class PointWidget;
class ProgramWidget;
class SignalsBindWidget;
class SignalsBindingParamWidget;
class StatusMonitorWidget;
class QComboBox;
class QTableWidget;

namespace lumo {
struct Way;
}

namespace Ui {
class LumoWidget;
}
namespace lumo {
class ProjectDialogs;
class Recovery;
class UndoBar;
}  // namespace lumo

/// The package's page in the operator panel: the navigation, the top bar of the project, and a stack that
/// shows one page at a time. The first one in a process also fills the `lumo` subtree and makes the executor;
/// both outlive it.
class LumoWidget : public QWidget {
    Q_OBJECT
    /// Path of the open project file, for programs that load the package.
    Q_PROPERTY(QString projectFile READ projectFile)
    /// Whether the open project has changes that are not saved. Compares program and file.
    Q_PROPERTY(bool unsaved READ isUnsaved)
public:
    explicit LumoWidget(QWidget* parent = nullptr);
    ~LumoWidget() override;

    /// Path of the open project file; empty when none is open. Outlives the page.
    static QString filePath;
    [[nodiscard]] static QString projectFile() { return filePath; }

    [[nodiscard]] bool isUnsaved() const;
    /// For a host that is about to end, or to delete this page: whether it may do so now. Otherwise the
    /// operator is asked, and mayLeave() comes when the changes are saved or discarded. While something runs
    /// nobody is asked: the recovery file keeps the changes.
    Q_INVOKABLE bool askToLeave();

    /// Registers the `lumo` subtree, fills it from the defaults in the panel's language and from the settings
    /// files in the working directory, and makes the executor. Called by the constructor when there is no
    /// subtree yet.
    void load();
    /// Appends the stations 1 to 4, unbound, to `lumo.signalsConfig`.
    void addFourDefaultSignalsConfig();
    /// Fills a selector with the package's own tool (or work object) and those of the host.
    void getToolsAndWobjs(QComboBox* combo, bool isTool);
    /// Opens the page that adds a station, or edits the one of the table's current row.
    void showSignalsParamWgt(QTableWidget* table, bool isNew);
    /// Closes the point page, if there is one, and shows the top bar.
    void deletPWgt();
    /// Closes the page of one station, if there is one.
    void deletSWgt();

protected:
    void resizeEvent(QResizeEvent* event) override;

signals:
    /// The answer to askToLeave().
    void mayLeave();

private:
    void dressBars();
    void makeEditor();
    void makeDevicePages();
    void makeStationPage();
    void sizeByShownPage();
    void connectNavigation();
    void follow(const lumo::Way& way);
    void showAlone(QWidget* page);
    void dropPointPage();
    void showEditor();
    void showPorts();
    void showParams();
    void showNew(QWidget* page, QList<QWidget*>* pages);
    void showMonitor();
    void showDeviceControl();
    void showStations();
    void makeUndo();
    void placeUndo();
    [[nodiscard]] std::optional<lumo::EditedList> listInView() const;
    bool showListPage(lumo::EditedList list);
    void showRestored(const lumo::Restored& what);
    void redrawLines(const QList<int>& lines);
    void discard(QWidget* page);
    void openPointPage(int row, ModuleObject* statement, int jointCount);
    void pointPageAccepted(int row);

    void connectProject();
    void projectChosen(const QString& path);
    void showProjectName();
    void showStored();

    void connectToolset();
    void applySelector(const QComboBox* combo);
    void lockSelectors();
    void reapplyToolset();
    void selectLoadedToolset();

    std::unique_ptr<Ui::LumoWidget> ui_;
    ProgramWidget* editor_ = nullptr;
    lumo::ProjectDialogs* project_ = nullptr;
    lumo::Recovery* recovery_ = nullptr;
    lumo::UndoBar* undo_ = nullptr;
    StatusMonitorWidget* monitor_ = nullptr;
    DeviceControlWidget* deviceControl_ = nullptr;
    SignalsBindWidget* stations_ = nullptr;
    PointWidget* pointPage_ = nullptr;                  ///< while it is shown
    SignalsBindingParamWidget* stationPage_ = nullptr;  ///< while there is one
    QList<QWidget*> portPages_;                         ///< oldest first
    QList<QWidget*> paramPages_;                        ///< oldest first
};

/// Shows a message without a title. Returns at once; the box stays until the operator closes it.
LUMO_EXPORT void showAlertDialog(const QString& text);
