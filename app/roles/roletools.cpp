#include "app/roles/roletools.h"

#include "app/events/eventrecorder.h"
#include "app/header/header.h"
#include "app/panelwindow.h"
#include "app/roles/rolebutton.h"
#include "app/roles/rolegate.h"
#include "app/roles/rolekeeper.h"
#include "app/roles/rolesheet.h"

namespace app {

RoleTools::RoleTools(PanelWindow* window, QWidget* page, EventRecorder* events, QObject* parent)
    : QObject(parent),
      window_(window),
      keeper_(new RoleKeeper(RoleKeeper::defaultFile(), this)),
      gate_(new RoleGate(keeper_, page, this)) {
    auto* button = new RoleButton(keeper_);
    window->header()->addBeforeStop(button);
    connect(button, &RoleButton::clicked, this, &RoleTools::show);
    connect(gate_, &RoleGate::refused, this, &RoleTools::askForCode);
    connect(keeper_, &RoleKeeper::accepted, gate_, &RoleGate::openRefused);
    connect(keeper_, &RoleKeeper::left, this, &RoleTools::left);
    logInto(events);
}

void RoleTools::logInto(EventRecorder* events) {
    const auto note = [events](const char* detail) {
        events->note(Event::Kind::Role, QLatin1String(detail));
    };
    connect(keeper_, &RoleKeeper::accepted, this, [note] { note("integrator"); });
    connect(keeper_, &RoleKeeper::left, this, [note] { note("operator"); });
    connect(keeper_, &RoleKeeper::refused, this, [note] { note("wrong_code"); });
    connect(keeper_, &RoleKeeper::removed, this, [note] { note("code_removed"); });
    connect(keeper_, &RoleKeeper::stored, this, [note](bool done) {
        if (done) {
            note("code_set");
        }
    });
}

bool RoleTools::mayAct(const QString& what) {
    if (!keeper_->isOpen()) {
        askForCode(what);
    }
    return keeper_->isOpen();
}

/// An administrator may have deleted the code's file meanwhile.
void RoleTools::show() {
    keeper_->reload();
    if (!keeper_->hasCode()) {
        setNewCode();
    } else if (!keeper_->isIntegrator()) {
        askForCode({});
    } else {
        auto* sheet = new SessionSheet(keeper_, window_->stage());
        connect(sheet, &SessionSheet::newCodeAsked, this, &RoleTools::setNewCode);
        sheet->open();
    }
}

void RoleTools::askForCode(const QString& refused) {
    auto* sheet = new CodeSheet(keeper_, refused, window_->stage());
    connect(sheet, &Sheet::dismissed, this, [this] {
        if (!keeper_->isOpen()) {
            gate_->forgetRefused();
        }
    });
    sheet->open();
}

void RoleTools::setNewCode() {
    (new NewCodeSheet(keeper_, window_->stage()))->open();
}

}  // namespace app
