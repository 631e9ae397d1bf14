#include "app/panel.h"

#include "app/cell/cellstrip.h"
#include "app/examples/examplelibrary.h"
#include "app/examples/examplesbutton.h"
#include "app/navigation.h"
#include "app/noticebar.h"
#include "app/path/pathpage.h"
#include "app/path/programfollower.h"
#include "app/path/seamtrack.h"
#include "app/pendant/pendantwindow.h"
#include "app/progress/progressview.h"
#include "app/progress/runwatcher.h"
#include "app/scope/scopepage.h"
#include "app/scope/signalrecorder.h"
#include "app/status/statusline.h"
#include "app/status/statuswatcher.h"
#include "app/views/viewswindow.h"
#include "mendo/modulemanager.h"
#include "workcell/treefollower.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QFileDialog>
#include <QStackedWidget>

namespace app {

Panel::Panel() : window_(std::make_unique<PanelWindow>()) {
    cell_ = new workcell::WorkCell(window_->pages(), {}, this);
    controller()->setPower(false);
    connect(m(), &mendo::ModuleManager::fileProblem, window_->notices(), &NoticeBar::report);
    connect(window_->navigation(), &Navigation::chosen, this, &Panel::showPage);
}

/// Deletes the pages before the window that shows them.
Panel::~Panel() {
    cell_->close();
}

bool Panel::open(const QString& libraryFile, QString* error) {
    cell_->wire();
    // Before the package: a change is recorded before its consequences.
    follower_ = new workcell::TreeFollower(this);
    recorder_ = new SignalRecorder(controller(), cell_->cell(), follower_, this);
    seams_ = new SeamTrack(controller(), cell_->cell(), follower_, this);
    if (!cell_->open(libraryFile, error)) {
        return false;
    }
    page_ = window_->pages()->currentWidget();
    window_->navigation()->refresh();
    window_->navigation()->select(workcell::WorkCell::firstPage());
    auto* strip = new CellStrip(controller(), cell_->cell(), window_->stripParent());
    connect(strip, &CellStrip::speedChosen, this, &Panel::speedChosen);
    connect(strip, &CellStrip::speedChosen, window_.get(), &PanelWindow::showSpeed);
    window_->setStrip(strip);
    offerViews();
    makeStatus();
    makeExamples();
    return true;
}

void Panel::makeExamples() {
    auto* examples = new ExamplesButton(ExampleLibrary::ofThisProgram());
    connect(examples, &ExamplesButton::chosen, this, &Panel::exampleChosen);
    window_->addToHeader(examples);
    examples->connectToTree();
}

void Panel::makeStatus() {
    const workcell::PackageFlags package = packageFlags();
    window_->setStatus(new StatusLine(new StatusWatcher(package, controller(), page_, this)),
                       new ProgressView(new RunWatcher(package, this)));
}

void Panel::offerViews() {
    // The seams of another program are dropped, also while the views are closed.
    connect(new ProgramFollower(this), &ProgramFollower::replaced, seams_, &SeamTrack::clear);
    window_->offerViews();
    connect(window_.get(), &PanelWindow::viewsAsked, this,
            [this](int page) { views()->open(page, window_.get()); });
    connect(window_.get(), &PanelWindow::viewsDismissed, this, [this] { views()->close(); });
}

ViewsWindow* Panel::views() {
    if (!views_) {
        makeViews();
    }
    return views_.get();
}

PendantWindow* Panel::pendant() {
    if (!pendant_) {
        pendant_ = std::make_unique<PendantWindow>(controller());
    }
    return pendant_.get();
}

void Panel::makeViews() {
    views_ = std::make_unique<ViewsWindow>();
    auto* path = new PathPage(seams_, packageFlags());
    // Other pages have a table of that name, too.
    if (const auto* editor = page_ ? page_->findChild<QWidget*>(QStringLiteral("ProgramWidget")) : nullptr) {
        path->followEditor(editor);
    }
    views_->addPage(path, tr("路径"));
    views_->addPage(new ScopePage(recorder_), tr("信号"));
    connect(views_.get(), &ViewsWindow::opened, window_.get(), &PanelWindow::showViewsOpen);
}

void Panel::showPage(const QString& key) {
    if (cell_->showPage(key)) {
        window_->navigation()->select(key);
    }
}

bool Panel::openProject(const QString& file) {
    const QWidget* page = window_->pages()->currentWidget();
    auto* button = page ? page->findChild<QAbstractButton*>(QStringLiteral("btnOpen")) : nullptr;
    if (!button) {
        return false;
    }
    button->click();
    const QList<QFileDialog*> dialogs = page->findChildren<QFileDialog*>();
    for (QFileDialog* dialog : dialogs) {
        if (!dialog->isVisible()) {
            continue;
        }
        dialog->selectFile(file);
        return QMetaObject::invokeMethod(dialog, "accept");
    }
    return false;
}

}  // namespace app
