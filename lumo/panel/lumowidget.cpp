#include "panel/lumowidget.h"

#include "devices/devicecontrolwidget.h"
#include "devices/portconfigwidget.h"
#include "devices/statusmonitorwidget.h"
#include "editor/pointwidget.h"
#include "editor/programtable.h"
#include "editor/programwidget.h"
#include "editor/storedstate.h"
#include "executor/lumoexecutor.h"
#include "files/projectfile.h"
#include "files/settingsfile.h"
#include "files/stationrun.h"
#include "gantu/bmodule.h"
#include "kord/managerhelper.h"
#include "module/globals.h"
#include "module/host.h"
#include "module/qtloops.h"
#include "panel/keypad.h"
#include "panel/pagelook.h"
#include "panel/projectdialogs.h"
#include "panel/recovery.h"
#include "panel/toolset.h"
#include "panel/undobar.h"
#include "params/paramconfigwidget.h"
#include "program/words.h"
#include "stations/signalsbindingparamwidget.h"
#include "stations/signalsbindwidget.h"
#include "ui_lumowidget.h"
#include "widgets/messagebox.h"
#include "widgets/way.h"

#include <QComboBox>
#include <QLayout>
#include <QShortcut>
#include <QStackedWidget>
#include <QTableWidget>

using mendo::ModuleManager;

namespace {

QString defaultsDocument() {
    const QString language =
        kord::ManagerHelper::instance()->module()->mobj()->c(QStringLiteral("language"))->getString();
    if (language == QLatin1String("cn")) {
        return QStringLiteral(":/lumo/lumo.json");
    }
    if (language == QLatin1String("en")) {
        return QStringLiteral(":/lumo/lumo_en.json");
    }
    return QStringLiteral(":/lumo/lumo_ru.json");
}

}  // namespace

QString LumoWidget::filePath;

LumoWidget::LumoWidget(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::LumoWidget>()) {
    ui_->setupUi(this);
    lumo::logW() << QStringLiteral("LumoWidget::LumoWidget  ui->setupUi(this) begin once--------");
    if (m(prog::key::lumo)->isNull()) {
        load();
    }
    dressBars();
    makeEditor();
    makeDevicePages();
    makeStationPage();
    getToolsAndWobjs(ui_->toolCmb, true);
    getToolsAndWobjs(ui_->wobjCmb, false);
    connectNavigation();
    makeUndo();
    connectProject();
    connectToolset();
    new lumo::PageLook(this);
    new lumo::Keypad(this);
    new lumo::MenuGuard(this);
}

LumoWidget::~LumoWidget() {
    lumo::logW() << QStringLiteral("LumoWidget::~LumoWidget() ~~~~~~~~");
    if (pointPage_) {
        isnew_pWgt = false;
    }
    // The pages are deleted after this page's members, and must not call slots that use them.
    const QList<QWidget*> pages =
        ui_->stackedWidget->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget* page : pages) {
        page->disconnect(this);
    }
    for (const QLatin1String path : {prog::key::dialogProgram, prog::key::dialogStatement}) {
        if (auto* dialog = qobject_cast<QWidget*>(m(path)->value().value<QObject*>())) {
            dialog->close();
        }
    }
}

void LumoWidget::load() {
    ModuleObject* root = m()->regist(this, prog::key::lumo);
    root->loadJson(this, ModuleManager::readFromJson(defaultsDocument()));
    lumo::loadSettings(this, lumo::Settings::Ports);
    lumo::loadSettings(this, lumo::Settings::Params);
    addFourDefaultSignalsConfig();
    lumo::loadSettings(this, lumo::Settings::Stations);

    auto* toolset = new ModuleObject(QStringLiteral("default_toolset"));
    toolset->copyFrom(this, m(prog::key::toolset));
    m(prog::key::defaults)->insert(this, toolset);
    m(prog::key::currentProgram)->copyFrom(this, m(prog::key::defaultProgram));
    executor = new LumoExecutor(root);
}

void LumoWidget::addFourDefaultSignalsConfig() {
    constexpr int defaultPeriodMs = 100;
    for (int number = 1; number <= 4; ++number) {
        ModuleObject* station = m(prog::key::signalsConfig)->append(this);
        station->copyFrom(this, m(prog::key::defaultSignalsConfig));
        station->set(this, QStringLiteral("stationname"), tr("工位") + QStringLiteral(" %1").arg(number))
            ->set(this, QStringLiteral("time"), defaultPeriodMs);
    }
}

// --- Bars -----------------------------------------------------------------------------------------

void LumoWidget::dressBars() {
    const std::pair<lumo::PageButton*, const char*> icons[] = {
        {ui_->btnProject, "project"},      {ui_->btnPort, "port"},
        {ui_->btnParamCfg, "parameters"},  {ui_->btnMonitor, "monitor"},
        {ui_->btnDeviceControl, "device"}, {ui_->btnBind, "signal"}};
    for (const auto& [button, icon] : icons) {
        button->setIconName(QLatin1String(icon));
    }
    ui_->topWgt->setParts({ui_->boxTool, ui_->boxWobj, ui_->lblProject, ui_->lblStored, ui_->btnNew,
                           ui_->btnOpen, ui_->btnSave, ui_->btnSaveAs});
}

void LumoWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    ui_->navWidget->fit();
}

// --- Pages ----------------------------------------------------------------------------------------

// Pages get their final parent at once: a page that moves has each of its widgets styled again.

void LumoWidget::makeEditor() {
    editor_ = new ProgramWidget(ui_->stackedWidget);
    ui_->stackedWidget->addWidget(editor_);
    connect(editor_, &ProgramWidget::pointBtnClicked, this, &LumoWidget::openPointPage);
    connect(editor_, &ProgramWidget::updateUItoolwobj, this, &LumoWidget::reapplyToolset);
    connect(editor_->stored(), &lumo::StoredState::changed, this, &LumoWidget::showStored);
    if (!filePath.isEmpty()) {
        editor_->setProjectPath(filePath);
        showProjectName();
    }
}

void LumoWidget::makeDevicePages() {
    monitor_ = new StatusMonitorWidget(ui_->stackedWidget);
    ui_->stackedWidget->addWidget(monitor_);
    deviceControl_ = new DeviceControlWidget(ui_->stackedWidget);
    ui_->stackedWidget->addWidget(deviceControl_);
}

void LumoWidget::makeStationPage() {
    stations_ = new SignalsBindWidget(ui_->stackedWidget);
    ui_->stackedWidget->addWidget(stations_);
    connect(stations_, &SignalsBindWidget::addBtnClicked, this,
            [this](QTableWidget* table) { showSignalsParamWgt(table, true); });
    connect(stations_, &SignalsBindWidget::editBtnClicked, this,
            [this](QTableWidget* table) { showSignalsParamWgt(table, false); });
}

/// Hidden pages do not count for the panel's size.
void LumoWidget::sizeByShownPage() {
    QStackedWidget* const pages = ui_->stackedWidget;
    for (int i = 0; i < pages->count(); ++i) {
        const auto policy = i == pages->currentIndex() ? QSizePolicy::Preferred : QSizePolicy::Ignored;
        pages->widget(i)->setSizePolicy(policy, policy);
    }
}

void LumoWidget::connectNavigation() {
    connect(ui_->stackedWidget, &QStackedWidget::currentChanged, this, &LumoWidget::sizeByShownPage);
    sizeByShownPage();
    connect(ui_->btnProject, &QAbstractButton::clicked, this, &LumoWidget::showEditor);
    connect(ui_->btnPort, &QAbstractButton::clicked, this, &LumoWidget::showPorts);
    connect(ui_->btnParamCfg, &QAbstractButton::clicked, this, &LumoWidget::showParams);
    connect(ui_->btnMonitor, &QAbstractButton::clicked, this, &LumoWidget::showMonitor);
    connect(ui_->btnDeviceControl, &QAbstractButton::clicked, this, &LumoWidget::showDeviceControl);
    connect(ui_->btnBind, &QAbstractButton::clicked, this, &LumoWidget::showStations);
    connect(lumo::Guide::instance(), &lumo::Guide::asked, this, &LumoWidget::follow);
}

/// As if the operator had pressed the button of the page: it is checked, too.
void LumoWidget::follow(const lumo::Way& way) {
    using To = lumo::Way::To;
    if (way.to == To::Line) {
        ui_->btnProject->click();
        auto* const table = editor_->findChild<ProgramTable*>();
        table->selectOnly(way.line);
        table->setFocus();
    } else if (way.to == To::Ports) {
        ui_->btnPort->click();
    } else if (way.to == To::Devices) {
        ui_->btnDeviceControl->click();
    }
}

/// Shows a page without the top bar.
void LumoWidget::showAlone(QWidget* page) {
    ui_->topWgt->hide();
    ui_->line_2->hide();
    ui_->stackedWidget->setCurrentWidget(page);
    if (page != pointPage_) {
        dropPointPage();
    }
}

void LumoWidget::showEditor() {
    deletPWgt();
}

void LumoWidget::showPorts() {
    auto* page = new PortConfigWidget(ui_->stackedWidget);
    connect(page, &PortConfigWidget::signalportconfigchangedProgramlist, this, &LumoWidget::redrawLines);
    showNew(page, &portPages_);
}

void LumoWidget::showParams() {
    auto* page = new ParamConfigWidget(ui_->stackedWidget);
    connect(page, &ParamConfigWidget::signalparamconfigchangedProgramlist, this, &LumoWidget::redrawLines);
    showNew(page, &paramPages_);
}

/// Shows a page that is made for each visit. The page before it is kept: it may still be asking or saving.
void LumoWidget::showNew(QWidget* page, QList<QWidget*>* pages) {
    ui_->stackedWidget->addWidget(page);
    pages->append(page);
    showAlone(page);
    constexpr int pagesKept = 2;
    while (pages->size() > pagesKept) {
        discard(pages->takeFirst());
    }
}

void LumoWidget::showMonitor() {
    showAlone(monitor_);
}

void LumoWidget::showDeviceControl() {
    showAlone(deviceControl_);
    deviceControl_->testNofocus();
}

void LumoWidget::showStations() {
    deletSWgt();
    showAlone(stations_);
}

void LumoWidget::showSignalsParamWgt(QTableWidget* table, bool isNew) {
    deletSWgt();
    stationPage_ = new SignalsBindingParamWidget(table, isNew, ui_->stackedWidget);
    connect(stationPage_, &SignalsBindingParamWidget::okayBtnClicked, this, &LumoWidget::showStations);
    connect(stationPage_, &SignalsBindingParamWidget::cancelBtnClicked, this, &LumoWidget::showStations);
    ui_->stackedWidget->addWidget(stationPage_);
    showAlone(stationPage_);
}

void LumoWidget::redrawLines(const QList<int>& lines) {
    for (const int line : lines) {
        editor_->changeStatement(line);
    }
}

// --- Undo -----------------------------------------------------------------------------------------

void LumoWidget::makeUndo() {
    const lumo::UndoBar::Panel panel{[this] { return listInView(); },
                                     [this] {
                                         const QWidget* const page = ui_->stackedWidget->currentWidget();
                                         return page == pointPage_ || page == stationPage_;
                                     },
                                     [this](lumo::EditedList list) { return showListPage(list); }};
    undo_ = new lumo::UndoBar(panel, this);
    ui_->topWgt->setUndo(undo_);
    connect(ui_->stackedWidget, &QStackedWidget::currentChanged, this, &LumoWidget::placeUndo);
    connect(ui_->stackedWidget, &QStackedWidget::currentChanged, undo_, &lumo::UndoBar::refresh);
    connect(lumo::History::instance(), &lumo::History::restored, this, &LumoWidget::showRestored);
}

/// In the bar of the project, behind the title of another page, or below the navigation where a page's title
/// stands in no row.
void LumoWidget::placeUndo() {
    const QWidget* const page = ui_->stackedWidget->currentWidget();
    if (page == editor_) {
        ui_->topWgt->setUndo(undo_);
        return;
    }
    ui_->topWgt->setUndo(nullptr);
    undo_->setVisible(listInView().has_value());
    if (!undo_->isHidden() && !undo_->standIn(page, QStringLiteral("label"))) {
        ui_->verticalLayout_3->addWidget(undo_);
    }
}

std::optional<lumo::EditedList> LumoWidget::listInView() const {
    QWidget* const page = ui_->stackedWidget->currentWidget();
    if (page == editor_) {
        return lumo::EditedList::Program;
    }
    if (page == stations_) {
        return lumo::EditedList::Stations;
    }
    if (!portPages_.isEmpty() && page == portPages_.last()) {
        return lumo::EditedList::Ports;
    }
    return !paramPages_.isEmpty() && page == paramPages_.last() ? std::optional(lumo::EditedList::Params)
                                                                : std::nullopt;
}

/// As the operator goes there. False where the way is barred.
bool LumoWidget::showListPage(lumo::EditedList list) {
    QAbstractButton* const ways[] = {ui_->btnProject, ui_->btnPort, ui_->btnParamCfg, ui_->btnBind};
    QAbstractButton* const way = ways[static_cast<int>(list)];
    way->click();
    return listInView() == list;
}

/// Ports and parameter sets are shown as they are when their page is made.
void LumoWidget::showRestored(const lumo::Restored& what) {
    if (listInView() != what.page) {
        return;
    }
    if (what.page == lumo::EditedList::Ports) {
        showPorts();
    } else if (what.page == lumo::EditedList::Params) {
        showParams();
        if (auto* const table = paramPages_.last()->findChild<QTableWidget*>()) {
            table->selectRow(what.row);
        }
    }
}

/// Removes a page from the stack. Deleted later, because its signal may be being handled.
void LumoWidget::discard(QWidget* page) {
    page->disconnect(this);
    ui_->stackedWidget->removeWidget(page);
    page->deleteLater();
}

void LumoWidget::openPointPage(int row, ModuleObject* statement, int jointCount) {
    deletPWgt();
    isnew_pWgt = true;
    pointPage_ = new PointWidget(row, statement, jointCount, ui_->stackedWidget);
    connect(pointPage_, &PointWidget::okayBtnClicked, this, &LumoWidget::pointPageAccepted);
    connect(pointPage_, &PointWidget::cancelBtnClicked, this, &LumoWidget::showEditor);
    connect(pointPage_, &PointWidget::moveRequested, editor_, &ProgramWidget::moveToLine);
    ui_->stackedWidget->addWidget(pointPage_);
    showAlone(pointPage_);
    pointPage_->testNofocus();
}

void LumoWidget::pointPageAccepted(int row) {
    showEditor();
    editor_->changeStatement(row);
}

void LumoWidget::deletPWgt() {
    // Show the editor before the bar: another page with the bar may be larger than the panel.
    ui_->stackedWidget->setCurrentWidget(editor_);
    ui_->topWgt->show();
    ui_->line_2->show();
    dropPointPage();
}

void LumoWidget::dropPointPage() {
    if (pointPage_) {
        discard(pointPage_);
        pointPage_ = nullptr;
    }
    isnew_pWgt = false;
}

void LumoWidget::deletSWgt() {
    if (stationPage_) {
        discard(stationPage_);
        stationPage_ = nullptr;
    }
}

// --- Project --------------------------------------------------------------------------------------

void LumoWidget::connectProject() {
    recovery_ = new lumo::Recovery(editor_->stored(), this);
    recovery_->setProjectPath(filePath);
    auto* const project = new lumo::ProjectDialogs(this, [this] { return recovery_->isUnsaved(); });
    project_ = project;
    connect(project, &lumo::ProjectDialogs::projectOpened, recovery_, &lumo::Recovery::offer);
    connect(recovery_, &lumo::Recovery::restored, project, &lumo::ProjectDialogs::restoreProject);
    auto* const saveKey = new QShortcut(QKeySequence(QStringLiteral("Ctrl+S")), this);
    saveKey->setContext(Qt::WidgetWithChildrenShortcut);
    connect(saveKey, &QShortcut::activated, project, [project] { project->saveProject(filePath); });
    connect(ui_->btnNew, &QAbstractButton::clicked, project, &lumo::ProjectDialogs::newProject);
    connect(ui_->btnOpen, &QAbstractButton::clicked, project, &lumo::ProjectDialogs::openProject);
    connect(ui_->btnSaveAs, &QAbstractButton::clicked, project, &lumo::ProjectDialogs::saveProjectAs);
    connect(ui_->btnSave, &QAbstractButton::clicked, project, [project] { project->saveProject(filePath); });
    connect(project, &lumo::ProjectDialogs::projectChosen, this, &LumoWidget::projectChosen);
    connect(project, &lumo::ProjectDialogs::projectLoaded, editor_, &ProgramWidget::showFromTheTop);
    connect(project, &lumo::ProjectDialogs::projectLoaded, editor_, &ProgramWidget::checkStored);
    connect(project, &lumo::ProjectDialogs::projectSaved, editor_, &ProgramWidget::checkStored);
    connect(project, &lumo::ProjectDialogs::toolsetLoaded, this, &LumoWidget::selectLoadedToolset);
}

void LumoWidget::projectChosen(const QString& path) {
    filePath = path;
    recovery_->setProjectPath(path);
    editor_->setProjectPath(path);
    isEnable_moveorder = true;
    editor_->refreshMoveOrderEnable(true);
    showProjectName();
}

bool LumoWidget::isUnsaved() const {
    return recovery_->isUnsaved();
}

bool LumoWidget::askToLeave() {
    // Nothing may delay the end of a run; its changes are kept.
    if (lumo::isRunning() || !isUnsaved()) {
        return true;
    }
    project_->settle([this] {
        recovery_->discard();
        emit mayLeave();
    });
    return false;
}

void LumoWidget::showProjectName() {
    ui_->topWgt->setProject(lumo::projectName(filePath));
    showStored();
}

void LumoWidget::showStored() {
    const lumo::StoredState* const stored = editor_->stored();
    const QString text = stored->isStored() ? tr("已保存") : tr("未保存");
    ui_->topWgt->setStored(stored->hasFile() ? text : QString(), !stored->isStored());
}

// --- Tool and work object -------------------------------------------------------------------------

void LumoWidget::getToolsAndWobjs(QComboBox* combo, bool isTool) {
    lumo::fillToolsetSelector(combo, isTool);
}

void LumoWidget::connectToolset() {
    for (QComboBox* const combo : {ui_->toolCmb, ui_->wobjCmb}) {
        connect(combo, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                [this, combo] { applySelector(combo); });
    }
    connect(m(prog::key::executeState), &ModuleObject::changed, this, &LumoWidget::lockSelectors);
    lockSelectors();
}

void LumoWidget::applySelector(const QComboBox* combo) {
    lumo::applyToolsetSelector(this, combo, combo == ui_->toolCmb);
    editor_->toolsetChanged();
}

/// A run keeps the tool and work object that it began with.
void LumoWidget::lockSelectors() {
    const bool running = m(prog::key::executeState)->getString() != prog::word::idle;
    ui_->toolCmb->setDisabled(running);
    ui_->wobjCmb->setDisabled(running);
    ui_->topWgt->setRunning(running);
}

void LumoWidget::reapplyToolset() {
    applySelector(ui_->toolCmb);
    applySelector(ui_->wobjCmb);
}

void LumoWidget::selectLoadedToolset() {
    const ModuleObject* toolset = m(prog::key::toolset);
    const QString tool = toolset->c(prog::field::end)->c(prog::field::name)->getString();
    const QString wobj = toolset->c(prog::field::ref)->c(prog::field::name)->getString();
    const bool toolChanged = lumo::selectToolsetName(ui_->toolCmb, tool);
    const bool wobjChanged = lumo::selectToolsetName(ui_->wobjCmb, wobj);
    if (!toolChanged && !wobjChanged) {
        lumo::sendToolset(this);
    }
}

void showAlertDialog(const QString& text) {
    lumo::showMessage(QMessageBox::NoIcon, QString(), text);
}
