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
#include "gantu/panel.h"
#include "kord/kordservice.h"
#include "mendo/modulemanager.h"
#include "simulator/cell.h"
#include "simulator/controller.h"
#include "workcell/treefollower.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QFileDialog>
#include <QStackedWidget>

namespace app {

Panel::Panel()
    : controller_(new sim::Controller(kordservice(), {}, this)), window_(std::make_unique<PanelWindow>()) {
    controller_->setPower(false);
    setInstantiatedCenterWidget(window_->pages());
    connect(m(), &mendo::ModuleManager::fileProblem, this, &Panel::onFileProblem);
    connect(window_->navigation(), &Navigation::chosen, this, &Panel::showPage);
}

Panel::~Panel() = default;

bool Panel::open(const QString& libraryFile, QString* error) {
    cell_ = new sim::Cell(controller_, sim::readWiring(QStringLiteral("lumo_port.json")), this);
    // Before the package: what changes is recorded before what it causes.
    follower_ = new workcell::TreeFollower(this);
    recorder_ = new SignalRecorder(controller_, cell_, follower_, this);
    seams_ = new SeamTrack(controller_, cell_, follower_, this);
    if (!package_.load(libraryFile, QStringLiteral("lumo"), error)) {
        return false;
    }
    Navigation* navigation = window_->navigation();
    navigation->refresh();
    libraryFile_ = libraryFile;
    page_ = showPage(navigation->firstKey());
    if (!page_) {
        *error = QStringLiteral("the package has no page");
        return false;
    }
    auto* strip = new CellStrip(controller_, cell_, window_->stripParent());
    connect(strip, &CellStrip::speedChosen, this, &Panel::speedChosen);
    connect(strip, &CellStrip::speedChosen, window_.get(), &PanelWindow::showSpeed);
    window_->setStrip(strip);
    offerViews();
    makeStatus(libraryFile);
    makeExamples();
    return true;
}

void Panel::makeExamples() {
    auto* examples = new ExamplesButton(ExampleLibrary::ofThisProgram());
    connect(examples, &ExamplesButton::chosen, this, &Panel::exampleChosen);
    window_->addToHeader(examples);
    examples->connectToTree();
}

void Panel::makeStatus(const QString& libraryFile) {
    const PackageFlags package = PackageFlags::find(libraryFile);
    window_->setStatus(new StatusLine(new StatusWatcher(package, controller_, page_, this)),
                       new ProgressView(new RunWatcher(package, this)));
}

void Panel::offerViews() {
    // Seams of another program say nothing about this one, whether they are looked at or not.
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
        pendant_ = std::make_unique<PendantWindow>(controller_);
    }
    return pendant_.get();
}

void Panel::makeViews() {
    views_ = std::make_unique<ViewsWindow>();
    auto* path = new PathPage(seams_, PackageFlags::find(libraryFile_));
    // Other pages have a table of that name too.
    if (const auto* editor = page_ ? page_->findChild<QWidget*>(QStringLiteral("ProgramWidget")) : nullptr) {
        path->followTable(editor->findChild<QAbstractItemView*>(QStringLiteral("tableWidget")));
    }
    views_->addPage(path, tr("路径"));
    views_->addPage(new ScopePage(recorder_), tr("信号"));
    connect(views_.get(), &ViewsWindow::opened, window_.get(), &PanelWindow::showViewsOpen);
}

QWidget* Panel::showPage(const QString& key) {
    QWidget* page = package_.page(key);
    if (!page) {
        return nullptr;
    }
    QStackedWidget* pages = window_->pages();
    if (pages->indexOf(page) < 0) {
        pages->addWidget(page);
    }
    pages->setCurrentWidget(page);
    window_->navigation()->select(key);
    return page;
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

void Panel::onFileProblem(const QString& fileName, int line, int column, const QString& reason) {
    window_->notices()->report(fileName, line, column, reason);
}

}  // namespace app
