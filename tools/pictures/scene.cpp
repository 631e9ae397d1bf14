#include "tools/pictures/scene.h"

#include "app/dock/dockarea.h"
#include "app/noticebar.h"
#include "app/panel.h"
#include "app/sheet/sheet.h"
#include "mendo/modulemanager.h"
#include "program/words.h"
#include "simulator/controller.h"
#include "simulator/time/virtualtime.h"
#include "tools/pictures/judge.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QTabBar>
#include <QThread>
#include <QTimer>

#include <algorithm>

namespace pictures {

namespace {

constexpr int layoutMs = 50;
constexpr int restMs = 300;  // a table sizes its rows when its width has rested
constexpr int longestRunMs = 120000;
constexpr int titleHeight = 26;

sim::VirtualTime* clock() {
    return sim::VirtualTime::instance();
}

/// The visible top-level windows besides the panel's, the oldest first.
QWidgetList overlays(const QWidget* window) {
    QWidgetList shown;
    const QWidgetList all = QApplication::topLevelWidgets();
    for (QWidget* widget : all) {
        if (widget != window && widget->isVisible()) {
            shown << widget;
        }
    }
    // A dialog lies over its parent.
    const auto depth = [](const QWidget* widget) {
        int levels = 0;
        for (; widget; widget = widget->parentWidget()) {
            ++levels;
        }
        return levels;
    };
    std::stable_sort(shown.begin(), shown.end(),
                     [&](const QWidget* a, const QWidget* b) { return depth(a) < depth(b); });
    return shown;
}

/// Draws a window as a window manager shows it: with its title, unless it is frameless.
void paintWindow(QPainter* painter, QWidget* widget, const QPixmap& content, const QPoint& place) {
    painter->drawPixmap(place, content);
    if (widget->windowFlags().testFlag(Qt::FramelessWindowHint) || widget->windowType() == Qt::Popup) {
        return;
    }
    const QRect title(place.x(), place.y() - titleHeight, content.width(), titleHeight);
    painter->fillRect(title, QColor(0x5b, 0x6b, 0x7d));
    painter->setPen(Qt::white);
    painter->drawText(title.adjusted(8, 0, -8, 0), Qt::AlignVCenter | Qt::AlignLeft, widget->windowTitle());
    painter->setPen(QColor(0x5b, 0x6b, 0x7d));
    painter->drawRect(QRect(title.topLeft(), QSize(title.width() - 1, titleHeight + content.height() - 1)));
}

/// Position of a window relative to the panel's: a sheet where it has put itself, another dialog in the
/// middle, a list of choices below its field, or above where there is no room. The offscreen screen is
/// smaller than the panel, so that Qt moves the others.
QPoint placeOf(const QWidget* widget, const QWidget* window) {
    const QWidget* owner = widget->windowType() == Qt::Popup ? widget->parentWidget() : nullptr;
    if (owner) {
        const QPoint below = owner->mapTo(window, QPoint(0, owner->height()));
        const bool hasRoom = below.y() + widget->height() <= window->height();
        return hasRoom ? below : below - QPoint(0, owner->height() + widget->height());
    }
    const bool hasKeys = widget->findChild<QWidget*>(QStringLiteral("touchWindow"));
    if (hasKeys || !qobject_cast<const QDialog*>(widget) ||
        widget->windowFlags().testFlag(Qt::FramelessWindowHint)) {
        return widget->pos() - window->pos();
    }
    QRect place(QPoint(), widget->size());
    place.moveCenter(window->rect().center());
    return place.topLeft();
}

/// A file dialog reads the folder in another thread, on the wall clock.
void awaitFiles(const QDialog* dialog) {
    const auto* view = dialog->findChild<QAbstractItemView*>(QStringLiteral("listView"));
    for (int i = 0; view && i < 200 && view->model()->rowCount(view->rootIndex()) == 0; ++i) {
        QThread::msleep(5);
        clock()->advance(20);
    }
    clock()->advance(200);
}

}  // namespace

Scene::Scene(app::Panel* panel) : panel_(panel) {}

sim::Controller* Scene::controller() const {
    return panel_->controller();
}

void Scene::reset(const QSize& size) {
    steps_ = std::make_unique<QObject>();
    picture_ = QPixmap();
    problem_.clear();
    faults_.clear();
    closeDialogs();
    settle();
    controller()->setEmergencyStop(false);
    controller()->setPower(false);
    controller()->setMode(QStringLiteral("auto"));
    controller()->setInput(QStringLiteral("DI3"), true);
    app::PanelWindow* window = panel_->window();
    window->notices()->dismiss();
    window->activateWindow();
    window->resize(size);
    clock()->advance(layoutMs);
    window->docks()->closeAll();
    for (const char* home : {"cellTab0", "btnProject"}) {
        auto* button = window->findChild<QAbstractButton*>(QLatin1String(home));
        if (button) {
            button->click();
        }
    }
    clock()->advance(restMs);
    picture_ = QPixmap();
}

/// Rejects all open dialogs.
void Scene::closeDialogs() {
    const QWidgetList shown = overlays(panel_->window());
    for (QWidget* widget : shown) {
        if (auto* dialog = qobject_cast<QDialog*>(widget)) {
            dialog->reject();
        } else {
            widget->close();
        }
    }
    const QList<app::Sheet*> sheets = panel_->window()->findChildren<app::Sheet*>();
    for (app::Sheet* sheet : sheets) {
        sheet->dismiss();
    }
    clock()->advance(layoutMs);
}

void Scene::fail(const QString& problem) {
    if (problem_.isEmpty()) {
        problem_ = problem;
    }
}

template <typename Widget>
Widget* Scene::find(const QString& name) {
    if (!problem_.isEmpty()) {
        return nullptr;
    }
    QWidgetList windows = overlays(panel_->window());
    windows.prepend(panel_->window());
    for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
        const QList<Widget*> named = (*window)->template findChildren<Widget*>(name);
        for (Widget* widget : named) {
            if (widget->isVisible() && widget->isEnabled()) {
                return widget;
            }
        }
    }
    fail(QStringLiteral("%1 is not there or not enabled").arg(name));
    return nullptr;
}

void Scene::click(const QString& button) {
    if (auto* found = find<QAbstractButton>(button)) {
        found->click();
        clock()->advance(layoutMs);
    }
}

void Scene::tap(const QString& widget) {
    auto* found = find<QWidget>(widget);
    if (!found) {
        return;
    }
    auto* const area = qobject_cast<QAbstractScrollArea*>(found);
    QWidget* const target = area ? area->viewport() : found;
    found->window()->activateWindow();
    clock()->advance(0);
    found->setFocus(Qt::MouseFocusReason);
    const QPoint middle = target->rect().center();
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, middle, target->mapToGlobal(middle), Qt::LeftButton, Qt::LeftButton, {});
        QApplication::sendEvent(target, &event);
    }
    clock()->advance(layoutMs);
}

QString Scene::textOf(const QString& button) {
    const auto* found = find<QAbstractButton>(button);
    return found ? found->text() : QString();
}

void Scene::selectRow(const QString& table, int row) {
    auto* view = find<QAbstractItemView>(table);
    if (!view) {
        return;
    }
    const QModelIndex index = view->model()->index(row, 1);
    if (!index.isValid()) {
        fail(QStringLiteral("%1 has no row %2").arg(table).arg(row));
    }
    view->setCurrentIndex(index);
    clock()->advance(layoutMs);
}

void Scene::type(const QString& lineEdit, const QString& text) {
    auto* field = find<QLineEdit>(lineEdit);
    if (!field) {
        return;
    }
    field->selectAll();
    QKeyEvent erase(QEvent::KeyPress, Qt::Key_Backspace, Qt::NoModifier);
    QApplication::sendEvent(field, &erase);
    for (const QChar character : text) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(character));
        QApplication::sendEvent(field, &press);
    }
    clock()->advance(layoutMs);
}

void Scene::key(const QString& widget, Qt::Key key) {
    if (auto* found = find<QWidget>(widget)) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(found, &press);
        clock()->advance(layoutMs);
    }
}

void Scene::set(const QString& widget, const char* property, const QVariant& value) {
    if (auto* found = find<QWidget>(widget)) {
        found->setProperty(property, value);
        clock()->advance(layoutMs);
    }
}

void Scene::tab(int index) {
    if (auto* tabs = find<QTabBar>(QString())) {
        tabs->setCurrentIndex(index);
        clock()->advance(layoutMs);
    }
}

void Scene::accept() {
    const QWidgetList shown = overlays(panel_->window());
    const auto* buttons = shown.isEmpty() ? nullptr : shown.last()->findChild<QDialogButtonBox*>();
    if (!buttons || buttons->buttons().isEmpty()) {
        fail(QStringLiteral("there is no dialog to accept"));
        return;
    }
    for (const auto which : {QDialogButtonBox::Ok, QDialogButtonBox::Yes}) {
        if (QAbstractButton* button = buttons->button(which)) {
            button->click();
            break;
        }
    }
    clock()->advance(layoutMs);
}

void Scene::openProject(const QString& fileName) {
    if (!panel_->openProject(QDir::current().absoluteFilePath(fileName))) {
        fail(QStringLiteral("%1 cannot be opened").arg(fileName));
    }
    clock()->advance(layoutMs);
}

void Scene::after(int ms, const Step& step) {
    QTimer::singleShot(ms, steps_.get(), step);
}

void Scene::whenLineRuns(int line, const Step& step) {
    auto* once = new QObject(steps_.get());
    connect(m(prog::key::executeLine), &mendo::ModuleObject::changed, once,
            [this, once, line, step](const QVariant& value) {
                if (value.toInt() != line) {
                    return;
                }
                once->deleteLater();
                after(layoutMs, step);
            });
}

void Scene::settle() {
    clock()->advanceUntil(
        [this] {
            return m(prog::key::executeState)->getString() != prog::word::busy && controller()->standsStill();
        },
        longestRunMs);
    clock()->advance(2000);
}

void Scene::shoot() {
    if (!problem_.isEmpty()) {
        return;
    }
    app::PanelWindow* window = panel_->window();
    const QWidgetList shown = overlays(window);
    for (QWidget* widget : shown) {
        if (const auto* dialog = qobject_cast<QFileDialog*>(widget)) {
            awaitFiles(dialog);
        }
    }
    clock()->settle();
    QPixmap picture = window->grab();
    faults_ = faultsOf(*window, picture.toImage());
    QPainter painter(&picture);
    for (QWidget* widget : shown) {
        const QPixmap content = widget->grab();
        faults_ += faultsOf(*widget, content.toImage());
        paintWindow(&painter, widget, content, placeOf(widget, window));
    }
    painter.end();
    picture_ = picture;
}

}  // namespace pictures
