#include "tools/pictures/tour.h"

#include "app/dock/dockarea.h"
#include "app/panel.h"
#include "app/roles/rolekeeper.h"
#include "mendo/modulemanager.h"
#include "program/words.h"
#include "simulator/controller.h"
#include "simulator/time/virtualtime.h"
#include "tools/pictures/scene.h"

#include <QFile>
#include <QVector>

#include <iterator>

namespace pictures {

namespace {

/// Opens a dock as its button or key does.
void dock(Scene& s, const char* id) {
    s.panel()->window()->docks()->open(QLatin1String(id));
    sim::VirtualTime::instance()->advance(50);
}

/// Opens the dock of the cell and takes a picture of one of its tabs.
void cell(Scene& s, const char* tab) {
    dock(s, "cell");
    press(s, tab);
    s.shoot();
}

/// Opens a sheet by a button, and takes its picture.
void sheet(Scene& s, const char* button) {
    press(s, button);
    s.shoot();
    press(s, "btnSheetClose");
}

/// Opens an entry of the menu, and takes the picture of its sheet.
void menuSheet(Scene& s, const char* entry) {
    press(s, "btnMenu");
    sheet(s, entry);
}

/// Takes the picture in the middle of the sample's weld, with docks open.
void weldBeside(Scene& s, const QVector<const char*>& docks) {
    s.openProject(sampleFile);
    for (const char* const id : docks) {
        dock(s, id);
    }
    s.whenLineRuns(MoveC, [&s] {
        s.after(900, [&s] {
            s.shoot();
            press(s, "btnPause");
        });
    });
    startSample(s);
}

/// The panel itself.
const Stop panelRows[] = {
    {"panel_start", [](Scene& s) { s.shoot(); }},
    {"panel_menu", [](Scene& s) { sheet(s, "btnMenu"); }},
    {"panel_setup", [](Scene& s) { menuSheet(s, "btnSetup"); }},
    {"panel_handbook",
     [](Scene& s) {
         press(s, "btnPort");
         press(s, "btnMenu");
         press(s, "btnHandbook");
         s.shoot();
     }},
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
         s.openProject(sampleFile);
         dock(s, "cell");
         press(s, "cellTab1");
         s.whenLineRuns(MoveL, [&s] {
             s.shoot();
             press(s, "btnPause");
         });
         startSample(s);
     }},
    {"panel_cell_fast",
     [](Scene& s) {
         dock(s, "cell");
         press(s, "speed3");
         s.panel()->window()->docks()->closeAll();
         s.shoot();
         dock(s, "cell");
         press(s, "speed0");
     }},
};

/// The sheets of the header.
const Stop sheetRows[] = {
    {"state_fault",
     [](Scene& s) {
         s.openProject(sampleFile);
         power(s);
         s.controller()->setInput(QStringLiteral("LUMO_DI.#2"), false);
         s.after(0, [&s] {
             press(s, "stateBlock");
             s.shoot();
             s.controller()->setInput(QStringLiteral("LUMO_DI.#2"), true);
         });
         s.settle();
     }},
    {"parts",
     [](Scene& s) {
         s.openProject(sampleFile);
         press(s, "partsBlock");
         s.type(QStringLiteral("edtPartTarget"), QStringLiteral("40"));
         s.shoot();
     }},
    {"telemetry",
     [](Scene& s) {
         press(s, "btnMenu");
         press(s, "btnTelemetrySettings");
         press(s, "btnTelemetry1");
         s.type(QStringLiteral("edtTelemetryHost"), QStringLiteral("broker.example.org"));
         s.type(QStringLiteral("edtTelemetryCell"), QStringLiteral("cell-3"));
         s.type(QStringLiteral("edtTelemetryUser"), QStringLiteral("cell-3"));
         s.type(QStringLiteral("edtTelemetryPassword"), QStringLiteral("secret"));
         s.shoot();
         press(s, "btnSheetClose");
     }},
    {"role_set",
     [](Scene& s) {
         press(s, "btnMenu");
         press(s, "btnRoles");
         s.shoot();
     }},
    {"role_locked",
     [](Scene& s) {
         auto* const roles = s.panel()->findChild<app::RoleKeeper*>();
         const QString code = QStringLiteral("1234");
         roles->setCode(code);
         sim::VirtualTime::instance()->advance(500);
         roles->leave();
         press(s, "btnPort");
         s.shoot();
         roles->check(code);
         sim::VirtualTime::instance()->advance(500);
         press(s, "btnRole");
         press(s, "btnCodeRemove");
     }},
};

/// The status line.
const Stop statusRows[] = {
    {"status_manual",
     [](Scene& s) {
         s.openProject(sampleFile);
         power(s);
         s.controller()->setMode(QStringLiteral("manual"));
         s.shoot();
         s.controller()->setMode(QStringLiteral("auto"));
     }},
    {"status_unready",
     [](Scene& s) {
         s.openProject(sampleFile);
         power(s);
         const auto gas = m(prog::key::port)->c(6)->c(prog::field::enable);
         gas->setValue(nullptr, false);
         s.controller()->setInput(QStringLiteral("LUMO_DI.#2"), false);
         s.shoot();
         s.controller()->setInput(QStringLiteral("LUMO_DI.#2"), true);
         gas->setValue(nullptr, true);
     }},
    {"status_failed",
     [](Scene& s) {
         s.openProject(sampleFile);
         s.whenLineRuns(MoveL, [&s] { s.controller()->failMotion(-42); });
         startSample(s);
         s.settle();
         s.shoot();
     }},
    {"status_ramp",
     [](Scene& s) {
         s.openProject(sampleFile);
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
         s.openProject(sampleFile);
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
         s.openProject(sampleFile);
         s.whenLineRuns(Open, [&s] {
             s.after(150, [&s] {
                 s.shoot();
                 press(s, "btnPause");
             });
         });
         startSample(s);
     }},
};

/// Problems of files.
const Stop notices[] = {
    {"notice",
     [](Scene& s) {
         openText(s, "damaged.json", "[\n  {\"type\": \"moveL\" \"note\": \"\"}\n]\n");
         s.shoot();
     }},
    {"notice_list",
     [](Scene& s) {
         openText(s, "damaged.json", "[\n  {\"type\": \"moveL\" \"note\": \"\"}\n]\n");
         s.accept();
         openText(s, "cut_off.json", "[\n  {\"type\": \"moveL\"},");
         s.accept();
         press(s, "btnNotices");
         s.shoot();
     }},
};

/// Docks and pages of the frame beside or over the package's page.
const Stop viewRows[] = {
    {"views_path",
     [](Scene& s) {
         s.openProject(sampleFile);
         s.selectRow(table, MoveC);
         dock(s, "path");
         s.shoot();
     }},
    {"views_path_welding", [](Scene& s) { weldBeside(s, {"path"}); }},
    {"views_path_above",
     [](Scene& s) {
         s.openProject(sampleFile);
         s.selectRow(table, MoveL);
         dock(s, "path");
         press(s, "pathSight1");
         press(s, "btnPathNext");
         s.shoot();
         press(s, "pathSight0");
     }},
    {"views_signals", [](Scene& s) { weldBeside(s, {"signals"}); }},
    {"views_two",
     [](Scene& s) {
         weldBeside(s, {"path", "jog"});
     }},
    {"views_signals_cursor",
     [](Scene& s) {
         s.openProject(sampleFile);
         startSample(s);
         dock(s, "signals");
         press(s, "btnEdgeBack");
         press(s, "btnEdgeBack");
         press(s, "btnMark");
         for (int i = 0; i < 4; ++i) {
             press(s, "btnEdgeBack");
         }
         press(s, "btnShorter");
         s.shoot();
         press(s, "btnMark");
         press(s, "btnLonger");
         press(s, "btnHold");
     }},
    {"views_results",
     [](Scene& s) {
         s.openProject(sampleFile);
         startSample(s);
         s.settle();
         dock(s, "results");
         s.shoot();
     }},
    {"views_results_earlier",
     [](Scene& s) {
         dock(s, "results");
         press(s, "btnEarlier");
         s.shoot();
         press(s, "btnResultBack");
     }},
    {"views_results_fault",
     [](Scene& s) {
         s.openProject(sampleFile);
         s.whenLineRuns(MoveC, [&s] {
             s.after(500, [&s] { s.controller()->setInput(QStringLiteral("LUMO_DI.#2"), false); });
             s.after(900, [&s] { press(s, "btnPause"); });
         });
         startSample(s);
         s.settle();
         dock(s, "results");
         s.shoot();
         s.controller()->setInput(QStringLiteral("LUMO_DI.#2"), true);
         press(s, "btnDismiss");
     }},
    {"views_log",
     [](Scene& s) {
         s.openProject(sampleFile);
         startSample(s);
         s.settle();
         dock(s, "log");
         s.shoot();
     }},
    {"views_signals_export",
     [](Scene& s) {
         dock(s, "signals");
         press(s, "btn_vcd");
         s.shoot();
     }},
    {"views_signals_overwrite",
     [](Scene& s) {
         QFile taken(QStringLiteral("signals.vcd"));
         taken.open(QIODevice::WriteOnly);
         taken.close();
         dock(s, "signals");
         press(s, "btn_vcd");
         s.key(QStringLiteral("fileNameEdit"), Qt::Key_Return);
         s.shoot();
         taken.remove();
     }},
};

/// The rail and the docks that it opens.
const Stop railRows[] = {
    {"rail_jog",
     [](Scene& s) {
         s.openProject(sampleFile);
         press(s, "btnJog");
         power(s);
         s.shoot();
     }},
    {"rail_joints",
     [](Scene& s) {
         press(s, "btnJog");
         press(s, "jogFrame2");
         s.shoot();
         press(s, "jogFrame0");
     }},
    {"rail_keys",
     [](Scene& s) {
         press(s, "btnToolKeys");
         s.shoot();
     }},
    {"rail_stopped",
     [](Scene& s) {
         s.openProject(sampleFile);
         s.whenLineRuns(MoveL, [&s] { press(s, "btnStop"); });
         startSample(s);
         s.shoot();
     }},
};

}  // namespace

std::vector<Stop> panelStops() {
    return {std::begin(panelRows), std::end(panelRows)};
}

std::vector<Stop> statusStops() {
    return {std::begin(statusRows), std::end(statusRows)};
}

std::vector<Stop> sheetStops() {
    return {std::begin(sheetRows), std::end(sheetRows)};
}

std::vector<Stop> noticeStops() {
    return {std::begin(notices), std::end(notices)};
}

std::vector<Stop> viewStops() {
    return {std::begin(viewRows), std::end(viewRows)};
}

std::vector<Stop> railStops() {
    return {std::begin(railRows), std::end(railRows)};
}

}  // namespace pictures
