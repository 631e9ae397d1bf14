#include "runner/pagehand.h"

#include "kord/kordservice.h"
#include "mendo/modulemanager.h"
#include "runner/problem.h"
#include "runner/stationeditor.h"
#include "runner/stationpage.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QStackedWidget>
#include <QTableWidget>

#include <algorithm>
#include <iterator>

namespace run {

namespace {

constexpr int againMs = 10;
constexpr int mostMs = 1000;  // the device page follows its outputs every 160 ms

/// A device or lock of the device page.
struct DeviceRow {
    const char* name;
    const char* button;
    int port;
    int lock;          ///< the port that gates it; of a lock its own
    const char* gate;  ///< a button that is enabled exactly while the page shows that the lock is on
};

constexpr DeviceRow devices[] = {
    {"laserLock", "btnLaserControl", 11, 11, "btnLaserTest"},
    {"laser", "btnLaserTest", 9, 11, "btnLaserTest"},
    {"pilot", "btnRedLight", 7, 11, "btnLaserTest"},
    {"gasLock", "btnBlowControl", 13, 13, "btnBlowTest"},
    {"gas", "btnBlowTest", 6, 13, "btnBlowTest"},
    {"wireLock", "btnWireControl", 12, 12, "btnWireTest"},
    {"wire", "btnWireTest", 8, 12, "btnWireTest"},
};

struct FieldRow {
    const char* key;
    const char* box;
};

constexpr FieldRow fieldRows[] = {
    {"power", "dspnLaserPower"},
    {"frequency", "dspnLaserFrequency"},
    {"dutyCycle", "dspnLaserRatio"},
    {"wireSpeed", "dspnWireSpeed"},
};

const DeviceRow& deviceRow(const QString& name) {
    return *std::find_if(std::begin(devices), std::end(devices) - 1,
                         [&name](const DeviceRow& row) { return name == QLatin1String(row.name); });
}

mendo::ModuleObject* portAt(int row) {
    return m(QStringLiteral("lumo.port"))->c(row);
}

/// Whether a port is in use and its output on.
bool isOn(int row) {
    const QString name = portAt(row)->r(QStringLiteral("name"))->getString();
    return portAt(row)->r(QStringLiteral("enable"))->getBool() &&
           kordservice()->dataNode(QStringLiteral("register.values.") + name)->getBool();
}

QAbstractButton* button(const QWidget* page, const char* name) {
    return page->findChild<QAbstractButton*>(QLatin1String(name));
}

/// The check box of a row, in whichever column it stands.
QCheckBox* checkBox(const QTableWidget* table, int row) {
    for (int column = 0; column < table->columnCount(); ++column) {
        if (auto* box = qobject_cast<QCheckBox*>(table->cellWidget(row, column))) {
            return box;
        }
    }
    return nullptr;
}

QString noRow(int row, int count) {
    return row < count ? QString() : QStringLiteral("there is no row %1").arg(row);
}

}  // namespace

PageHand::PageHand(QObject* parent) : QObject(parent) {
    again_.setSingleShot(true);
    again_.setTimerType(Qt::PreciseTimer);
    connect(&again_, &QTimer::timeout, this, &PageHand::work);
}

void PageHand::setPanel(QWidget* panel, StationPage* stations) {
    panel_ = panel;
    stations_ = stations;
}

QString PageHand::portFault(int row) const {
    return noRow(row, m(QStringLiteral("lumo.port"))->cmobjCount());
}

QString PageHand::stationFault(int row) const {
    return noRow(row, stations_->count());
}

void PageHand::device(const QJsonObject& keys) {
    add([this, keys, waitedMs = 0]() mutable { return pressDevice(keys, &waitedMs); });
}

void PageHand::port(int row, bool enable) {
    add([this, row, enable] {
        tickPort(row, enable);
        return true;
    });
}

void PageHand::station(int row, const QJsonObject& fields) {
    add([this, row, fields] {
        editStation(row, fields);
        return true;
    });
}

void PageHand::letGo() {
    gone_ = true;
    gestures_.clear();
    again_.stop();
}

void PageHand::add(Gesture gesture) {
    gestures_.push_back(std::move(gesture));
    work();
}

/// A gesture that runs an event loop of its own is not interrupted by the next one.
void PageHand::work() {
    if (working_) {
        return;
    }
    working_ = true;
    bool isDone = true;
    while (isDone && !gestures_.empty() && !QApplication::activeModalWidget()) {
        Gesture gesture = std::move(gestures_.front());
        gestures_.pop_front();
        isDone = gesture();
        if (!isDone && !gone_) {
            gestures_.push_front(std::move(gesture));
        }
    }
    working_ = false;
    if (!gestures_.empty()) {
        again_.start(againMs);
    }
    emit released();
}

// --- The gestures ---------------------------------------------------------------------------------

/// What the page shows is what the operator goes by: a lock that was just switched on lets a device's button
/// be pressed only when the page shows it.
bool PageHand::pressDevice(const QJsonObject& keys, int* waitedMs) {
    const QString name = keys.value(QStringLiteral("name")).toString();
    const DeviceRow& row = deviceRow(name);
    const QWidget* page = open("btnDeviceControl", "DeviceControlWidget");
    if (!page) {
        return true;
    }
    fillFields(page, keys);
    if (button(page, row.gate)->isEnabled() != isOn(row.lock) && *waitedMs < mostMs) {
        *waitedMs += againMs;
        return false;
    }
    if (isOn(row.port) == keys.value(QStringLiteral("value")).toBool()) {
        return true;
    }
    if (button(page, row.button)->isEnabled()) {
        button(page, row.button)->click();
    } else {
        printWarning(QStringLiteral("scenario: the button of \"%1\" is not enabled").arg(name));
    }
    return true;
}

void PageHand::fillFields(const QWidget* page, const QJsonObject& keys) const {
    for (const FieldRow& field : fieldRows) {
        const QJsonValue value = keys.value(QLatin1String(field.key));
        if (value.isDouble()) {
            page->findChild<QDoubleSpinBox*>(QLatin1String(field.box))->setValue(value.toDouble());
        }
    }
}

void PageHand::tickPort(int row, bool enable) {
    button(panel_, "btnPort")->click();  // the page shows what held when it was opened
    const QWidget* page = shownPage("PortConfigWidget");
    const auto* table = page ? page->findChild<QTableWidget*>(QStringLiteral("tableWidget")) : nullptr;
    QCheckBox* box = table ? checkBox(table, row) : nullptr;
    if (!box) {
        fail(QStringLiteral("port row %1 cannot be worked").arg(row));
        return;
    }
    if (box->isChecked() != enable) {
        box->click();
    }
    button(page, "okayBtn")->click();
}

void PageHand::editStation(int row, const QJsonObject& fields) {
    stations_->edit(row);
    QWidget* page = shownPage("SignalsBindingParamWidget");
    if (!page) {
        fail(QStringLiteral("station row %1 cannot be edited").arg(row));
        return;
    }
    const StationEditor editor(page);
    QString fault = editor.fill(fields);
    if (fault.isEmpty() && !editor.accept()) {
        fault = QStringLiteral("the page refuses it");
    }
    if (fault.isEmpty()) {
        return;
    }
    editor.cancel();
    fail(QStringLiteral("station row %1: %2").arg(row).arg(fault));
}

void PageHand::fail(const QString& reason) {
    failed_ = true;
    printError(QStringLiteral("scenario: ") + reason);
}

/// The page, opened from the navigation where it is not shown; null, and told, when it does not come.
QWidget* PageHand::open(const char* navigation, const char* page) {
    if (!shownPage(page)) {
        button(panel_, navigation)->click();
    }
    QWidget* shown = shownPage(page);
    if (!shown) {
        fail(QStringLiteral("the page of %1 does not open").arg(QLatin1String(navigation)));
    }
    return shown;
}

QWidget* PageHand::shownPage(const char* className) const {
    const auto* stack = panel_->findChild<QStackedWidget*>(QStringLiteral("stackedWidget"));
    QWidget* page = stack ? stack->currentWidget() : nullptr;
    return page && page->inherits(className) ? page : nullptr;
}

}  // namespace run
