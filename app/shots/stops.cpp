#include "app/shots/stops.h"

#include "app/panel.h"
#include "app/pendant/pendantwindow.h"
#include "app/shots/scene.h"
#include "app/views/viewswindow.h"
#include "mendo/modulemanager.h"
#include "simulator/controller.h"

#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QMouseEvent>
#include <QTableWidget>

#include <algorithm>
#include <initializer_list>
#include <iterator>

namespace app {

namespace {

// Rows of the sample project.
enum Row {
    MoveJ = 0,
    Open = 2,
    MoveL = 3,
    Param = 4,
    MoveC = 5,
    Close = 7,
    MoveCC = 9,
    SetDo = 10,
    WaitDi = 11,
    SetRegister = 12,
    WaitRegister = 13,
    Delay = 14
};

const QString kTable = QStringLiteral("tableWidget");
const QString kSets = QStringLiteral("tblWgtGroup");
const QString kSample = QStringLiteral("seam.json");

// --- Steps that several stops share ----------------------------------------------------------------

void press(Scene& s, const char* button) {
    s.click(QLatin1String(button));
}

void name(Scene& s, const char* button, const QString& text) {
    press(s, button);
    s.type(QStringLiteral("lineEdit"), text);
}

void edit(Scene& s, int row) {
    s.openProject(kSample);
    s.selectRow(kTable, row);
    press(s, "btnEdit");
    s.shoot();
}

void power(Scene& s) {
    s.controller()->setPower(true);
}

/// From the first line, whatever was run before.
void startSample(Scene& s) {
    press(s, "btnReset");
    power(s);
    press(s, "btnStart");
    s.settle();
}

void batch(Scene& s, const char* button) {
    s.openProject(kSample);
    press(s, "multiBtn");
    s.selectRow(kTable, MoveL);
    s.selectRow(kTable, MoveC);
    if (button)
        press(s, button);
    s.shoot();
    press(s, "multiBtn");
}

void parameters(Scene& s) {
    press(s, "btnParamCfg");
}

/// Opens a project with this text.
void openText(Scene& s, const char* fileName, const char* text) {
    QFile file{QString::fromLatin1(fileName)};
    if (file.open(QIODevice::WriteOnly))
        file.write(text);
    file.close();
    s.openProject(file.fileName());
}

/// Presses a tab of the strip, unfolded if need be.
void cell(Scene& s, const char* tab) {
    s.panel()->window()->unfoldStrip(true);
    press(s, tab);
    s.shoot();
}

void monitor(Scene& s) {
    press(s, "btnMonitor");
    s.settle();
    s.shoot();
}

/// Takes inputs and analogue outputs out of use, or back in.
void useMonitoredPorts(bool used) {
    const QList<mendo::ModuleObject*> ports = m(QStringLiteral("lumo.port"))->cmobjs();
    for (mendo::ModuleObject* port : ports) {
        if (port->c(QStringLiteral("type"))->getString() != QLatin1String("DO"))
            port->set(nullptr, QStringLiteral("enable"), used);
    }
}

void percent(Scene& s, const char* field, double value) {
    auto* box = s.panel()->window()->findChild<QDoubleSpinBox*>(QLatin1String(field));
    if (box)
        box->setValue(value);
}

/// Presses buttons of the device page, which follows the outputs a little later.
void switchDevices(Scene& s, std::initializer_list<const char*> buttons) {
    for (const char* button : buttons)
        press(s, button);
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
    const QList<QTableWidget*> tables = s.panel()->window()->findChildren<QTableWidget*>(kTable);
    const auto shown = std::find_if(tables.begin(), tables.end(),
                                    [](const QTableWidget* table) { return table->isVisible(); });
    return shown == tables.end() ? nullptr : *shown;
}

/// Opens the choices of a port as a finger does.
void choosePort(Scene& s, int row) {
    press(s, "btnPort");
    const QTableWidget* table = shownTable(s);
    auto* box = table ? qobject_cast<QComboBox*>(table->cellWidget(row, 3)) : nullptr;
    if (!box)
        return;
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

void setStationInputs(Scene& s, bool value) {
    for (const char* input : {"DI1", "FIXTURE_DI.#0"})
        s.controller()->setInput(QLatin1String(input), value);
}

void editStation(Scene& s, int row) {
    press(s, "btnBind");
    s.selectRow(kTable, row);
    press(s, "btnEdit");
}

/// The panel itself.
const Stop kPanel[] = {
    {"panel_start", [](Scene& s) { s.shoot(); }},
    {"panel_cell_inputs", [](Scene& s) { cell(s, "cellTab0"); }},
    {"panel_cell_outputs", [](Scene& s) { cell(s, "cellTab1"); }},
    {"panel_cell_faults",
     [](Scene& s) {
         cell(s, "cellTab2");
         press(s, "fault_chiller");
         press(s, "fault_late");
         s.shoot();
         press(s, "btnClearFaults");
     }},
    {"panel_cell_fault_input",
     [](Scene& s) {
         cell(s, "cellTab2");
         press(s, "fault_gas");
         cell(s, "cellTab0");
         press(s, "cellTab2");
         press(s, "btnClearFaults");
     }},
    {"panel_cell_welding",
     [](Scene& s) {
         s.openProject(kSample);
         s.panel()->window()->unfoldStrip(true);
         press(s, "cellTab1");
         s.whenLineRuns(MoveL, [&s] {
             s.shoot();
             press(s, "btnPause");
         });
         startSample(s);
     }},
    {"panel_cell_folded",
     [](Scene& s) {
         s.panel()->window()->unfoldStrip(true);
         press(s, "speed3");
         s.panel()->window()->unfoldStrip(false);
         s.shoot();
         s.panel()->window()->unfoldStrip(true);
         press(s, "speed0");
     }},
};

/// Opens the window of the views at a tab, as a hand does.
void view(Scene& s, int tab) {
    press(s, "btnViews");
    s.tab(tab);
    // A screen of pictures is smaller than the panel: the window stands as it would on the panel's.
    const QRect panel = s.panel()->window()->geometry();
    constexpr int kTitle = 26;
    ViewsWindow* views = s.panel()->views();
    views->setGeometry(placeBeside(panel, panel, ViewsWindow::kWidth,
                                   {0, PanelWindow::kHeaderHeight + kTitle, 0, PanelWindow::kStatusHeight}));
}

/// Takes the picture in the middle of the sample's weld, with the window of the views at a tab.
void weldInView(Scene& s, int tab) {
    s.openProject(kSample);
    view(s, tab);
    s.whenLineRuns(MoveC, [&s] {
        s.after(900, [&s] {
            s.shoot();
            press(s, "btnPause");
        });
    });
    startSample(s);
}

/// The window of the views.
const Stop kViews[] = {
    {"views_path",
     [](Scene& s) {
         s.openProject(kSample);
         s.selectRow(kTable, MoveC);
         view(s, 0);
         s.shoot();
     }},
    {"views_path_welding", [](Scene& s) { weldInView(s, 0); }},
    {"views_signals", [](Scene& s) { weldInView(s, 1); }},
    {"views_signals_cursor",
     [](Scene& s) {
         s.openProject(kSample);
         startSample(s);
         view(s, 1);
         press(s, "btnEdgeBack");
         press(s, "btnEdgeBack");
         press(s, "btnMark");
         for (int i = 0; i < 4; ++i)
             press(s, "btnEdgeBack");
         press(s, "btnShorter");
         s.shoot();
         press(s, "btnMark");
         press(s, "btnLonger");
         press(s, "btnHold");
     }},
    {"views_signals_export",
     [](Scene& s) {
         view(s, 1);
         press(s, "btn_vcd");
         s.shoot();
     }},
};

/// Shows the pendant over the panel, as on a screen that is no larger, with one of its tabs.
void pendant(Scene& s, bool unfolded, const char* tab) {
    constexpr int kLastLine = 48;
    PendantWindow* window = s.panel()->pendant();
    window->setUnfolded(unfolded);
    window->show();
    const QRect panel = s.panel()->window()->geometry();
    const int left = unfolded ? panel.width() - window->width() : 0;
    const int bottom = panel.height() - (unfolded ? 0 : kLastLine);
    window->move(panel.topLeft() + QPoint(left, bottom - window->height()));
    if (unfolded)
        press(s, tab);
}

/// The pendant.
const Stop kPendant[] = {
    {"pendant_jog",
     [](Scene& s) {
         pendant(s, true, "pendantTab0");
         power(s);
         s.shoot();
     }},
    {"pendant_joints",
     [](Scene& s) {
         pendant(s, true, "pendantTab0");
         press(s, "jogFrame2");
         s.shoot();
         press(s, "jogFrame0");
     }},
    {"pendant_keys",
     [](Scene& s) {
         pendant(s, true, "pendantTab1");
         s.shoot();
         press(s, "pendantTab0");
     }},
    {"pendant_folded",
     [](Scene& s) {
         s.openProject(kSample);
         pendant(s, false, nullptr);
         s.shoot();
     }},
    {"pendant_stopped",
     [](Scene& s) {
         s.openProject(kSample);
         pendant(s, true, "pendantTab0");
         s.whenLineRuns(MoveL, [&s] { press(s, "btnStop"); });
         startSample(s);
         s.shoot();
     }},
};

/// Projects, before one is open.
const Stop kProjects[] = {
    {"project_save_none",
     [](Scene& s) {
         press(s, "btnSave");
         s.shoot();
     }},
    {"project_new",
     [](Scene& s) {
         press(s, "btnNew");
         s.shoot();
     }},
    {"project_new_without_name",
     [](Scene& s) {
         press(s, "btnNew");
         s.accept();
         s.shoot();
     }},
    {"project_new_long_name",
     [](Scene& s) {
         name(s, "btnNew", QStringLiteral("a_name_of_20_letters"));
         s.accept();
         s.shoot();
     }},
    {"project_new_taken_name",
     [](Scene& s) {
         name(s, "btnNew", QStringLiteral("seam"));
         s.accept();
         s.shoot();
     }},
    {"project_open",
     [](Scene& s) {
         press(s, "btnOpen");
         s.shoot();
     }},
    {"project_save_as",
     [](Scene& s) {
         name(s, "btnSaveAs", QStringLiteral("seam_2"));
         s.shoot();
     }},
    {"project_save_as_without_name",
     [](Scene& s) {
         press(s, "btnSaveAs");
         s.accept();
         s.shoot();
     }},
};

/// The editor.
const Stop kEditor[] = {
    {"editor",
     [](Scene& s) {
         s.openProject(kSample);
         s.selectRow(kTable, MoveL);
         s.shoot();
     }},
    {"editor_power_on",
     [](Scene& s) {
         s.openProject(kSample);
         power(s);
         s.shoot();
     }},
    {"editor_saved",
     [](Scene& s) {
         s.openProject(kSample);
         press(s, "btnSave");
         s.shoot();
     }},
    {"editor_point_joint", [](Scene& s) { edit(s, MoveJ); }},
    {"editor_point_line", [](Scene& s) { edit(s, MoveL); }},
    {"editor_point_arc", [](Scene& s) { edit(s, MoveC); }},
    {"editor_point_circle", [](Scene& s) { edit(s, MoveCC); }},
    {"editor_weld_start", [](Scene& s) { edit(s, Open); }},
    {"editor_weld_parameters", [](Scene& s) { edit(s, Param); }},
    {"editor_output", [](Scene& s) { edit(s, SetDo); }},
    {"editor_output_register", [](Scene& s) { edit(s, SetRegister); }},
    {"editor_input", [](Scene& s) { edit(s, WaitDi); }},
    {"editor_input_register", [](Scene& s) { edit(s, WaitRegister); }},
    {"editor_delay", [](Scene& s) { edit(s, Delay); }},
    {"editor_several", [](Scene& s) { batch(s, nullptr); }},
    {"editor_several_speed", [](Scene& s) { batch(s, "speedBtn"); }},
    {"editor_several_zone", [](Scene& s) { batch(s, "turningBtn"); }},
    {"editor_jump_too_far",
     [](Scene& s) {
         s.openProject(kSample);
         s.type(QStringLiteral("lineEdit_steptojump"), QStringLiteral("99"));
         press(s, "btnSteptojump");
         s.shoot();
         s.type(QStringLiteral("lineEdit_steptojump"), QString());
     }},
};

/// Runs.
const Stop kRuns[] = {
    {"run_unpaired",
     [](Scene& s) {
         s.openProject(QStringLiteral("unpaired.json"));
         press(s, "btnStart");
         s.shoot();
     }},
    {"run_jump_question",
     [](Scene& s) {
         s.openProject(kSample);
         press(s, "btnReset");
         s.selectRow(kTable, MoveC);
         power(s);
         press(s, "btnStart");
         s.shoot();
     }},
    {"run_no_power",
     [](Scene& s) {
         s.openProject(kSample);
         press(s, "btnReset");
         press(s, "btnStart");
         s.shoot();
     }},
    {"run_robot_moving",
     [](Scene& s) {
         s.openProject(kSample);
         press(s, "btnReset");
         power(s);
         s.controller()->jog(sim::JogAxis::X, 0.05);
         press(s, "btnStart");
         s.shoot();
         s.controller()->jog(sim::JogAxis::X, -0.05);
     }},
    {"run_step_no_move",
     [](Scene& s) {
         s.openProject(kSample);
         s.selectRow(kTable, Open);
         power(s);
         press(s, "btnRunOnce");
         s.shoot();
     }},
    {"run_step_no_line",
     [](Scene& s) {
         openText(s, "empty.json", "[]");
         power(s);
         press(s, "btnRunOnce");
         s.shoot();
     }},
    {"run_no_circle",
     [](Scene& s) {
         s.openProject(QStringLiteral("circle.json"));
         press(s, "btnReset");
         power(s);
         press(s, "btnStart");
         s.shoot();
     }},
    {"run_welding",
     [](Scene& s) {
         s.openProject(kSample);
         s.whenLineRuns(MoveL, [&s] {
             s.shoot();
             press(s, "btnPause");
         });
         startSample(s);
     }},
    {"run_not_idle",
     [](Scene& s) {
         s.openProject(kSample);
         s.whenLineRuns(MoveL, [&s] {
             press(s, "btnReset");
             s.shoot();
             press(s, "btnPause");
         });
         startSample(s);
     }},
    {"run_paused",
     [](Scene& s) {
         s.openProject(kSample);
         s.whenLineRuns(MoveC, [&s] { press(s, "btnPause"); });
         startSample(s);
         s.shoot();
     }},
    {"run_motion_error",
     [](Scene& s) {
         s.openProject(kSample);
         s.controller()->failMotion(-42);
         startSample(s);
         s.shoot();
     }},
};

/// The status line.
const Stop kStatus[] = {
    {"status_manual",
     [](Scene& s) {
         s.openProject(kSample);
         power(s);
         s.controller()->setMode(QStringLiteral("manual"));
         s.shoot();
         s.controller()->setMode(QStringLiteral("auto"));
     }},
    {"status_ramp",
     [](Scene& s) {
         s.openProject(kSample);
         s.whenLineRuns(Close, [&s] {
             s.after(120, [&s] {
                 s.shoot();
                 press(s, "btnPause");
             });
         });
         startSample(s);
     }},
    {"status_input",
     [](Scene& s) {
         s.openProject(kSample);
         s.controller()->setInput(QStringLiteral("DI3"), false);
         s.whenLineRuns(WaitDi, [&s] {
             s.after(12300, [&s] {
                 s.shoot();
                 s.controller()->setInput(QStringLiteral("DI3"), true);
             });
         });
         startSample(s);
     }},
    {"status_notice",
     [](Scene& s) {
         openText(s, "damaged.json", "[\n  {\"type\": \"moveL\" \"note\": \"\"}\n]\n");
         s.openProject(kSample);
         s.whenLineRuns(Open, [&s] {
             s.after(150, [&s] {
                 s.shoot();
                 press(s, "btnPause");
             });
         });
         startSample(s);
     }},
};

/// Parameter sets.
const Stop kParameters[] = {
    {"parameters",
     [](Scene& s) {
         parameters(s);
         s.shoot();
     }},
    {"parameters_values",
     [](Scene& s) {
         parameters(s);
         s.selectRow(kSets, 0);
         press(s, "btnEdit");
         s.shoot();
     }},
    {"parameters_add",
     [](Scene& s) {
         parameters(s);
         press(s, "btnAdd");
         s.shoot();
     }},
    {"parameters_add_without_name",
     [](Scene& s) {
         parameters(s);
         press(s, "btnAdd");
         s.accept();
         s.shoot();
     }},
    {"parameters_add_taken_name",
     [](Scene& s) {
         parameters(s);
         name(s, "btnAdd", QStringLiteral("steel 2 mm"));
         s.accept();
         s.shoot();
     }},
    {"parameters_delete",
     [](Scene& s) {
         parameters(s);
         s.selectRow(kSets, 1);
         press(s, "btnDel");
         s.shoot();
     }},
    {"parameters_edit_none",
     [](Scene& s) {
         parameters(s);
         press(s, "btnEdit");
         s.shoot();
     }},
};

/// The assignment of the ports.
const Stop kPorts[] = {
    {"ports",
     [](Scene& s) {
         press(s, "btnPort");
         s.shoot();
     }},
    {"ports_outputs",
     [](Scene& s) {
         press(s, "btnPort");
         if (QTableWidget* table = shownTable(s))
             table->scrollToBottom();
         s.shoot();
     }},
    {"ports_choice", [](Scene& s) { choosePort(s, 2); }},
    {"ports_saved",
     [](Scene& s) {
         press(s, "btnPort");
         press(s, "okayBtn");
         s.shoot();
     }},
};

/// Stations.
const Stop kStations[] = {
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
    {"stations_edit_none",
     [](Scene& s) {
         press(s, "btnBind");
         press(s, "btnEdit");
         s.shoot();
     }},
    {"stations_delete_own",
     [](Scene& s) {
         press(s, "btnBind");
         s.selectRow(kTable, 0);
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
const Stop kDevices[] = {
    {"monitor", monitor},
    {"monitor_welding",
     [](Scene& s) {
         s.openProject(kSample);
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
    {"device_laser_on",
     [](Scene& s) {
         unlockDevices(s);
         switchDevices(s, {"btnLaserTest", "btnBlowTest", "btnWireTest"});
         s.shoot();
         lockDevices(s);
     }},
};

/// What the file service reports.
const Stop kNotices[] = {
    {"notice",
     [](Scene& s) {
         openText(s, "damaged.json", "[\n  {\"type\": \"moveL\" \"note\": \"\"}\n]\n");
         s.shoot();
     }},
    {"notice_list",
     [](Scene& s) {
         openText(s, "damaged.json", "[\n  {\"type\": \"moveL\" \"note\": \"\"}\n]\n");
         openText(s, "cut_off.json", "[\n  {\"type\": \"moveL\"},");
         press(s, "btnNotices");
         s.shoot();
     }},
};

template <size_t Count>
void append(std::vector<Stop>* all, const Stop (&part)[Count]) {
    all->insert(all->end(), std::begin(part), std::end(part));
}

std::vector<Stop> collect() {
    std::vector<Stop> all;
    append(&all, kPanel);
    append(&all, kProjects);
    append(&all, kEditor);
    append(&all, kRuns);
    append(&all, kStatus);
    append(&all, kParameters);
    append(&all, kPorts);
    append(&all, kStations);
    append(&all, kDevices);
    append(&all, kNotices);
    append(&all, kViews);
    append(&all, kPendant);
    return all;
}

}  // namespace

const std::vector<Stop>& stops() {
    static const std::vector<Stop> all = collect();
    return all;
}

}  // namespace app
