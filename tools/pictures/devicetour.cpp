#include "tools/pictures/tour.h"

#include "app/dock/dockarea.h"
#include "app/panel.h"
#include "mendo/modulemanager.h"
#include "program/ports.h"
#include "program/words.h"
#include "simulator/controller.h"
#include "tools/pictures/scene.h"

#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTableWidget>

#include <algorithm>
#include <initializer_list>
#include <iterator>

namespace pictures {

namespace {

void monitor(Scene& s) {
    press(s, "btnMonitor");
    s.settle();
    s.shoot();
}

/// Takes inputs and analogue outputs out of use, or back in.
void useMonitoredPorts(bool used) {
    const QList<mendo::ModuleObject*> ports = m(prog::key::port)->cmobjs();
    for (mendo::ModuleObject* port : ports) {
        if (port->c(prog::field::type)->getString() != prog::word::portOutput) {
            port->set(nullptr, prog::field::enable, used);
        }
    }
}

void usePort(I_PORT port, bool used) {
    m(prog::key::port)->c(static_cast<int>(port))->set(nullptr, prog::field::enable, used);
}

/// Replaces what stands in a field of the device page by keys, as an operator does.
void typeInto(Scene& s, const char* field, const char* text) {
    auto* const box = s.panel()->window()->findChild<QDoubleSpinBox*>(QLatin1String(field));
    if (!box) {
        return;
    }
    box->setFocus();
    box->selectAll();
    for (const char* key = text; *key; ++key) {
        QKeyEvent down(QEvent::KeyPress, 0, Qt::NoModifier, QString(QLatin1Char(*key)));
        QApplication::sendEvent(box, &down);
    }
    QApplication::focusWidget()->clearFocus();
}

void percent(Scene& s, const char* field, double value) {
    auto* box = s.panel()->window()->findChild<QDoubleSpinBox*>(QLatin1String(field));
    if (box) {
        box->setValue(value);
    }
}

/// Presses buttons of the device page, and waits until it shows the new outputs.
void switchDevices(Scene& s, std::initializer_list<const char*> buttons) {
    for (const char* button : buttons) {
        press(s, button);
    }
    s.settle();
}

void unlockDevices(Scene& s) {
    press(s, "btnDeviceControl");
    percent(s, "dspnLaserFrequency", 50);
    percent(s, "dspnLaserRatio", 100);
    percent(s, "dspnLaserPower", 12.5);
    percent(s, "dspnWireSpeed", 30);
    switchDevices(s, {"btnLaserControl", "btnBlowControl", "btnWireControl"});
}

void lockDevices(Scene& s) {
    switchDevices(s, {"btnLaserControl", "btnBlowControl", "btnWireControl"});
}

/// The table of the page shown.
QTableWidget* shownTable(Scene& s) {
    const QList<QTableWidget*> tables = s.panel()->window()->findChildren<QTableWidget*>(table);
    const auto shown = std::find_if(tables.begin(), tables.end(),
                                    [](const QTableWidget* table) { return table->isVisible(); });
    return shown == tables.end() ? nullptr : *shown;
}

/// Chooses a signal for a port on the port page.
void assign(Scene& s, I_PORT port, const QString& signal) {
    const QTableWidget* table = shownTable(s);
    if (auto* box = table ? qobject_cast<QComboBox*>(table->cellWidget(port, 3)) : nullptr) {
        box->setCurrentText(signal);
    }
}

/// Opens the list of signals of a port with the mouse.
void choosePort(Scene& s, int row) {
    press(s, "btnPort");
    const QTableWidget* table = shownTable(s);
    auto* box = table ? qobject_cast<QComboBox*>(table->cellWidget(row, 3)) : nullptr;
    if (!box) {
        return;
    }
    QMouseEvent down(QEvent::MouseButtonPress, QPointF(box->rect().center()), Qt::LeftButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(box, &down);
    s.shoot();
    box->hidePopup();
}

void press(QWidget* widget) {
    QMouseEvent down(QEvent::MouseButtonPress, QPointF(widget->rect().center()), Qt::LeftButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &down);
}

/// Opens the page of the stations and presses its switch.
void pressListening(Scene& s) {
    press(s, "btnBind");
    if (auto* button = s.panel()->window()->findChild<QWidget*>(QStringLiteral("switchBtn"))) {
        press(button);
    }
}

/// A stop input that falls holds the queue while it is off.
void setStationInputs(Scene& s, bool value) {
    s.controller()->setInput(QStringLiteral("DI10"), true);
    for (const char* input : {"DI1", "FIXTURE_DI.#0"}) {
        s.controller()->setInput(QLatin1String(input), value);
    }
}

void editStation(Scene& s, int row) {
    press(s, "btnBind");
    s.selectRow(table, row);
    press(s, "btnEdit");
}

/// The assignment of the ports.
const Stop portRows[] = {
    {"ports",
     [](Scene& s) {
         press(s, "btnPort");
         s.shoot();
     }},
    {"ports_outputs",
     [](Scene& s) {
         press(s, "btnPort");
         if (QTableWidget* table = shownTable(s)) {
             table->scrollToBottom();
         }
         s.shoot();
     }},
    {"ports_choice", [](Scene& s) { choosePort(s, 2); }},
    {"ports_findings",
     [](Scene& s) {
         press(s, "btnPort");
         assign(s, DO_ALARM, QString());
         assign(s, AO_WIRE_SPEED, QString());
         s.settle();
         s.shoot();
     }},
    {"ports_saved",
     [](Scene& s) {
         press(s, "btnPort");
         press(s, "okayBtn");
         s.shoot();
     }},
};

/// Stations.
const Stop stationRows[] = {
    {"stations",
     [](Scene& s) {
         press(s, "btnBind");
         s.shoot();
     }},
    {"stations_listening",
     [](Scene& s) {
         power(s);
         setStationInputs(s, false);
         pressListening(s);
         setStationInputs(s, true);
         s.after(250, [&s] { setStationInputs(s, false); });
         s.after(2500, [&s] {
             s.shoot();
             press(s, "btnProject");
             press(s, "btnPause");
         });
         s.settle();
         s.settle();  // the second station's run
         pressListening(s);
     }},
    {"stations_beside",
     [](Scene& s) {
         s.panel()->window()->docks()->open(QStringLiteral("path"));
         s.settle();
         press(s, "btnBind");
         s.shoot();
     }},
    {"stations_edit_none",
     [](Scene& s) {
         press(s, "btnBind");
         press(s, "btnEdit");
         s.shoot();
     }},
    {"stations_delete_own",
     [](Scene& s) {
         press(s, "btnBind");
         s.selectRow(table, 0);
         press(s, "btnDel");
         s.shoot();
     }},
    {"station",
     [](Scene& s) {
         editStation(s, 0);
         s.shoot();
     }},
    {"station_registers",
     [](Scene& s) {
         editStation(s, 1);
         s.shoot();
     }},
    {"station_new_without_name",
     [](Scene& s) {
         press(s, "btnBind");
         press(s, "btnAdd");
         press(s, "okayBtn");
         s.shoot();
     }},
    {"station_project",
     [](Scene& s) {
         editStation(s, 4);
         press(s, "btnOpen");
         s.shoot();
     }},
};

/// Status monitor and device control panel.
const Stop devices[] = {
    {"monitor", monitor},
    {"monitor_welding",
     [](Scene& s) {
         s.openProject(sampleFile);
         s.whenLineRuns(MoveL, [&s] {
             press(s, "btnMonitor");
             s.after(300, [&s] {
                 s.shoot();
                 press(s, "btnProject");
                 press(s, "btnPause");
             });
         });
         startSample(s);
     }},
    {"monitor_faults",
     [](Scene& s) {
         s.controller()->setInput(QStringLiteral("LUMO_DI.#2"), false);
         s.controller()->setInput(QStringLiteral("LUMO_DI.#3"), false);
         monitor(s);
         s.controller()->setInput(QStringLiteral("LUMO_DI.#2"), true);
         s.controller()->setInput(QStringLiteral("LUMO_DI.#3"), true);
     }},
    {"monitor_disabled",
     [](Scene& s) {
         useMonitoredPorts(false);
         monitor(s);
         useMonitoredPorts(true);
     }},
    {"device_locked",
     [](Scene& s) {
         press(s, "btnDeviceControl");
         s.shoot();
     }},
    {"device_unlocked",
     [](Scene& s) {
         unlockDevices(s);
         s.shoot();
         lockDevices(s);
     }},
    {"device_refused",
     [](Scene& s) {
         unlockDevices(s);
         typeInto(s, "dspnLaserPower", "150");
         s.settle();
         s.shoot();
         percent(s, "dspnLaserPower", 12.5);
         lockDevices(s);
     }},
    {"device_out_of_use",
     [](Scene& s) {
         usePort(DO_WIRE_SAFETY_LOCK, false);
         press(s, "btnDeviceControl");
         s.settle();
         s.shoot();
         usePort(DO_WIRE_SAFETY_LOCK, true);
     }},
    {"device_laser_on",
     [](Scene& s) {
         unlockDevices(s);
         switchDevices(s, {"btnLaserTest", "btnBlowTest", "btnWireTest"});
         s.shoot();
         lockDevices(s);
     }},
};

}  // namespace

std::vector<Stop> portStops() {
    return {std::begin(portRows), std::end(portRows)};
}

std::vector<Stop> stationStops() {
    return {std::begin(stationRows), std::end(stationRows)};
}

std::vector<Stop> deviceStops() {
    return {std::begin(devices), std::end(devices)};
}

}  // namespace pictures
