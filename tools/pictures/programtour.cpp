#include "tools/pictures/tour.h"

#include "app/dock/dockarea.h"
#include "app/panel.h"
#include "app/panelwindow.h"
#include "mendo/modulemanager.h"
#include "program/words.h"
#include "simulator/controller.h"
#include "tools/pictures/scene.h"

#include <QAbstractButton>

#include <iterator>

namespace pictures {

namespace {

void name(Scene& s, const char* button, const QString& text) {
    press(s, button);
    s.type(QStringLiteral("lineEdit"), text);
}

void edit(Scene& s, int row) {
    s.openProject(sampleFile);
    s.selectRow(table, row);
    press(s, "btnEdit");
    s.shoot();
}

/// With a text that its field does not take.
void refuse(Scene& s, int row, const char* field, const char* text) {
    s.openProject(sampleFile);
    s.selectRow(table, row);
    press(s, "btnEdit");
    s.type(QLatin1String(field), QLatin1String(text));
    s.shoot();
}

void batch(Scene& s, const char* button) {
    s.openProject(sampleFile);
    press(s, "multiBtn");
    s.selectRow(table, MoveL);
    s.selectRow(table, MoveC);
    if (button) {
        press(s, button);
    }
    s.shoot();
    press(s, "multiBtn");
}

/// The editor beside a dock, where its page is narrow.
void editBesideDock(Scene& s) {
    s.openProject(sampleFile);
    s.selectRow(table, MoveL);
    s.panel()->window()->docks()->open(QStringLiteral("path"));
    s.settle();
}

/// A program with errors and warnings, after it was checked.
void openFaulty(Scene& s) {
    s.openProject(QStringLiteral("faulty.json"));
    s.settle();
    s.selectRow(table, MoveL);
}

void parameters(Scene& s) {
    press(s, "btnParamCfg");
}

/// Projects, before one is open.
const Stop projects[] = {
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
const Stop editorRows[] = {
    {"editor",
     [](Scene& s) {
         s.openProject(sampleFile);
         s.selectRow(table, MoveL);
         s.shoot();
     }},
    {"editor_inline",
     [](Scene& s) {
         s.openProject(sampleFile);
         s.selectRow(table, MoveL);
         s.key(table, Qt::Key_Return);
         s.type(QStringLiteral("inlineEntry"), QStringLiteral("250"));
         s.shoot();
         s.key(QStringLiteral("inlineEntry"), Qt::Key_Escape);
     }},
    {"editor_full_rows",
     [](Scene& s) {
         s.openProject(sampleFile);
         s.set(table, "fullRows", true);
         s.shoot();
         s.set(table, "fullRows", false);
     }},
    {"editor_power_on",
     [](Scene& s) {
         s.openProject(sampleFile);
         power(s);
         s.shoot();
     }},
    {"editor_narrow",
     [](Scene& s) {
         editBesideDock(s);
         s.shoot();
     }},
    {"editor_narrow_insert",
     [](Scene& s) {
         editBesideDock(s);
         auto* const tools = s.panel()->window()->findChild<QAbstractButton*>(QStringLiteral("btnTools"));
         const bool inTurn = tools && tools->isVisible();
         if (inTurn) {
             tools->click();
         }
         s.shoot();
         if (inTurn) {
             tools->click();
         }
     }},
    {"project_unsaved",
     [](Scene& s) {
         s.openProject(sampleFile);
         s.selectRow(table, MoveL);
         press(s, "anotationBtn");
         press(s, "btnNew");
         s.shoot();
         press(s, "answer2");  // Cancel
         press(s, "btnUndo");
     }},
    {"editor_saved",
     [](Scene& s) {
         s.openProject(sampleFile);
         press(s, "btnSave");
         s.shoot();
     }},
    {"editor_point_joint", [](Scene& s) { edit(s, MoveJ); }},
    {"editor_point_line", [](Scene& s) { edit(s, MoveL); }},
    {"editor_point_arc", [](Scene& s) { edit(s, MoveC); }},
    {"editor_point_circle", [](Scene& s) { edit(s, MoveCC); }},
    {"editor_point_refused", [](Scene& s) { refuse(s, MoveC, "lineEditSpeed", "250"); }},
    {"editor_weld_start", [](Scene& s) { edit(s, Open); }},
    {"editor_weld_parameters", [](Scene& s) { edit(s, Param); }},
    {"editor_output", [](Scene& s) { edit(s, SetDo); }},
    {"editor_output_register", [](Scene& s) { edit(s, SetRegister); }},
    {"editor_input", [](Scene& s) { edit(s, WaitDi); }},
    {"editor_input_register", [](Scene& s) { edit(s, WaitRegister); }},
    {"editor_delay", [](Scene& s) { edit(s, Delay); }},
    {"editor_delay_refused", [](Scene& s) { refuse(s, Delay, "lineEdit", "5.5"); }},
    {"editor_several", [](Scene& s) { batch(s, nullptr); }},
    {"editor_several_speed", [](Scene& s) { batch(s, "speedBtn"); }},
    {"editor_several_zone", [](Scene& s) { batch(s, "turningBtn"); }},
    {"editor_findings",
     [](Scene& s) {
         openFaulty(s);
         s.shoot();
     }},
    {"editor_findings_list",
     [](Scene& s) {
         openFaulty(s);
         press(s, "btnFindings");
         s.shoot();
         press(s, "btnCloseFindings");
     }},
    {"editor_jump_too_far",
     [](Scene& s) {
         s.openProject(sampleFile);
         s.type(QStringLiteral("lineEdit_steptojump"), QStringLiteral("99"));
         press(s, "btnSteptojump");
         s.shoot();
         s.type(QStringLiteral("lineEdit_steptojump"), QString());
     }},
};

/// Runs.
const Stop runs[] = {
    {"run_unpaired",
     [](Scene& s) {
         s.openProject(QStringLiteral("unpaired.json"));
         press(s, "btnStart");
         s.shoot();
     }},
    {"run_errors",
     [](Scene& s) {
         openFaulty(s);
         press(s, "btnReset");
         press(s, "btnStart");
         s.shoot();
     }},
    {"run_jump_question",
     [](Scene& s) {
         s.openProject(sampleFile);
         press(s, "btnReset");
         s.selectRow(table, MoveC);
         power(s);
         press(s, "btnStart");
         s.shoot();
     }},
    {"run_no_power",
     [](Scene& s) {
         s.openProject(sampleFile);
         press(s, "btnReset");
         press(s, "btnStart");
         s.shoot();
     }},
    {"run_robot_moving",
     [](Scene& s) {
         s.openProject(sampleFile);
         press(s, "btnReset");
         power(s);
         s.controller()->jog(sim::JogAxis::X, 0.05);
         press(s, "btnStart");
         s.shoot();
         s.controller()->jog(sim::JogAxis::X, -0.05);
     }},
    {"run_step_no_move",
     [](Scene& s) {
         s.openProject(sampleFile);
         s.selectRow(table, Open);
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
         s.openProject(sampleFile);
         s.whenLineRuns(MoveL, [&s] {
             s.shoot();
             press(s, "btnPause");
         });
         startSample(s);
     }},
    {"run_seam",
     [](Scene& s) {
         s.openProject(sampleFile);
         s.whenLineRuns(MoveC, [&s] {
             s.after(900, [&s] {
                 s.shoot();
                 press(s, "btnPause");
             });
         });
         startSample(s);
     }},
    {"run_not_idle",
     [](Scene& s) {
         s.openProject(sampleFile);
         s.whenLineRuns(MoveL, [&s] {
             press(s, "btnReset");
             s.shoot();
             press(s, "btnPause");
         });
         startSample(s);
     }},
    {"run_paused",
     [](Scene& s) {
         s.openProject(sampleFile);
         s.whenLineRuns(MoveC, [&s] { press(s, "btnPause"); });
         startSample(s);
         s.shoot();
     }},
    {"run_torch_moved",
     [](Scene& s) {
         s.openProject(sampleFile);
         s.whenLineRuns(MoveC, [&s] { press(s, "btnPause"); });
         startSample(s);
         s.settle();
         sim::PoseMove away;
         away.trans = {0.5, 0.03, 0.32};
         s.controller()->moveToPose(away);
         s.settle();
         press(s, "btnStart");
         s.shoot();
     }},
    {"run_dry",
     [](Scene& s) {
         s.openProject(sampleFile);
         m(prog::key::executeDry)->setValue(nullptr, true);
         s.shoot();
         m(prog::key::executeDry)->setValue(nullptr, false);
     }},
    {"run_motion_error",
     [](Scene& s) {
         s.openProject(sampleFile);
         s.controller()->failMotion(-42);
         startSample(s);
         s.shoot();
     }},
};

/// Parameter sets.
const Stop parameterRows[] = {
    {"parameters",
     [](Scene& s) {
         parameters(s);
         s.selectRow(sets, 0);
         s.shoot();
     }},
    {"parameters_beside",
     [](Scene& s) {
         s.panel()->window()->docks()->open(QStringLiteral("path"));
         s.settle();
         parameters(s);
         s.selectRow(sets, 0);
         s.shoot();
     }},
    {"parameters_values",
     [](Scene& s) {
         parameters(s);
         s.selectRow(sets, 0);
         press(s, "btnEdit");
         s.shoot();
     }},
    {"parameters_time",
     [](Scene& s) {
         parameters(s);
         s.selectRow(sets, 0);
         if (auto* picture = s.panel()->window()->findChild<QWidget*>(QStringLiteral("timingPicture"))) {
             QMetaObject::invokeMethod(picture, "tapped", Q_ARG(QString, QStringLiteral("stay_time")));
         }
         s.shoot();
     }},
    {"parameters_value_refused",
     [](Scene& s) {
         parameters(s);
         s.selectRow(sets, 0);
         press(s, "btnEdit");
         s.type("power", "150");
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
         s.selectRow(sets, 1);
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

}  // namespace

std::vector<Stop> projectStops() {
    return {std::begin(projects), std::end(projects)};
}

std::vector<Stop> editorStops() {
    return {std::begin(editorRows), std::end(editorRows)};
}

std::vector<Stop> runStops() {
    return {std::begin(runs), std::end(runs)};
}

std::vector<Stop> parameterStops() {
    return {std::begin(parameterRows), std::end(parameterRows)};
}

}  // namespace pictures
