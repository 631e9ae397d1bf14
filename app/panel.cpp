#include "app/panel.h"

#include "app/cell/cellpage.h"
#include "app/clocktext.h"
#include "app/dock/dockarea.h"
#include "app/dock/docks.h"
#include "app/events/eventpage.h"
#include "app/events/eventrecorder.h"
#include "app/events/eventstore.h"
#include "app/events/flightkeeper.h"
#include "app/header/header.h"
#include "app/help/helppage.h"
#include "app/link/linkwatch.h"
#include "app/menu/menutools.h"
#include "app/navigation.h"
#include "app/noticebar.h"
#include "app/parts/partsblock.h"
#include "app/parts/partssheet.h"
#include "app/parts/partwatcher.h"
#include "app/path/pathpage.h"
#include "app/path/programfollower.h"
#include "app/path/seamtrack.h"
#include "app/preferences.h"
#include "app/progress/progressview.h"
#include "app/progress/runwatcher.h"
#include "app/rail/dialogguard.h"
#include "app/rail/jogbox.h"
#include "app/rail/keybox.h"
#include "app/rail/rail.h"
#include "app/rail/stopbutton.h"
#include "app/results/resultspage.h"
#include "app/results/resulttext.h"
#include "app/results/runcollector.h"
#include "app/results/runhistory.h"
#include "app/roles/roletools.h"
#include "app/scope/scopepage.h"
#include "app/scope/signalrecorder.h"
#include "app/state/stateblock.h"
#include "app/state/statesheet.h"
#include "app/status/statusline.h"
#include "app/status/statuswatcher.h"
#include "app/stop/runstop.h"
#include "app/stop/runstopbutton.h"
#include "app/telemetry/telemetrytools.h"
#include "app/touch/taptip.h"
#include "app/touch/touchinput.h"
#include "app/ways.h"
#include "look/flick.h"
#include "mendo/modulemanager.h"
#include "program/words.h"
#include "workcell/evidence.h"
#include "workcell/runningproject.h"
#include "workcell/runwatch.h"
#include "workcell/treefollower.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QStackedWidget>
#include <QToolButton>

#include <utility>

namespace app {

Panel::Panel(const sim::Controller::Options& options, const workcell::OutsideNames& names)
    : window_(std::make_unique<PanelWindow>()) {
    flight_ = new FlightKeeper(window_->notices(), this);
    cell_ = new workcell::WorkCell(window_->pages(), options, this);
    links_ = new LinkWatch(controller(), names, this);
    controller()->setPower(false);
    connect(m(), &mendo::ModuleManager::fileProblem, window_->notices(), &NoticeBar::report);
    connect(window_->header()->navigation(), &Navigation::chosen, this, &Panel::showPage);
}

/// Deletes the pages before the window that shows them.
Panel::~Panel() {
    if (isComplete_) {
        Preferences::rememberDocks(window_->docks()->columns());
        if (const QAbstractButton* const full = fullRowsButton()) {
            Preferences::rememberFullRows(full->isChecked());
        }
        Preferences::rememberMaximised(window_->isMaximized());
    }
    cell_->close();
    if (collector_) {
        collector_->finishNow();
    }
}

void Panel::makeFrame() {
    cell_->wire();
    // Before the package: a change is recorded before its consequences.
    follower_ = new workcell::TreeFollower(this);
    recorder_ = new SignalRecorder(controller(), cell_->cell(), follower_, this);
    seams_ = new SeamTrack(controller(), cell_->cell(), follower_, this);
    makeEvidence();
    makeEvents();
    makeRail();
    makeDocks();
    window_->header()->state()->setState({PanelState::Kind::Ready, tr("正在启动"), {}, Place::Project, -1});
    window_->prepare();
}

bool Panel::open(const QString& libraryFile, QString* error) {
    if (!rail_) {
        makeFrame();
    }
    if (!cell_->open(libraryFile, error)) {
        return false;
    }
    page_ = window_->pages()->currentWidget();
    evidence_->setExecutor(packageFlags().executor);
    project_ = std::make_unique<workcell::RunningProject>(page_);
    evidence_->setProjectName([this] { return project_->name(); });
    collector_->setPage(page_);
    // The seams of another program are dropped, also while the path is not shown.
    connect(new ProgramFollower(this), &ProgramFollower::replaced, seams_, &SeamTrack::clear);
    window_->header()->navigation()->refresh();
    window_->header()->navigation()->select(workcell::WorkCell::firstPage());
    makeStatus();
    makeState();
    eventRecorder_->follow({packageFlags(), controller(), runs_, project_.get(), status_, page_, links_});
    roles_ = new RoleTools(window_.get(), page_, eventRecorder_.get(), this);
    makeTelemetry();
    makeMenu();
    makeTouch();
    followNavigation();
    guardEdits();
    return true;
}

void Panel::makeMenu() {
    menu_ = new MenuTools(window_.get(), page_, history_, this);
    menu_->setRestoreGuard([this] { return roles_->mayAct(tr("恢复备份")); });
    connect(menu_, &MenuTools::exampleChosen, this,
            [this](const QString& name) { leave([this, name] { emit exampleChosen(name); }); });
    connect(menu_, &MenuTools::languageChosen, this,
            [this](const QString& language) { leave([this, language] { emit languageChosen(language); }); });
    connect(menu_, &MenuTools::rolesAsked, roles_, &RoleTools::show);
    connect(menu_, &MenuTools::telemetryAsked, this, &Panel::openTelemetry);
    connect(menu_, &MenuTools::restoreAsked, this, &Panel::leave);
    connect(menu_, &MenuTools::saved, statusLine_, &StatusLine::say);
    connect(menu_, &MenuTools::restored, this, &Panel::restartAsked);
}

QString Panel::projectFile() const {
    return page_ ? page_->property("projectFile").toString() : QString();
}

// --- Unsaved edits --------------------------------------------------------------------------------

void Panel::keepEdits() const {
    if (bool* const recovery = packageFlags().recovery) {
        *recovery = true;
    }
}

void Panel::guardEdits() {
    if (page_->metaObject()->indexOfSignal("mayLeave()") >= 0) {
        connect(page_, SIGNAL(mayLeave()), this, SLOT(onMayLeave()));
    }
    window_->setCloseGuard([this] { return mayLeave([] { QCoreApplication::quit(); }); });
}

/// Whether nothing unsaved would be lost now. Otherwise the page asks, and `then` is done after the answer.
bool Panel::mayLeave(const std::function<void()>& then) {
    bool isFree = true;
    if (page_ && page_->metaObject()->indexOfMethod("askToLeave()") >= 0) {
        afterLeave_ = then;
        QMetaObject::invokeMethod(page_, "askToLeave", Q_RETURN_ARG(bool, isFree));
    }
    return isFree;
}

/// Does `then` now, or after the operator's answer.
void Panel::leave(const std::function<void()>& then) {
    if (mayLeave(then)) {
        then();
    }
}

void Panel::onMayLeave() {
    if (const auto then = std::exchange(afterLeave_, nullptr)) {
        then();
    }
}

void Panel::makeStatus() {
    const workcell::PackageFlags package = packageFlags();
    status_ = new StatusWatcher(package, controller(), cell_->cell(), page_, this);
    statusLine_ = new StatusLine(status_);
    auto* progress = new RunWatcher(package, this);
    partTimes_ = new QLabel;
    partTimes_->setObjectName(QStringLiteral("lblPartTimesLine"));
    window_->setStatus(statusLine_, new ProgressView(progress), partTimes_);
    makeParts(progress);
    connect(statusLine_, &StatusLine::tapped, this, [this] {
        if (status_->state().ended) {
            window_->docks()->open(docks::results);
        }
    });
    // The end of a run says nothing about another project.
    connect(new ProgramFollower(this), &ProgramFollower::replaced, status_,
            [this] { status_->setEnded(std::nullopt); });
}

void Panel::makeState() {
    window_->header()->state()->setState(panelState(status_->state()));
    connect(status_, &StatusWatcher::refreshed, window_->header()->state(),
            [this](const CellStatus& status) { window_->header()->state()->setState(panelState(status)); });
    connect(window_->header()->state(), &StateBlock::clicked, this, &Panel::explainState);
    stop_ = new RunStop(status_, controller(), this);
    connect(stop_, &RunStop::nothingToStop, statusLine_, &StatusLine::say);
    connect(window_->header()->stop(), &RunStopButton::pressed, stop_, &RunStop::stop);
    reach_.add(window_->header()->stop(), Reach::Through::DialogsAndLists);
}

void Panel::makeParts(const RunWatcher* progress) {
    auto* counter = new PartCounter(PartCounter::defaultFile(), this);
    parts_ = new PartWatcher(counter, runs_, page_, this);
    connect(status_, &StatusWatcher::refreshed, parts_, &PartWatcher::lookForProject);
    connect(parts_, &PartWatcher::changed, this, &Panel::showParts);
    connect(progress, &RunWatcher::begun, partTimes_, &QWidget::hide);
    connect(progress, &RunWatcher::ended, this, &Panel::showParts);
    connect(counter, &PartCounter::targetReached, window_->notices(),
            [this](const QString& project, int target) {
                window_->notices()->tell(
                    tr("目标已达到：%1，%2 件").arg(QFileInfo(project).completeBaseName()).arg(target));
            });
    connect(window_->header()->parts(), &PartsBlock::clicked, this,
            [this] { (new PartsSheet(parts_->counter(), parts_->project(), window_->stage()))->open(); });
    showParts();
}

void Panel::showParts() {
    const PartCount count = parts_->count();
    window_->header()->parts()->setCount(QFileInfo(parts_->project()).completeBaseName(), count);
    partTimes_->setText(tr("上一件 %1  ·  平均 %2").arg(clockText(count.lastMs), clockText(count.meanMs())));
    partTimes_->setVisible(count.made > 0 && !runs_->isRunning());
}

void Panel::explainState() {
    auto* sheet = new StateSheet(panelState(status_->state()), status_->sentences(), window_->stage());
    connect(sheet, &StateSheet::placeAsked, this, &Panel::lead);
    sheet->open();
}

void Panel::lead(Place place, int line) {
    if (place == Place::Results) {
        window_->docks()->open(docks::results);
    } else if (place == Place::Rail) {
        rail_->takeFocus();
    } else {
        showPage(workcell::WorkCell::firstPage());
        Ways(page_).lead(place, line);
    }
}

/// Before the package is loaded, for the same reason as the recorder of the signals.
void Panel::makeEvidence() {
    runs_ = new workcell::RunWatch(follower_, this);
    runs_->attach(controller());
    evidence_ = new workcell::EvidenceRecorder(controller(), cell_->cell(), follower_, runs_,
                                               workcell::EvidenceRecorder::Span::Run, this);
    collector_ = new RunCollector(cell_, &recorder_->cellSignals(), runs_, evidence_, this);
    history_ = new RunHistory(RunHistory::defaultFolder(), this);
    connect(collector_, &RunCollector::collected, this, &Panel::keepResult);
    connect(evidence_, &workcell::EvidenceRecorder::faultWhileLit, this, &Panel::tellFault);
}

void Panel::makeEvents() {
    events_ = std::make_unique<EventStore>(EventStore::defaultFile());
    connect(events_.get(), &EventStore::problem, window_->notices(), &NoticeBar::tell);
    eventRecorder_ = std::make_unique<EventRecorder>(events_.get());
    connect(evidence_, &workcell::EvidenceRecorder::faultWhileLit, eventRecorder_.get(),
            &EventRecorder::onFaultWhileLit);
}

void Panel::makeTelemetry() {
    telemetry_ = std::make_unique<TelemetryTools>(telemetry::Settings::defaultFile());
    connect(telemetry_.get(), &TelemetryTools::problem, window_->notices(), &NoticeBar::report);
    telemetry_->begin({runs_, [this] { return QFileInfo(project_->name()).completeBaseName(); },
                       [flags = packageFlags()] { return flags.mode(); }});
    telemetry_->setState(status_->state());
    telemetry_->setParts(parts_->project(), parts_->count());
    connect(status_, &StatusWatcher::refreshed, telemetry_.get(), &TelemetryTools::setState);
    connect(parts_, &PartWatcher::changed, telemetry_.get(),
            [this] { telemetry_->setParts(parts_->project(), parts_->count()); });
    connect(evidence_, &workcell::EvidenceRecorder::finished, telemetry_->reporter(),
            &telemetry::Reporter::setRecord);
    connect(evidence_, &workcell::EvidenceRecorder::faultWhileLit, telemetry_->reporter(),
            &telemetry::Reporter::setFaultWhileLit);
}

/// Closes with the integrator's session.
void Panel::openTelemetry() {
    if (!roles_->mayAct(tr("遥测（MQTT）"))) {
        return;
    }
    const Sheet* const sheet = telemetry_->open(window_->stage());
    connect(roles_, &RoleTools::left, sheet, &Sheet::dismiss);
}

void Panel::setRatedPower(std::optional<double> watts) {
    evidence_->setRatedPower(watts);
}

void Panel::keepResult(const RunResult& result) {
    history_->add(result);
    if (!status_) {
        return;
    }
    parts_->add(result);
    status_->setEnded(endedRun(result));
}

void Panel::tellFault(const QString& equipment) {
    const QString name = equipmentText(equipment);
    const int line = m(prog::key::currentLine)->getInt() + 1;
    window_->notices()->tell(runs_->isRunning() ? tr("出光时设备故障：%1，第 %2 行").arg(name).arg(line)
                                                : tr("出光时设备故障：%1").arg(name));
}

// --- Rail and docks -------------------------------------------------------------------------------

void Panel::makeRail() {
    rail_ = new Rail(controller());
    window_->setRail(rail_);
    reach_.add(rail_->stop(), Reach::Through::DialogsAndLists);
    reach_.add(rail_, Reach::Through::Dialogs);
    new DialogGuard({rail_->stop(), window_->header()->stop(), rail_, window_->header()}, this);
}

/// Docks stand from left to right in this order.
void Panel::makeDocks() {
    DockArea* const area = window_->docks();
    area->add(
        docks::path, [this] { return makePath(); }, {}, DockWidth::Wide);
    area->add(
        docks::scope, [this] { return new ScopePage(recorder_); }, tr("信号"), DockWidth::Wide);
    area->add(
        docks::results, [this] { return makeResults(); }, {}, DockWidth::Page);
    area->add(
        docks::log, [this] { return new EventPage(events_.get()); }, tr("日志"), DockWidth::Page);
    area->add(
        docks::help, [this] { return reached(new HelpPage); }, tr("手册"), DockWidth::Wide);
    area->add(
        docks::cell, [this] { return makeCell(); }, tr("单元"), DockWidth::Narrow);
    area->add(
        docks::jog, [this] { return reached(new JogBox(controller())); }, tr("点动"), DockWidth::Jog);
    area->add(
        docks::keys, [this] { return reached(new KeyBox(controller())); }, tr("末端按键"), DockWidth::Jog);
    window_->offerDock(docks::path, QStringLiteral("btnPath"), QStringLiteral("path"), tr("路径"));
    window_->offerDock(docks::scope, QStringLiteral("btnSignals"), QStringLiteral("signals"), tr("信号"));
    window_->offerDock(docks::cell, QStringLiteral("btnCell"), QStringLiteral("cell"), tr("单元"));
    if (controller()->abilities().jog) {
        window_->offer(rail_->addKey(QStringLiteral("btnJog"), QStringLiteral("jog"), tr("点动")),
                       docks::jog);
    }
    window_->offer(rail_->addKey(QStringLiteral("btnToolKeys"), QStringLiteral("keys"), tr("按键")),
                   docks::keys);
    const struct {
        Qt::Key key;
        QLatin1String dock;
    } keys[] = {{Qt::Key_F6, docks::path},
                {Qt::Key_F7, docks::scope},
                {Qt::Key_F8, docks::results},
                {Qt::Key_F10, docks::log}};
    for (const auto& row : keys) {
        window_->offerByKey(row.key, row.dock);
    }
}

/// A page of the package that is chosen is seen: results and event log no longer lie over it.
void Panel::followNavigation() {
    const QList<QAbstractButton*> navigation = Ways(page_).navigation();
    for (const QAbstractButton* const button : navigation) {
        connect(button, &QAbstractButton::clicked, window_->docks(), &DockArea::closePages);
    }
}

/// As the rail, also while a dialog blocks the window.
QWidget* Panel::reached(QWidget* content) {
    reach_.add(content, Reach::Through::Dialogs);
    return content;
}

QWidget* Panel::makeResults() {
    auto* results = new ResultsPage(history_);
    connect(results, &ResultsPage::closeAsked, this, [this] { window_->docks()->close(docks::results); });
    return results;
}

/// The dock of the number pad stands at the right of the others.
void Panel::makeTouch() {
    connect(new TouchInput(window_->docks(), this), &TouchInput::told, statusLine_, &StatusLine::say);
    new TapTip(this);
    look::letFlickIn(window_.get());
}

QWidget* Panel::makePath() {
    auto* path = new PathPage(seams_, packageFlags());
    path->followSignals(&recorder_->cellSignals());
    // Other pages have a table of that name, too.
    if (const auto* editor = page_ ? page_->findChild<QWidget*>(QStringLiteral("ProgramWidget")) : nullptr) {
        path->followEditor(editor);
    }
    return path;
}

QWidget* Panel::makeCell() {
    auto* page = new CellPage(controller(), cell_->cell(), links_);
    connect(page, &CellPage::speedChosen, this, &Panel::speedChosen);
    auto* const button = window_->findChild<QToolButton*>(QStringLiteral("btnCell"));
    connect(page, &CellPage::speedChosen, button, [button](double factor) {
        button->setText(factor == 1 ? tr("单元") : QStringLiteral("%1 %2x").arg(tr("单元")).arg(factor));
    });
    return page;
}

void Panel::record() {
    flight_->begin(flightMb_, packageFlags().runMode, project_.get());
}

void Panel::complete() {
    isComplete_ = true;
    record();
    window_->docks()->content(docks::keys);
    for (const QString& dock : Preferences::docks()) {
        window_->docks()->open(dock);
    }
    if (Preferences::fullRows()) {
        fullRowsButton()->setChecked(true);
    }
}

/// Of the package's list; null before the page is there.
QAbstractButton* Panel::fullRowsButton() const {
    return page_ ? page_->findChild<QAbstractButton*>(QStringLiteral("btnFullRows")) : nullptr;
}

void Panel::showPage(const QString& key) {
    if (cell_->showPage(key)) {
        window_->header()->navigation()->select(key);
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
