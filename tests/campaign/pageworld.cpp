#include "campaign/pageworld.h"

#include "binding/signalsbindwidget.h"
#include "binding/stationtable.h"
#include "binding/switchbutton.h"
#include "editor/programtable.h"
#include "editor/programwidget.h"
#include "editor/statementtext.h"
#include "module/globals.h"
#include "module/host.h"
#include "module/keys.h"
#include "panel/lumowidget.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QLabel>
#include <QMouseEvent>

#include <algorithm>

namespace campaign {

namespace {

/// Saves wait for the disk, which a folder in memory spares.
QString folderTemplate() {
    const QString memory = QStringLiteral("/dev/shm");
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + QStringLiteral("/campaign-XXXXXX");
}

void write(const QString& name, const QJsonArray& content) {
    QFile file(name);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(QJsonDocument(content).toJson(QJsonDocument::Compact));
    }
}

void send(QWidget* widget, QEvent::Type type, const QPoint& at, Qt::MouseButtons buttons) {
    QMouseEvent event(type, at, widget->mapTo(widget->window(), at), widget->mapToGlobal(at), Qt::LeftButton,
                      buttons, Qt::NoModifier, Qt::MouseEventNotSynthesized);
    QApplication::sendEvent(widget, &event);
}

/// Whether a window is another one, or was opened from it.
bool isBelow(const QWidget* window, const QWidget* other) {
    while (window && window != other) {
        window = window->parentWidget();
    }
    return window != nullptr;
}

/// Of the rows that show the marker, how many there are.
int markersOf(const QTableWidget* table) {
    int count = 0;
    for (int row = 0; row < table->rowCount(); ++row) {
        count += table->item(row, ProgramTable::MarkerColumn)->text() == QLatin1String("-->") ? 1 : 0;
    }
    return count;
}

}  // namespace

PageWorld::PageWorld() : folder_(folderTemplate()), center_(std::make_unique<QStackedWidget>()) {
    QDir::setCurrent(folder_.path());
    center_->addWidget(new QWidget);
    setInstantiatedCenterWidget(center_.get());
    center_->resize(1024, 768);
    center_->show();
}

PageWorld::~PageWorld() {
    end();
    setInstantiatedCenterWidget(nullptr);
}

void PageWorld::prepare(const Scenario& scenario) {
    QDir folder(folder_.path());
    QDir::setCurrent(folder_.path());
    const QStringList old = folder.entryList(QDir::Files | QDir::Hidden);
    for (const QString& name : old) {
        folder.remove(name);
    }
    LumoWidget::filePath.clear();
    isEnable_moveorder = false;
    isnew_pWgt = false;
    hand_or_signalbing = 0;
    if (scenario.stage == Stage::Bare) {
        return;
    }
    for (auto project = scenario.projects.begin(); project != scenario.projects.end(); ++project) {
        write(project.key(), project->toArray());
    }
    if (scenario.projectOpen) {
        LumoWidget::filePath = QStringLiteral("open.json");
        isEnable_moveorder = true;
        write(LumoWidget::filePath, scenario.program);
    }
    m(lumo::key::signalsConfig)->loadJson(nullptr, scenario.stations);
    // Painting is most of the work, and of no interest in most schedules.
    constexpr quint64 painted = 16;
    center_->setUpdatesEnabled(scenario.seed % painted == 0);
}

void PageWorld::make() {
    page_ = new LumoWidget;
    center_->addWidget(page_);
    center_->setCurrentWidget(page_);
}

void PageWorld::end() {
    delete page_;
}

LumoWidget* PageWorld::page() const {
    return page_;
}

QTableWidget* PageWorld::table() const {
    return page_ ? page_->findChild<ProgramWidget*>()->findChild<ProgramTable*>() : nullptr;
}

SignalsBindWidget* PageWorld::stations() const {
    return page_ ? page_->findChild<SignalsBindWidget*>() : nullptr;
}

bool PageWorld::isListening() const {
    const SignalsBindWidget* const page = stations();
    return page && page->findChild<SwitchButton*>(QStringLiteral("switchBtn"))->checked();
}

void PageWorld::stopListening() const {
    if (isListening()) {
        auto* const button = stations()->findChild<SwitchButton*>(QStringLiteral("switchBtn"));
        send(button, QEvent::MouseButtonPress, button->rect().center(), Qt::LeftButton);
    }
}

QString PageWorld::staleStation() const {
    const SignalsBindWidget* const page = stations();
    const QTableWidget* const shown = page ? page->findChild<QTableWidget*>() : nullptr;
    if (!shown || page->queued() > 0) {
        return QString();
    }
    for (int row = 0; row < shown->rowCount(); ++row) {
        const QTableWidgetItem* const state = shown->item(row, lumo::StateColumn);
        const QString text = state ? state->text() : QString();
        if (text == SignalsBindWidget::tr("已触发") || text == SignalsBindWidget::tr("正在运行")) {
            return QStringLiteral("row %1 shows \"%2\", though nothing waits").arg(row).arg(text);
        }
    }
    return QString();
}

QString PageWorld::disagreement() const {
    const QTableWidget* const shown = table();
    if (!shown) {
        return QString();
    }
    const QList<ModuleObject*> statements = m(lumo::key::program)->cmobjs();
    if (shown->rowCount() != statements.size()) {
        return QStringLiteral("the table shows %1 lines of %2").arg(shown->rowCount()).arg(statements.size());
    }
    for (int row = 0; row < statements.size(); ++row) {
        const QString command = type2cn(statements[row]->c(lumo::field::type)->getString());
        const auto text = [shown, row](int column) { return shown->item(row, column)->text(); };
        if (text(ProgramTable::LineColumn) != QString::number(row + 1) ||
            text(ProgramTable::CommandColumn) != command) {
            return QStringLiteral("row %1 shows \"%2 %3\" instead of \"%4\"")
                .arg(row)
                .arg(text(ProgramTable::LineColumn), text(ProgramTable::CommandColumn), command);
        }
        const QString details = lumo::statementDetails(statements[row]);
        // What is said of a parameter set is brought up to date when the editor is shown.
        if (!statements[row]->hasCmobj(lumo::field::index) && text(ProgramTable::DetailColumn) != details) {
            return QStringLiteral("row %1 shows \"%2\" instead of \"%3\"")
                .arg(row)
                .arg(text(ProgramTable::DetailColumn), details);
        }
    }
    const int markers = markersOf(shown);
    return markers > 1 ? QStringLiteral("%1 rows are marked").arg(markers) : QString();
}

int PageWorld::objects() {
    return instantiatedCenterWidget()->findChildren<QObject*>().size();
}

int PageWorld::dialogs() {
    return openDialogs().size();
}

QList<QWidget*> openDialogs() {
    QList<QWidget*> dialogs;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* const window : windows) {
        if (window->isVisible() && qobject_cast<QDialog*>(window)) {
            dialogs << window;
        }
    }
    // The list of windows has no order; names of the platform's windows count up.
    std::sort(dialogs.begin(), dialogs.end(),
              [](const QWidget* a, const QWidget* b) { return a->effectiveWinId() > b->effectiveWinId(); });
    return dialogs;
}

bool isWithinReach(const QWidget* widget) {
    if (!widget || !widget->isVisible() || !widget->isEnabled()) {
        return false;
    }
    const QWidget* const window = widget->window();
    const QList<QWidget*> dialogs = openDialogs();
    return std::all_of(dialogs.begin(), dialogs.end(), [window](const QWidget* dialog) {
        return !dialog->isModal() || isBelow(window, dialog);
    });
}

bool click(QWidget* widget) {
    if (!isWithinReach(widget)) {
        return false;
    }
    const QPointer<QWidget> kept(widget);
    const QPoint middle = widget->rect().center();
    send(widget, QEvent::MouseButtonPress, middle, Qt::LeftButton);
    if (kept) {
        send(widget, QEvent::MouseButtonRelease, middle, Qt::NoButton);
    }
    return true;
}

}  // namespace campaign
