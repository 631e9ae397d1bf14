#include "tools/pictures/tour.h"

#include "app/help/helpwindow.h"
#include "app/menu/menutools.h"
#include "app/panel.h"
#include "app/pendant/pendantwindow.h"
#include "app/roles/rolekeeper.h"
#include "app/views/viewswindow.h"
#include "mendo/modulemanager.h"
#include "program/words.h"
#include "simulator/controller.h"
#include "simulator/time/virtualtime.h"
#include "tools/pictures/scene.h"

#include <iterator>

namespace pictures {

namespace {

/// Unfolds the strip of the cell and takes a picture of one of its tabs.
void cell(Scene& s, const char* tab) {
    s.panel()->window()->unfoldStrip(true);
    press(s, tab);
    s.shoot();
}

/// Opens a sheet by a button, and takes its picture.
void sheet(Scene& s, const char* button) {
    press(s, button);
    s.shoot();
    press(s, "btnSheetClose");
}

/// Where a window beside the panel is. The offscreen screen is smaller than the panel: as on one of its size.
QRect besidePanel(Scene& s) {
    const QRect panel = s.panel()->window()->geometry();
    constexpr int titleKey = 26;
    return app::placeBeside(
        panel, panel, app::ViewsWindow::fullWidth,
        {0, app::PanelWindow::headerHeight + titleKey, 0, app::PanelWindow::statusHeight});
}

/// Opens the window of the views at a tab.
void view(Scene& s, int tab) {
    press(s, "btnViews");
    s.tab(tab);
    s.panel()->views()->setGeometry(besidePanel(s));
}

/// Takes the picture in the middle of the sample's weld, with a tab of the views shown.
void weldInView(Scene& s, int tab) {
    s.openProject(sampleFile);
    view(s, tab);
    s.whenLineRuns(MoveC, [&s] {
        s.after(900, [&s] {
            s.shoot();
            press(s, "btnPause");
        });
    });
    startSample(s);
}

/// Shows the pendant over the panel, as on a screen of the panel's size, with one of its tabs.
void pendant(Scene& s, bool unfolded, const char* tab) {
    constexpr int lastLine = 48;
    app::PendantWindow* window = s.panel()->pendant();
    window->setUnfolded(unfolded);
    window->show();
    const QRect panel = s.panel()->window()->geometry();
    const int left = unfolded ? panel.width() - window->width() : 0;
    const int bottom = panel.height() - (unfolded ? 0 : lastLine);
    window->move(panel.topLeft() + QPoint(left, bottom - window->height()));
    if (unfolded) {
        press(s, tab);
    }
}

/// The panel itself.
const Stop panelRows[] = {
    {"panel_start", [](Scene& s) { s.shoot(); }},
    {"panel_menu", [](Scene& s) { sheet(s, "btnMenu"); }},
    {"panel_setup",
     [](Scene& s) {
         press(s, "btnMenu");
         sheet(s, "btnSetup");
     }},
    {"panel_handbook",
     [](Scene& s) {
         press(s, "btnPort");
         press(s, "btnMenu");
         press(s, "btnHandbook");
         app::HelpWindow* const help = s.panel()->menu()->help();
         help->setGeometry(besidePanel(s));
         s.shoot();
         help->close();
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
    {"role_set",
     [](Scene& s) {
         press(s, "btnRole");
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
         openText(s, "cut_off.json", "[\n  {\"type\": \"moveL\"},");
         press(s, "btnNotices");
         s.shoot();
     }},
};

/// The window of the views.
const Stop viewRows[] = {
    {"views_path",
     [](Scene& s) {
         s.openProject(sampleFile);
         s.selectRow(table, MoveC);
         view(s, 0);
         s.shoot();
     }},
    {"views_path_welding", [](Scene& s) { weldInView(s, 0); }},
    {"views_signals", [](Scene& s) { weldInView(s, 1); }},
    {"views_signals_cursor",
     [](Scene& s) {
         s.openProject(sampleFile);
         startSample(s);
         view(s, 1);
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
         view(s, 2);
         s.shoot();
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
         view(s, 2);
         s.shoot();
         s.controller()->setInput(QStringLiteral("LUMO_DI.#2"), true);
         press(s, "btnDismiss");
     }},
    {"views_log",
     [](Scene& s) {
         s.openProject(sampleFile);
         startSample(s);
         s.settle();
         view(s, 3);
         s.shoot();
     }},
    {"views_signals_export",
     [](Scene& s) {
         view(s, 1);
         press(s, "btn_vcd");
         s.shoot();
     }},
};

/// The pendant.
const Stop pendantRows[] = {
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
         s.openProject(sampleFile);
         pendant(s, false, nullptr);
         s.shoot();
     }},
    {"pendant_stopped",
     [](Scene& s) {
         s.openProject(sampleFile);
         pendant(s, true, "pendantTab0");
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

std::vector<Stop> pendantStops() {
    return {std::begin(pendantRows), std::end(pendantRows)};
}

}  // namespace pictures
