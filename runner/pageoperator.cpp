#include "runner/pageoperator.h"

#include "kord/kordservice.h"
#include "mendo/modulemanager.h"
#include "program/ports.h"
#include "runner/problem.h"
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
    I_PORT port;
    I_PORT lock;       ///< the port that must be on; a lock's own port
    const char* gate;  ///< a button that is enabled exactly while the page shows that the lock is on
};

constexpr DeviceRow devices[] = {
    {"laserLock", "btnLaserControl", DO_LASER_SAFETY_LOCK, DO_LASER_SAFETY_LOCK, "btnLaserTest"},
    {"laser", "btnLaserTest", DO_LASER_ENABLE, DO_LASER_SAFETY_LOCK, "btnLaserTest"},
    {"pilot", "btnRedLight", DO_RED_LIGHT, DO_LASER_SAFETY_LOCK, "btnLaserTest"},
    {"gasLock", "btnBlowControl", DO_GAS_SAFETY_LOCK, DO_GAS_SAFETY_LOCK, "btnBlowTest"},
    {"gas", "btnBlowTest", DO_GAS, DO_GAS_SAFETY_LOCK, "btnBlowTest"},
    {"wireLock", "btnWireControl", DO_WIRE_SAFETY_LOCK, DO_WIRE_SAFETY_LOCK, "btnWireTest"},
    {"wire", "btnWireTest", DO_WIRE_ENABLE, DO_WIRE_SAFETY_LOCK, "btnWireTest"},
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
    return m(prog::key::port)->c(row);
}

/// Whether a port is in use and its output on.
bool isOn(int row) {
    const QString name = portAt(row)->r(prog::field::name)->getString();
    return portAt(row)->r(prog::field::enable)->getBool() &&
           kordservice()->dataNode(prog::key::registerValues + QLatin1Char('.') + name)->getBool();
}

QAbstractButton* button(const QWidget* page, const char* name) {
    return page->findChild<QAbstractButton*>(QLatin1String(name));
}

/// The check box of a row, in any column.
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

PageOperator::PageOperator(QObject* parent) : QObject(parent) {
    again_.setSingleShot(true);
    again_.setTimerType(Qt::PreciseTimer);
    connect(&again_, &QTimer::timeout, this, &PageOperator::work);
}

void PageOperator::setPanel(QWidget* panel, StationPage* stations) {
    panel_ = panel;
    stations_ = stations;
}

QString PageOperator::portFault(int row) const {
    return noRow(row, m(prog::key::port)->cmobjCount());
}

QString PageOperator::stationFault(int row) const {
    return noRow(row, stations_->count());
}

void PageOperator::device(const QJsonObject& keys) {
    add([this, keys, waitedMs = 0]() mutable { return pressDevice(keys, &waitedMs); });
}

void PageOperator::port(int row, bool enable) {
    add([this, row, enable] {
        tickPort(row, enable);
        return true;
    });
}

void PageOperator::station(int row, const QJsonObject& fields) {
    add([this, row, fields] {
        editStation(row, fields);
        return true;
    });
}

void PageOperator::dropActions() {
    dropped_ = true;
    actions_.clear();
    again_.stop();
}

void PageOperator::add(Action action) {
    actions_.push_back(std::move(action));
    work();
}

/// Not re-entered: an action may run an event loop of its own.
void PageOperator::work() {
    if (working_) {
        return;
    }
    working_ = true;
    bool isDone = true;
    while (isDone && !actions_.empty() && !QApplication::activeModalWidget()) {
        Action action = std::move(actions_.front());
        actions_.pop_front();
        isDone = action();
        if (!isDone && !dropped_) {
            actions_.push_front(std::move(action));
        }
    }
    working_ = false;
    if (!actions_.empty()) {
        again_.start(againMs);
    }
    emit worked();
}

/// Waits until the page shows the lock as it is: only then is the device's button enabled.
bool PageOperator::pressDevice(const QJsonObject& keys, int* waitedMs) {
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

void PageOperator::fillFields(const QWidget* page, const QJsonObject& keys) const {
    for (const FieldRow& field : fieldRows) {
        const QJsonValue value = keys.value(QLatin1String(field.key));
        if (value.isDouble()) {
            page->findChild<QDoubleSpinBox*>(QLatin1String(field.box))->setValue(value.toDouble());
        }
    }
}

void PageOperator::tickPort(int row, bool enable) {
    button(panel_, "btnPort")->click();  // the page reads the assignment when it is opened
    QWidget* page = shownPage("PortConfigWidget");
    if (page) {
        QMetaObject::invokeMethod(page, "completeRows");
    }
    const auto* table = page ? page->findChild<QTableWidget*>(QStringLiteral("tableWidget")) : nullptr;
    QCheckBox* box = table ? checkBox(table, row) : nullptr;
    if (!box) {
        fail(QStringLiteral("port row %1 cannot be operated").arg(row));
        return;
    }
    if (box->isChecked() != enable) {
        box->click();
    }
    button(page, "okayBtn")->click();
}

void PageOperator::editStation(int row, const QJsonObject& fields) {
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

void PageOperator::fail(const QString& reason) {
    failed_ = true;
    printError(QStringLiteral("scenario: ") + reason);
}

/// The page, opened from the navigation if it is not shown; null, with an error, when it does not open.
QWidget* PageOperator::open(const char* navigation, const char* page) {
    if (!shownPage(page)) {
        button(panel_, navigation)->click();
    }
    QWidget* shown = shownPage(page);
    if (!shown) {
        fail(QStringLiteral("the page of %1 does not open").arg(QLatin1String(navigation)));
    }
    return shown;
}

QWidget* PageOperator::shownPage(const char* className) const {
    const auto* stack = panel_->findChild<QStackedWidget*>(QStringLiteral("stackedWidget"));
    QWidget* page = stack ? stack->currentWidget() : nullptr;
    return page && page->inherits(className) ? page : nullptr;
}

}  // namespace run
