#include "stations/signalsbindwidget.h"

#include "executor/lumoexecutor.h"
#include "files/projectfile.h"
#include "files/settingsfile.h"
#include "files/stationrun.h"
#include "look/scale.h"
#include "module/globals.h"
#include "program/words.h"
#include "stations/stationtable.h"
#include "ui_signalsbindwidget.h"
#include "undo/edit.h"
#include "undo/steptext.h"
#include "widgets/findingtext.h"
#include "widgets/messagebox.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>

#include <utility>

using namespace lumo;
using namespace prog;

namespace {

constexpr int stationRun = 1;
constexpr int ownStations = 4;  ///< the first rows, which are never deleted
constexpr int queuePeriodMs = 200;
constexpr int stopPeriodMs = 300;
constexpr QLatin1String baselinePhase = "begin."_l1;
constexpr QLatin1String samplePhase = "end."_l1;

ModuleObject* stationAt(int row) {
    return m(key::signalsConfig)->c(row);
}

bool isPowered() {
    return m(key::robotPower)->getString() == word::on;
}

/// Replaces the last project in the tree. Each write may delete the page.
void loadStationProgram(const QPointer<QObject>& page, const Project& project) {
    auto* program = new ModuleObject(QString(key::stationProgram).section(QLatin1Char('.'), -1));
    program->loadJson(page, project.statements);
    m(key::lumo)->insert(page, program);
    StationRun::useToolset(page, project.toolset);
}

/// Starts the loaded project, unless the page was deleted. Returns when its run is over.
void runStationProgram(const QPointer<QObject>& page) {
    hand_or_signalbing = stationRun;
    sendToolset(page);
    m(key::processTime)->setValue(page, 0);
    if (page) {
        m(key::triggerStart)->setValue(page, 0);
    }
}

}  // namespace

SignalsBindWidget::SignalsBindWidget(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::SignalsBindWidget>()), powered_(isPowered()) {
    ui_->setupUi(this);
    setAttribute(Qt::WA_StyledBackground);
    dress();
    fill();
    for (QTimer* timer : {&startTimer_, &stopTimer_, &queueTimer_}) {
        timer->setTimerType(Qt::PreciseTimer);
    }
    connect(&startTimer_, &QTimer::timeout, this, [this] { checkDIStatus(samplePhase); });
    connect(&stopTimer_, &QTimer::timeout, this, [this] { checkDI2Status(samplePhase); });
    connect(&queueTimer_, &QTimer::timeout, this, &SignalsBindWidget::execProject);
    connect(ui_->switchBtn, &SwitchButton::statusChanged, this, &SignalsBindWidget::switchMonitoring);
    connect(m(key::executeState), &ModuleObject::changed, this, &SignalsBindWidget::onState);
    connect(m(key::robotPower), &ModuleObject::changed, this, &SignalsBindWidget::onPower);
    connect(m(key::triggerPause), &ModuleObject::changed, this, [this] { ++pauses_; });
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, &SignalsBindWidget::quit);
    followUndo();
    connect(ui_->tableWidget, &QTableWidget::itemChanged, this, &SignalsBindWidget::onItemChanged);
    connect(ui_->btnAdd, &QPushButton::clicked, this, [this] { emit addBtnClicked(ui_->tableWidget); });
    connect(ui_->btnEdit, &QPushButton::clicked, this, &SignalsBindWidget::editStation);
    connect(ui_->btnDel, &QPushButton::clicked, this, &SignalsBindWidget::deleteStation);
}

/// Stations that still wait are told at once, those of the run under way at its end.
SignalsBindWidget::~SignalsBindWidget() {
    if (firstRuns()) {
        *leftBehind_ = queue_.takeFirst().stations;
    }
    report(queue_.takeAll(false));
}

/// Switches off the outputs of the stations that wait.
void SignalsBindWidget::quit() {
    stopMonitoring();
    dropQueue();
}

int SignalsBindWidget::running() const {
    return firstRuns() ? queue_.first().stations.first().row : -1;
}

void SignalsBindWidget::fill() {
    const QList<ModuleObject*> stations = m(key::signalsConfig)->cmobjs();
    for (int row = 0; row < stations.size(); ++row) {
        appendStationRow(ui_->tableWidget);
        showStation(ui_->tableWidget, row, stations[row]);
    }
}

void SignalsBindWidget::save() {
    saveSettings(Settings::Stations);
}

// --- What is seen live ----------------------------------------------------------------------------

void SignalsBindWidget::dress() {
    view_.emplace(ui_->tableWidget, ui_->cards);
    ui_->footBar->dress(ui_->btnAdd, "new", true);
    ui_->footBar->dress(ui_->btnEdit, "edit");
    ui_->footBar->dress(ui_->btnDel, "delete");
    connect(&liveTimer_, &QTimer::timeout, this, &SignalsBindWidget::showLive);
    layOut();
}

void SignalsBindWidget::layOut() {
    constexpr int margin = 16;
    const int around = look::px(margin);
    ui_->bodyLayout->setContentsMargins(around, 0, around, around);
    ui_->bodyLayout->setSpacing(around);
}

void SignalsBindWidget::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange) {
        layOut();
    }
}

void SignalsBindWidget::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    constexpr int periodMs = 200;
    showLive();
    liveTimer_.start(periodMs);
}

void SignalsBindWidget::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    liveTimer_.stop();
}

void SignalsBindWidget::showLive() {
    const bool isHeld = !queue_.isEmpty() && stops_.anyAtTriggerLevel(this);
    view_->show(queue_, !firstRuns(), serving_ == Serving::Running, isHeld);
}

// --- Monitoring -----------------------------------------------------------------------------------

void SignalsBindWidget::switchMonitoring(bool on) {
    if (!on) {
        stopMonitoring();
    } else if (ui_->tableWidget->rowCount() > 0) {
        startMonitoring();
    } else {
        ui_->switchBtn->setChecked(false);  // there is no station
    }
}

void SignalsBindWidget::startMonitoring() {
    view_->listen();
    checkDIStatus(baselinePhase);
    startTimer_.start(samplePeriodMs(stationCell(ui_->tableWidget, 0, PeriodColumn)));
    queueTimer_.start(queuePeriodMs);
    checkDI2Status(baselinePhase);
    stopTimer_.start(stopPeriodMs);
}

void SignalsBindWidget::stopMonitoring() {
    ++switchOffs_;
    view_->stopListening();
    for (QTimer* timer : {&startTimer_, &stopTimer_, &queueTimer_}) {
        timer->stop();
    }
    starts_.clear();
    stops_.clear();
}

void SignalsBindWidget::checkDIStatus(const QString& phase) {
    if (phase == baselinePhase) {
        starts_.takeBaselines(this);
        return;
    }
    const QVector<int> triggered = starts_.sample(this);
    const QPointer<SignalsBindWidget> self(this);
    for (const int row : triggered) {
        if (self) {
            queueProject(row);
        }
    }
}

void SignalsBindWidget::queueProject(int row) {
    queue_.add(stationCell(ui_->tableWidget, row, ProjectColumn),
               {row, readSignal(stationAt(row), StationSignal::StartOutput)});
    const QPointer<SignalsBindWidget> self(this);
    setDoPort(row, true);
    if (self) {
        showState(ui_->tableWidget, row, StationState::Triggered);
    }
}

void SignalsBindWidget::checkDI2Status(const QString& phase) {
    if (phase == baselinePhase) {
        stops_.takeBaselines(this);
        return;
    }
    QVector<Signal> outputs;
    const QVector<int> triggered = stops_.sample(this);
    for (const int row : triggered) {
        outputs << readSignal(stationAt(row), StationSignal::StopOutput);
    }
    const QPointer<SignalsBindWidget> self(this);
    for (const Signal& output : qAsConst(outputs)) {
        m(key::triggerPause)->trigger();  // returns when the closing is over
        switchOutput(self, output, true);
    }
}

void SignalsBindWidget::setDoPort(int row, bool on) {
    switchOutput(this, readSignal(stationAt(row), StationSignal::StartOutput), on);
}

void SignalsBindWidget::setDo2Port(int row, bool on) {
    switchOutput(this, readSignal(stationAt(row), StationSignal::StopOutput), on);
}

// --- The queue ------------------------------------------------------------------------------------

/// Requests wait while a stop input is at its triggering level, and while the robot moves.
bool SignalsBindWidget::canServe() {
    return serving_ == Serving::Nothing && !queue_.isEmpty() && executor->depth() == 0 &&
           m(key::executeState)->getString() == word::idle && m(key::robotState)->getString() == word::idle &&
           !stops_.anyAtTriggerLevel(this);
}

bool SignalsBindWidget::firstRuns() const {
    return serving_ == Serving::Starting || serving_ == Serving::Running;
}

void SignalsBindWidget::execProject() {
    if (!canServe()) {
        return;
    }
    const QPointer<SignalsBindWidget> self(this);
    const int id = queue_.first().id;
    const QString fileName = queue_.first().project;
    // Read before the closing, so that no wire is pulled back for a project that cannot run. Reading reports
    // why.
    const std::optional<Project> project = fileName.isEmpty() ? std::nullopt : readStationProject(fileName);
    if (!self || !queue_.isFirst(id)) {
        return;
    }
    if (!project || refusedForErrors(*project)) {
        giveUpFirst();
    } else if (closeBeforeStart(id)) {
        serve(*project);
    }
}

/// Whether the first project has errors; tells the first of them.
bool SignalsBindWidget::refusedForErrors(const Project& project) {
    const StationQueue::Entry& entry = queue_.first();
    const Findings findings = check_.check(entry.project, project);
    if (!firstError(findings)) {
        return false;
    }
    showMessage(QMessageBox::Warning, tr("提示"),
                tr("%1：工程 %2 有错误，未启动。").arg(stationName(entry), entry.project) +
                    QLatin1Char('\n') + refusalText(findings));
    return true;
}

/// Pauses before a start, which does a closing. False when nothing may start now: the closing can take
/// seconds, and another pause during it means that the robot is to stand. The request then waits for a later
/// tick.
bool SignalsBindWidget::closeBeforeStart(int id) {
    const QPointer<SignalsBindWidget> self(this);
    const int switchOffs = switchOffs_;
    const int pauses = pauses_;
    m(key::triggerPause)->trigger();  // returns when the closing is over
    return self && switchOffs == switchOffs_ && pauses_ == pauses + 1 && canServe() && queue_.isFirst(id);
}

/// Runs the first project. Returns when its run is over or was refused.
void SignalsBindWidget::serve(const Project& project) {
    const QPointer<SignalsBindWidget> self(this);
    QVector<WaitingStation> left;
    leftBehind_ = &left;
    serving_ = Serving::Starting;
    {
        const StationRun run(stationName(queue_.first()), projectName(queue_.first().project));
        loadStationProgram(self.data(), project);
        runStationProgram(self.data());
    }
    if (self) {
        endServing();
        return;
    }
    for (const WaitingStation& station : qAsConst(left)) {
        switchOutput(nullptr, station.output, false);
    }
}

void SignalsBindWidget::endServing() {
    const Serving reached = std::exchange(serving_, Serving::Nothing);
    if (reached != Serving::Starting) {
        view_->runEnded(executor->reachedEnd());
    }
    if (reached == Serving::Starting) {
        giveUpFirst();
    } else if (reached == Serving::Running) {
        report(queue_.takeFirst().stations);
    }
}

/// The first project will not run. Inputs that are held must be released before they trigger again.
void SignalsBindWidget::giveUpFirst() {
    if (!queue_.first().project.isEmpty()) {
        view_->refused();
    }
    const QVector<WaitingStation> stations = queue_.takeFirst().stations;
    for (const WaitingStation& station : stations) {
        starts_.rearm(this, station.row);
    }
    report(stations);
}

/// Empties the queue. The run under way goes on; its stations are told at its end.
void SignalsBindWidget::dropQueue() {
    report(queue_.takeAll(firstRuns()));
}

void SignalsBindWidget::onState(const QVariant& state) {
    if (state.toString() == word::busy && serving_ == Serving::Starting) {
        serving_ = Serving::Running;
        view_->runBegan();
        showState(ui_->tableWidget, queue_.first().stations.first().row, StationState::Running);
    } else if (state.toString() == word::idle && serving_ == Serving::Running) {
        serving_ = Serving::Over;  // the executor has not returned from the run yet
        report(queue_.takeFirst().stations);
    }
}

/// Requests from before or during a loss of power are dropped: nothing starts by itself when the power is
/// back.
void SignalsBindWidget::onPower(const QVariant& power) {
    const bool powered = power.toString() == word::on;
    if (std::exchange(powered_, powered) == powered) {
        return;
    }
    if (powered) {
        starts_.rearm(this);
    }
    dropQueue();
}

/// Tells stations that their run is over or will not come.
void SignalsBindWidget::report(const QVector<WaitingStation>& stations) {
    const QPointer<SignalsBindWidget> self(this);
    for (const WaitingStation& station : stations) {
        switchOutput(self, station.output, false);
        if (self) {
            showState(ui_->tableWidget, station.row, StationState::Untriggered);
        }
    }
}

// --- Editing --------------------------------------------------------------------------------------

int SignalsBindWidget::selectedRow() const {
    const QModelIndexList rows = ui_->tableWidget->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

/// A row that gets another project no longer waits for the old one.
void SignalsBindWidget::onItemChanged(const QTableWidgetItem* item) {
    if (item->column() == ProjectColumn) {
        withdraw(item->row());
    }
}

/// Withdraws the requests of a row. The run under way goes on; its stations are told at its end.
void SignalsBindWidget::withdraw(int row) {
    report(queue_.withdraw(row, firstRuns()));
}

void SignalsBindWidget::editStation() {
    if (selectedRow() < 0) {
        showMessage(QMessageBox::Warning, tr("提示"), tr("请先选中行"));
        return;
    }
    emit editBtnClicked(ui_->tableWidget);
}

void SignalsBindWidget::deleteStation() {
    const int row = selectedRow();
    if (row < 0) {
        showMessage(QMessageBox::Warning, tr("提示"), tr("请先选中行"));
    } else if (row < ownStations) {
        showMessage(QMessageBox::Warning, tr("提示"), tr("默认行禁止删除"),
                    {QString(), tr("若不使用该工位，请编辑它并清空其启动信号。"), {}});
    } else {
        removeStation(row);
    }
}

void SignalsBindWidget::removeStation(int row) {
    const Edit edit(EditedList::Stations,
                    steptext::stationDeleted(stationAt(row)->c(field::stationName)->getString()));
    forgetRow(row);
    m(key::signalsConfig)->remove(this, mIndex(row));
    dropRow(row);
    save();
}

/// A station is about to leave.
void SignalsBindWidget::forgetRow(int row) {
    withdraw(row);
    starts_.removeRow(row);
    stops_.removeRow(row);
    queue_.removeRow(row);
}

void SignalsBindWidget::dropRow(int row) {
    ui_->tableWidget->removeRow(row);
    ui_->tableWidget->setCurrentItem(nullptr);  // a second tap must not delete the next row
    renumberStations(ui_->tableWidget);
    fitStations(ui_->tableWidget);
}

// --- Undo -----------------------------------------------------------------------------------------

void SignalsBindWidget::followUndo() {
    const ModuleObject* const stations = m(key::signalsConfig);
    connect(stations, &ModuleObject::removed, this, [this](const QString& name, const QObject* sender) {
        if (sender == History::instance()) {
            const int row = m(key::signalsConfig)->c(name)->indexInPmobj();
            forgetRow(row);
            dropRow(row);
        }
    });
    connect(stations, &ModuleObject::added, this, [this](const QString& name, const QObject* sender) {
        if (sender == History::instance()) {
            insertRow(m(key::signalsConfig)->c(name)->indexInPmobj());
        }
    });
    connect(History::instance(), &History::restored, this, &SignalsBindWidget::showRestored);
}

void SignalsBindWidget::insertRow(int row) {
    starts_.insertRow(row);
    stops_.insertRow(row);
    queue_.insertRow(row);
    insertStationRow(ui_->tableWidget, row);
    renumberStations(ui_->tableWidget);
}

void SignalsBindWidget::showRestored(const Restored& what) {
    if (what.page != EditedList::Stations || what.row < 0 || what.row >= ui_->tableWidget->rowCount()) {
        return;
    }
    showStation(ui_->tableWidget, what.row, stationAt(what.row));
    fitStations(ui_->tableWidget);
    ui_->tableWidget->selectRow(what.row);
}
