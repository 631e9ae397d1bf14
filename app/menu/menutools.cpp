#include "app/menu/menutools.h"

#include "app/backup/backuptools.h"
#include "app/dock/dockarea.h"
#include "app/dock/docks.h"
#include "app/examples/examplelibrary.h"
#include "app/header/header.h"
#include "app/help/chapters.h"
#include "app/help/helpkey.h"
#include "app/help/helppage.h"
#include "app/menu/menusheet.h"
#include "app/noticebar.h"
#include "app/panelwindow.h"
#include "app/preferences.h"
#include "app/results/runhistory.h"
#include "app/setup/setupsheet.h"
#include "app/telemetry/telemetrytools.h"
#include "program/words.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QStandardPaths>
#include <QToolButton>

#include <algorithm>

namespace app {

MenuTools::MenuTools(PanelWindow* window, QWidget* page, const RunHistory* history, QObject* parent)
    : QObject(parent),
      window_(window),
      page_(page),
      history_(history),
      button_(window->header()->addButton(QStringLiteral("btnMenu"), QStringLiteral("menu"), tr("菜单"))),
      backup_(new BackupTools(window, window->stage(), this)) {
    connect(button_, &QToolButton::clicked, this, &MenuTools::toggleMenu);
    connect(backup_, &BackupTools::told, window->notices(), &NoticeBar::tell);
    connect(backup_, &BackupTools::saved, this, &MenuTools::saved);
    connect(backup_, &BackupTools::restored, this, &MenuTools::restored);
    connect(new HelpKey(this), &HelpKey::pressed, this, &MenuTools::openHandbook);
}

MenuTools::~MenuTools() = default;

/// The second press closes it.
void MenuTools::toggleMenu() {
    if (menu_) {
        menu_->dismiss();
    } else {
        openMenu();
    }
}

void MenuTools::openMenu() {
    auto* menu = new MenuSheet(ExampleLibrary::ofThisProgram(), Preferences::factor(), window_->stage());
    menu_ = menu;
    connect(menu, &Sheet::dismissed, this, [this] {
        menu_.clear();
        button_->setChecked(false);
    });
    connect(menu, &MenuSheet::exampleChosen, this, &MenuTools::exampleChosen);
    connect(menu, &MenuSheet::languageChosen, this, &MenuTools::languageChosen);
    connect(menu, &MenuSheet::dockAsked, window_->docks(), &DockArea::open);
    connect(menu, &MenuSheet::factorChosen, window_, &PanelWindow::setChosenFactor);
    connect(menu, &MenuSheet::factorChosen, this, [](double factor) { Preferences::rememberFactor(factor); });
    connect(menu, &MenuSheet::rolesAsked, this, &MenuTools::rolesAsked);
    connect(menu, &MenuSheet::telemetryAsked, this, &MenuTools::telemetryAsked);
    connect(menu, &MenuSheet::setupAsked, this, &MenuTools::openSetup);
    connect(menu, &MenuSheet::handbookAsked, this, &MenuTools::openHandbook);
    connect(menu, &MenuSheet::supportAsked, this, [this] { backup_->saveSupport(facts()); });
    connect(menu, &MenuSheet::backupAsked, backup_, &BackupTools::backUp);
    connect(menu, &MenuSheet::restoreAsked, this, [this] {
        if (backup_->refuses()) {
            return;
        }
        emit restoreAsked([tools = QPointer<BackupTools>(backup_)] {
            if (tools) {
                tools->restore();
            }
        });
    });
    menu->open();
    button_->setChecked(true);
}

void MenuTools::setRestoreGuard(const std::function<bool()>& mayRestore) {
    backup_->setRestoreGuard(mayRestore);
}

void MenuTools::openHandbook() {
    // Asked before the dock opens and takes the keyboard: the chapter is that of the focused page.
    const QString chapter = chapterOf(page_);
    window_->docks()->open(docks::help);
    this->help()->openChapter(chapter);
}

HelpPage* MenuTools::help() const {
    return static_cast<HelpPage*>(window_->docks()->content(docks::help));
}

void MenuTools::openSetup() {
    auto* sheet = new SetupSheet([this] { return hasWelded(); }, window_->stage());
    connect(sheet, &SetupSheet::wayAsked, this, &MenuTools::lead);
    connect(sheet, &SetupSheet::doneForGood, this, [] { Preferences::rememberSetupDone(); });
    sheet->open();
}

void MenuTools::offerSetup() {
    // A question that stands, as that about changes from before a crash, comes first: the menu has the list.
    if (Preferences::setupDone() || QApplication::activeModalWidget()) {
        return;
    }
    const QVector<SetupStep> steps = setupSteps(hasWelded());
    if (!std::all_of(steps.begin(), steps.end(), [](const SetupStep& step) { return step.done; })) {
        openSetup();
    }
}

void MenuTools::lead(const QString& button) const {
    if (auto* const way = page_ ? page_->findChild<QAbstractButton*>(button) : nullptr) {
        way->click();
    }
}

/// One of the last runs: the list is for the first day. Reads them again only after a new one.
bool MenuTools::hasWelded() {
    constexpr int looked = 5;
    const QString newest = history_->count() > 0 ? history_->fileName(0) : QString();
    if (welded_ || newest == lookedAt_) {
        return welded_;
    }
    lookedAt_ = newest;
    for (int row = 0; row < std::min(looked, history_->count()); ++row) {
        const std::optional<RunResult> run = history_->at(row);
        welded_ = welded_ || (run && run->weldedMm() > 0);
    }
    return welded_;
}

SupportFacts MenuTools::facts() const {
    return {QDir::currentPath(),         page_ ? page_->property("projectFile").toString() : QString(),
            Preferences::file(),         QStandardPaths::writableLocation(QStandardPaths::AppDataLocation),
            window_->notices()->texts(), TelemetryTools::shownSettings()};
}

}  // namespace app
