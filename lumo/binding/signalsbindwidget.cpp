#include "binding/signalsbindwidget.h"

#include "binding/stationtable.h"
#include "executor/lumoexecutor.h"
#include "module/globals.h"
#include "module/keys.h"
#include "module/messagebox.h"
#include "module/settingsfile.h"
#include "panel/projectfile.h"
#include "panel/toolset.h"
#include "ui_signalsbindwidget.h"

#include <QHeaderView>
#include <QPointer>

#include <utility>

using namespace lumo;

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

}  // namespace

SignalsBindWidget::SignalsBindWidget(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::SignalsBindWidget>()) {
    ui_->setupUi(this);
    fill();
    for (QTimer* timer : {&startTimer_, &stopTimer_, &queueTimer_}) {
        timer->setTimerType(Qt::PreciseTimer);
    }
    connect(&startTimer_, &QTimer::timeout, this, [this] { checkDIStatus(samplePhase); });
    connect(&stopTimer_, &QTimer::timeout, this, [this] { checkDI2Status(samplePhase); });
    connect(&queueTimer_, &QTimer::timeout, this, &SignalsBindWidget::execProject);
    connect(ui_->switchBtn, &SwitchButton::statusChanged, this, &SignalsBindWidget::switchMonitoring);
    connect(m(key::executeState), &ModuleObject::changed, this, &SignalsBindWidget::onState);
    connect(ui_->tableWidget, &QTableWidget::itemChanged, this, &SignalsBindWidget::onItemChanged);
    connect(ui_->btnAdd, &QPushButton::clicked, this, [this] { emit addBtnClicked(ui_->tableWidget); });
    connect(ui_->btnEdit, &QPushButton::clicked, this, &SignalsBindWidget::editStation);
    connect(ui_->btnDel, &QPushButton::clicked, this, &SignalsBindWidget::deleteStation);
}

/// Who still waits will not be served. The output of a run under way stays: its station must not be told
/// that the run is over.
SignalsBindWidget::~SignalsBindWidget() {
    if (firstRuns()) {
        queue_.takeFirst();
    }
    while (!queue_.isEmpty()) {
        report(queue_.takeFirst().stations);
    }
}

void SignalsBindWidget::fill() {
    const QList<ModuleObject*> stations = m(key::signalsConfig)->cmobjs();
    for (int row = 0; row < stations.size(); ++row) {
        appendStationRow(ui_->tableWidget);
        showStation(ui_->tableWidget, row, stations[row]);
    }
    QHeaderView* const header = ui_->tableWidget->horizontalHeader();
    header->setDefaultAlignment(Qt::Alignment(QFlag(int(Qt::AlignCenter) | int(Qt::TextWordWrap))));
    fitStations(ui_->tableWidget);
}

void SignalsBindWidget::save() {
    saveSettings(Settings::Stations);
}

// --- Monitoring -----------------------------------------------------------------------------------

void SignalsBindWidget::switchMonitoring(bool on) {
    if (!on) {
        stopMonitoring();
    } else if (ui_->tableWidget->rowCount() > 0) {
        startMonitoring();
    } else {
        ui_->switchBtn->setChecked(false);  // there is nothing to listen to
    }
}

void SignalsBindWidget::startMonitoring() {
    checkDIStatus(baselinePhase);
    startTimer_.start(samplePeriodMs(stationCell(ui_->tableWidget, 0, PeriodColumn)));
    queueTimer_.start(queuePeriodMs);
    checkDI2Status(baselinePhase);
    stopTimer_.start(stopPeriodMs);
}

void SignalsBindWidget::stopMonitoring() {
    ++switchedOff_;
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
    const QVector<int> triggered = starts_.look(this);
    for (const int row : triggered) {
        queueProject(row);
    }
}

void SignalsBindWidget::queueProject(int row) {
    queue_.add(stationCell(ui_->tableWidget, row, ProjectColumn),
               {row, readSource(stationAt(row), StationSignal::StartOutput)});
    setDoPort(row, true);
    showState(ui_->tableWidget, row, StationState::Triggered);
}

void SignalsBindWidget::checkDI2Status(const QString& phase) {
    if (phase == baselinePhase) {
        stops_.takeBaselines(this);
        return;
    }
    QVector<SignalSource> outputs;
    const QVector<int> triggered = stops_.look(this);
    for (const int row : triggered) {
        outputs << readSource(stationAt(row), StationSignal::StopOutput);
    }
    const QPointer<SignalsBindWidget> self(this);
    for (const SignalSource& output : qAsConst(outputs)) {
        m(key::triggerPause)->trigger();  // returns when the closing is over
        switchOutput(self, output, true);
    }
}

void SignalsBindWidget::setDoPort(int row, bool on) {
    switchOutput(this, readSource(stationAt(row), StationSignal::StartOutput), on);
}

void SignalsBindWidget::setDo2Port(int row, bool on) {
    switchOutput(this, readSource(stationAt(row), StationSignal::StopOutput), on);
}

// --- The queue ------------------------------------------------------------------------------------

bool SignalsBindWidget::canServe() const {
    return serving_ == Serving::Nothing && !queue_.isEmpty() && executor->depth() == 0 &&
           m(key::executeState)->getString() == word::idle;
}

bool SignalsBindWidget::firstRuns() const {
    return serving_ == Serving::Starting || serving_ == Serving::Running;
}

void SignalsBindWidget::execProject() {
    if (!canServe()) {
        return;
    }
    const QPointer<SignalsBindWidget> self(this);
    const int switchedOff = switchedOff_;
    m(key::triggerPause)->trigger();  // returns when the closing is over
    if (!self || switchedOff != switchedOff_ || !canServe()) {
        return;
    }
    if (queue_.first().project.isEmpty()) {
        report(queue_.takeFirst().stations);
        return;
    }
    serving_ = Serving::Starting;
    loadProject(QString(queue_.first().project));
    runLoaded();
    if (self) {
        endServing();
    }
}

void SignalsBindWidget::endServing() {
    const Serving reached = std::exchange(serving_, Serving::Nothing);
    if (reached != Serving::Over) {
        report(queue_.takeFirst().stations);
    }
    if (reached == Serving::Starting) {
        emit startRefused();
    }
}

/// Puts a project in the place of the last one. One that cannot be read is an empty program, which the
/// executor refuses; the reading has said why.
void SignalsBindWidget::loadProject(const QString& fileName) {
    const Project project = readProject(fileName).value_or(Project());
    auto* program = new ModuleObject(QString(key::stationProgram).section(QLatin1Char('.'), -1));
    program->loadJson(this, project.statements);
    m(key::lumo)->insert(this, program);
    if (!project.toolset.isEmpty()) {
        m(key::toolset)->loadJson(this, project.toolset);
    }
}

/// Starts what was loaded; returns when its run is over.
void SignalsBindWidget::runLoaded() {
    hand_or_signalbing = stationRun;
    sendToolset(this);
    m(key::processTime)->setValue(this, 0);
    m(key::triggerStart)->setValue(this, 0);
}

void SignalsBindWidget::onState(const QVariant& state) {
    if (state.toString() == word::busy && serving_ == Serving::Starting) {
        serving_ = Serving::Running;
        showState(ui_->tableWidget, queue_.first().stations.first().row, StationState::Running);
    } else if (state.toString() == word::idle && serving_ == Serving::Running) {
        serving_ = Serving::Over;  // the executor is still on its way back from it
        report(queue_.takeFirst().stations);
    }
}

/// Tells stations that their run is over, or will not come.
void SignalsBindWidget::report(const QVector<WaitingStation>& stations) {
    for (const WaitingStation& station : stations) {
        switchOutput(this, station.output, false);
        showState(ui_->tableWidget, station.row, StationState::Untriggered);
    }
}

// --- The operator's hand --------------------------------------------------------------------------

int SignalsBindWidget::selectedRow() const {
    const QModelIndexList rows = ui_->tableWidget->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

/// What the page does not write itself is an edit of the row.
void SignalsBindWidget::onItemChanged(const QTableWidgetItem* item) {
    if (item->column() == NumberColumn || item->column() == StateColumn) {
        return;
    }
    starts_.forget(item->row());
    stops_.forget(item->row());
    if (item->column() == ProjectColumn) {
        withdraw(item->row());
    }
}

/// A row asks for its project no more. The run under way goes on, and is reported at its end.
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
        showMessage(QMessageBox::Warning, tr("提示"), tr("默认行禁止删除"));
    } else {
        removeStation(row);
    }
}

void SignalsBindWidget::removeStation(int row) {
    withdraw(row);
    starts_.removeRow(row);
    stops_.removeRow(row);
    queue_.removeRow(row);
    m(key::signalsConfig)->remove(this, mIndex(row));
    ui_->tableWidget->removeRow(row);
    ui_->tableWidget->setCurrentItem(nullptr);  // a second tap must not delete the next one
    renumberStations(ui_->tableWidget);
    fitStations(ui_->tableWidget);
    save();
}
