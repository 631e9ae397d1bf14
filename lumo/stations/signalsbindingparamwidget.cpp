#include "stations/signalsbindingparamwidget.h"

#include "files/projectcheck.h"
#include "files/projectfile.h"
#include "files/settingsfile.h"
#include "look/scale.h"
#include "program/settingsrows.h"
#include "program/words.h"
#include "stations/stationtable.h"
#include "ui_signalsbindingparamwidget.h"
#include "undo/edit.h"
#include "undo/steptext.h"
#include "widgets/fieldanswer.h"
#include "widgets/findingtext.h"
#include "widgets/messagebox.h"
#include "widgets/projectchooser.h"
#include "widgets/signalselector.h"

#include <QEvent>
#include <QFile>
#include <QFileDialog>
#include <QRegularExpressionValidator>
#include <QTableWidget>

using namespace lumo;
using namespace prog;

namespace {

constexpr StationSignal stationSignals[] = {StationSignal::StartInput, StationSignal::StopInput,
                                            StationSignal::StartOutput, StationSignal::StopOutput};

/// Both selectors list the rising edge first.
Edge chosenEdge(const QComboBox* combo) {
    return combo->currentIndex() == 1 ? Edge::Falling : Edge::Rising;
}

void fillEdges(QComboBox* combo, Edge stored) {
    combo->addItems({edgeWord(Edge::Rising), edgeWord(Edge::Falling)});
    combo->setCurrentIndex(stored == Edge::Falling ? 1 : 0);
}

}  // namespace

SignalsBindingParamWidget::SignalsBindingParamWidget(QTableWidget* table, bool isNew, QWidget* parent)
    : QWidget(parent),
      ui_(std::make_unique<Ui::SignalsBindingParamWidget>()),
      table_(table),
      isNew_(isNew),
      station_(isNew ? nullptr : m(key::signalsConfig)->c(table->currentRow())) {
    ui_->setupUi(this);
    setAttribute(Qt::WA_StyledBackground);
    ui_->footBar->dress(ui_->cancelBtn, "close");
    ui_->footBar->dress(ui_->okayBtn, "check", true);
    const QRegularExpression digits(QStringLiteral("[0-9]+$"));
    ui_->lineETime->setValidator(new QRegularExpressionValidator(digits, this));
    ui_->lineETime->setMaxLength(EntryRange::mostDigits);
    makeSelectors();
    showStation();
    answerTime();
    initDICmb();
    initDOCmb();
    connect(ui_->btnOpen, &QPushButton::clicked, this, &SignalsBindingParamWidget::chooseProject);
    connect(ui_->btnclear, &QPushButton::clicked, this, [this] { showProject(QString()); });
    connect(ui_->okayBtn, &QPushButton::clicked, this, &SignalsBindingParamWidget::accept);
    connect(ui_->cancelBtn, &QPushButton::clicked, this, &SignalsBindingParamWidget::cancelBtnClicked);
}

SignalsBindingParamWidget::~SignalsBindingParamWidget() = default;

void SignalsBindingParamWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    layOut();
}

void SignalsBindingParamWidget::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::StyleChange && columns_ > 0) {  // the form has a sheet of its own
        layOut();
    }
}

/// Start and stop stand above one another, inputs and outputs beside; in a narrow page all in one column.
void SignalsBindingParamWidget::layOut() {
    constexpr int margin = 16, leastForTwo = 660;
    QGridLayout* const grid = ui_->gridLayout;
    grid->setContentsMargins(look::px(margin), 0, look::px(margin), 0);
    grid->setHorizontalSpacing(look::px(margin));
    const int columns = width() >= look::px(leastForTwo) ? 2 : 1;
    if (columns == columns_) {
        return;
    }
    columns_ = columns;
    QWidget* const groups[] = {ui_->groupBox_4, ui_->groupBox_3, ui_->groupBox,
                               ui_->groupBox_2, ui_->groupBox_5, ui_->groupBox_6};
    int place = 0;
    for (QWidget* const group : groups) {
        grid->addWidget(group, place / columns, place % columns);
        ++place;
    }
    grid->setRowStretch(place, 1);
    grid->setColumnStretch(1, columns - 1);
}

void SignalsBindingParamWidget::answerTime() {
    auto* const answer = new FieldAnswer(ui_->lineETime, holdTimeRange());
    answer->tellIn(ui_->lblTimeRange);
    const auto refreshOk = [this, answer] { ui_->okayBtn->setEnabled(answer->isTaken()); };
    connect(answer, &FieldAnswer::answered, this, refreshOk);
    refreshOk();
}

// --- The signals ----------------------------------------------------------------------------------

void SignalsBindingParamWidget::makeSelectors() {
    const SelectorWidgets widgets[] = {
        {ui_->rdbIOIn, ui_->rdbRegIn, ui_->lblDI, ui_->cmbDI, ui_->lblDIReg, ui_->cmbDIReg,
         ui_->cmbDIRegBias},
        {ui_->rdbIOIn_2, ui_->rdbRegIn_2, ui_->lblDI_2, ui_->cmbDI_2, ui_->lblDIReg_2, ui_->cmbDIReg_2,
         ui_->cmbDIRegBias_2},
        {ui_->rdbIOOut, ui_->rdbRegOut, ui_->lblDO, ui_->cmbDO, ui_->lblDOReg, ui_->cmbDOReg,
         ui_->cmbDORegBias},
        {ui_->rdbIOOut_2, ui_->rdbRegOut_2, ui_->lblDO_2, ui_->cmbDO_2, ui_->lblDOReg_2, ui_->cmbDOReg_2,
         ui_->cmbDORegBias_2},
    };
    for (const StationSignal which : stationSignals) {
        const int index = static_cast<int>(which);
        const SignalSide side = isInput(which) ? SignalSide::Input : SignalSide::Output;
        selectors_[index] = new SignalSelector(side, true, widgets[index], this);
    }
}

SignalSelector* SignalsBindingParamWidget::selector(StationSignal which) const {
    return selectors_[static_cast<int>(which)];
}

void SignalsBindingParamWidget::initSelector(StationSignal which) {
    selector(which)->fill(station_ ? readSignal(station_, which) : Signal());
}

void SignalsBindingParamWidget::initDICmb() {
    initSelector(StationSignal::StartInput);
    initSelector(StationSignal::StopInput);
}

void SignalsBindingParamWidget::initDOCmb() {
    initSelector(StationSignal::StartOutput);
    initSelector(StationSignal::StopOutput);
}

void SignalsBindingParamWidget::refreshDICmb() {
    selector(StationSignal::StartInput)->refresh();
}

void SignalsBindingParamWidget::refreshDI2Cmb() {
    selector(StationSignal::StopInput)->refresh();
}

void SignalsBindingParamWidget::refreshDOCmb() {
    selector(StationSignal::StartOutput)->refresh();
}

void SignalsBindingParamWidget::refreshDO2Cmb() {
    selector(StationSignal::StopOutput)->refresh();
}

// --- The station ----------------------------------------------------------------------------------

void SignalsBindingParamWidget::showStation() {
    if (!station_) {
        fillEdges(ui_->cmbType, Edge::Rising);
        fillEdges(ui_->cmbType_2, Edge::Rising);
        ui_->lineETime->setText(QStringLiteral("100"));
        showProject(QString());
        return;
    }
    const QString name = station_->c(field::stationName)->getString();
    ui_->lineEdit_stationname->setText(name);
    if (isReservedName(name)) {
        ui_->lineEdit_stationname->setReadOnly(true);
        ui_->label_8->setText(tr("固定名称"));
    }
    fillEdges(ui_->cmbType, readEdge(station_, StationSignal::StartInput));
    fillEdges(ui_->cmbType_2, readEdge(station_, StationSignal::StopInput));
    ui_->lineETime->setText(station_->c(field::time)->getString());
    showProject(station_->c(field::filePath)->getString());
}

void SignalsBindingParamWidget::save() {
    const QString name = ui_->lineEdit_stationname->text();
    const Edit edit(EditedList::Stations,
                    station_ ? steptext::stationEdited(name) : steptext::stationAdded(name));
    if (!station_) {
        station_ = m(key::signalsConfig)->append(this);
        station_->copyFrom(this, m(key::defaultSignalsConfig));
    }
    for (const StationSignal which : stationSignals) {
        storeSignal(this, station_, which, selector(which)->chosen());
    }
    writeEdge(this, station_, StationSignal::StartInput, chosenEdge(ui_->cmbType));
    writeEdge(this, station_, StationSignal::StopInput, chosenEdge(ui_->cmbType_2));
    station_->set(this, field::filePath, ui_->lblProject->text())
        ->set(this, field::stationName, name)
        ->set(this, field::time, ui_->lineETime->text())
        ->set(this, field::status, QString());
    saveSettings(Settings::Stations);
}

void SignalsBindingParamWidget::accept() {
    if (ui_->lineEdit_stationname->text().isEmpty()) {
        showMessage(QMessageBox::Warning, tr("提示"), tr("工位名称不能为空!"));
        return;
    }
    const bool isGone = !table_ || (!isNew_ && (!station_ || station_->pmobj() != m(key::signalsConfig)));
    if (isGone) {
        emit cancelBtnClicked();
        return;
    }
    // The file may have changed since it was chosen. One that is not there yet may come before the start.
    const QString project = ui_->lblProject->text();
    if (QFile::exists(project) && refusedProject(project)) {
        return;
    }
    save();
    if (isNew_) {
        appendStationRow(table_);
    }
    lumo::showStation(table_, station_->indexInPmobj(), station_);
    fitStations(table_);
    emit okayBtnClicked();
}

// --- The project ----------------------------------------------------------------------------------

void SignalsBindingParamWidget::showProject(const QString& fileName) {
    ui_->lblProject->setText(fileName);
    ui_->lblProject->setWhatsThis(fileName);
}

void SignalsBindingParamWidget::chooseProject() {
    if (fileDialog_) {
        return;
    }
    fileDialog_ = new ProjectChooser(this);
    connect(fileDialog_, &QFileDialog::fileSelected, this, &SignalsBindingParamWidget::projectSelected);
    fileDialog_->open();
}

/// Keeps the name alone: a start looks for the project in the working directory.
void SignalsBindingParamWidget::projectSelected(const QString& path) {
    fileDialog_->disconnect(this);
    logW() << "SignalsBindingParamWidget::SignalsBindingParamWidget QFileDialog::fileSelected filename ="
           << path;
    if (!refusedProject(path)) {
        showProject(path.section(QLatin1Char('/'), -1));
    }
}

/// Tells why a file cannot be the project of a station.
bool SignalsBindingParamWidget::refusedProject(const QString& path) {
    const QString fileName = path.section(QLatin1Char('/'), -1);
    const std::optional<Project> project = readStationProject(path);
    // At the start the name would mean the settings file in the working directory.
    if (!project || isSettingsFile(fileName)) {
        showMessage(QMessageBox::Warning, tr("提示"), tr("该文件不能用作工位的工程：%1").arg(fileName));
        return true;
    }
    const Findings findings = ProjectCheck().check(fileName, *project);
    if (firstError(findings)) {
        showMessage(
            QMessageBox::Warning, tr("提示"),
            tr("工程 %1 有错误，不能用于工位。").arg(fileName) + QLatin1Char('\n') + refusalText(findings));
        return true;
    }
    return false;
}
