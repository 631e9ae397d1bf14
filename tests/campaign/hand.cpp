#include "campaign/hand.h"

#include "campaign/random.h"
#include "panel/lumowidget.h"
#include "simulator/controller.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>

#include <algorithm>

namespace campaign {

namespace {

/// One key after the other, as validators and completers get them.
void press(QWidget* widget, int key, const QString& text) {
    const QPointer<QWidget> kept(widget);
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        if (kept) {
            QKeyEvent event(type, key, Qt::NoModifier, text);
            QApplication::sendEvent(widget, &event);
        }
    }
}

void enter(QLineEdit* field, const QString& text) {
    field->selectAll();
    press(field, Qt::Key_Delete, QString());
    for (const QChar letter : text) {
        press(field, letter.unicode(), letter);
    }
}

QString drawText(Random& random) {
    return QString::fromLatin1(random.oneOf(
        {"", "0", "5", "25", "60", "150", "500", "-40", "7000", "99999999999", "1.5", "seam", "P1", "a.b"}));
}

QString drawFile(Random& random) {
    return QString::fromLatin1(random.oneOf(
        {"P1.json", "P2.json", "other.json", "other.json", "odd.json", "missing.json", "lumo_param.json"}));
}

void fill(QWidget* dialog, Random& random) {
    const auto combos = dialog->findChildren<QComboBox*>();
    for (QComboBox* combo : combos) {
        if (combo->isVisible() && combo->count() > 0 && random.chance(60)) {
            combo->setCurrentIndex(random.below(combo->count()));
        }
    }
    const auto buttons = dialog->findChildren<QAbstractButton*>();
    for (QAbstractButton* button : buttons) {
        if (button->isVisible() && button->isCheckable() && button->isEnabled() && random.chance(40)) {
            button->click();
        }
    }
    const auto tables = dialog->findChildren<QTableWidget*>();
    for (QTableWidget* table : tables) {
        const int row = table->rowCount() == 0 ? -1 : random.below(table->rowCount());
        QTableWidgetItem* const item = table->item(row, table->columnCount() - 1);
        if (item && item->flags() & Qt::ItemIsEditable) {
            item->setText(drawText(random));
        }
    }
    const auto fields = dialog->findChildren<QLineEdit*>();
    for (QLineEdit* field : fields) {
        if (field->isVisible() && field->isEnabled() && !field->isReadOnly() && random.chance(70)) {
            enter(field, drawText(random));
        }
    }
}

void replyToFile(QFileDialog* dialog, const QString& with, Random& random) {
    if (with != QLatin1String("ok")) {
        press(dialog, Qt::Key_Escape, QString());
        return;
    }
    auto* const field = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    field->setText(drawFile(random));
    press(field, Qt::Key_Return, QStringLiteral("\r"));
}

/// The lists of the port page offer what no other one has.
bool isOffered(const QComboBox* combo, int item) {
    const auto others = combo->window()->findChildren<QComboBox*>();
    return !combo->property("func").isValid() ||
           std::none_of(others.begin(), others.end(), [combo, item](const QComboBox* other) {
               return other != combo && other->property("func").isValid() &&
                      other->currentText() == combo->itemText(item);
           });
}

/// The button that accepts, or rejects; null when there is none.
QAbstractButton* buttonOf(const QWidget* dialog, bool accepts) {
    const auto* const box = dialog->findChild<QDialogButtonBox*>();
    const auto buttons = box ? box->buttons() : QList<QAbstractButton*>();
    for (QAbstractButton* button : buttons) {
        const auto role = box->buttonRole(button);
        const bool accepting = role == QDialogButtonBox::AcceptRole || role == QDialogButtonBox::YesRole;
        if (accepting == accepts) {
            return button;
        }
    }
    return buttons.isEmpty() ? nullptr : buttons.first();
}

}  // namespace

/// The widget of that name which the operator sees.
QWidget* Hand::inSight(const QString& name) const {
    const auto found = world_.page() ? world_.page()->findChildren<QWidget*>(name) : QList<QWidget*>();
    for (QWidget* widget : found) {
        if (isWithinReach(widget)) {
            return widget;
        }
    }
    return nullptr;
}

template <typename Widget>
Widget* Hand::numbered(int number) const {
    QList<Widget*> seen;
    const auto found = world_.page() ? world_.page()->findChildren<Widget*>() : QList<Widget*>();
    for (Widget* widget : found) {
        if (isWithinReach(widget)) {
            seen << widget;
        }
    }
    return seen.isEmpty() ? nullptr : seen[number % seen.size()];
}

void Hand::doThis(const QString& deed, int number, int mode, bool on, sim::Controller& controller) {
    if (deed == QLatin1String("row")) {
        selectRow(number);
    } else if (deed == QLatin1String("combo")) {
        choose(number, mode);
    } else if (deed == QLatin1String("box")) {
        click(numbered<QCheckBox>(number));
    } else if (deed == QLatin1String("field")) {
        type(number, mode);
    } else if (deed == QLatin1String("jump")) {
        jump(number);
    } else if (deed == QLatin1String("key")) {
        static const char* const keys[] = {"next", "last", "center", "enter", "delete"};
        controller.reportKey(QString::fromLatin1(keys[number % 5]), on);
    } else {
        click(inSight(deed));
    }
}

void Hand::selectRow(int row) const {
    auto* const table = numbered<QTableWidget>(0);
    if (table && row >= 0 && row < table->rowCount()) {
        table->scrollTo(table->model()->index(row, 1));
        table->setCurrentCell(row, 1);
        table->selectRow(row);
    }
}

void Hand::choose(int number, int item) const {
    auto* const combo = numbered<QComboBox>(number);
    if (combo && combo->count() > 0 && !isOffered(combo, item % combo->count())) {
        return;
    }
    if (combo && combo->count() > 0) {
        combo->setCurrentIndex(item % combo->count());
        emit combo->activated(combo->currentIndex());
    }
}

void Hand::type(int number, int seed) const {
    auto* const field = numbered<QLineEdit>(number);
    if (field && !field->isReadOnly()) {
        Random random(static_cast<quint64>(seed));
        enter(field, drawText(random));
    }
}

void Hand::jump(int line) const {
    if (auto* const field = qobject_cast<QLineEdit*>(inSight(QStringLiteral("lineEdit_steptojump")))) {
        enter(field, QString::number(line));
        click(inSight(QStringLiteral("btnSteptojump")));
    }
}

void Hand::reply(const QString& with, int number) {
    const QList<QWidget*> dialogs = openDialogs();
    if (dialogs.isEmpty()) {
        return;
    }
    QWidget* const dialog = dialogs.first();
    Random random(static_cast<quint64>(number));
    if (auto* const files = qobject_cast<QFileDialog*>(dialog)) {
        replyToFile(files, with, random);
        return;
    }
    if (number != 0 && !qobject_cast<QMessageBox*>(dialog)) {
        fill(dialog, random);
    }
    const bool accepts = with == QLatin1String("ok");
    if (with == QLatin1String("escape") || !click(buttonOf(dialog, accepts))) {
        press(dialog, Qt::Key_Escape, QString());
    }
}

void Hand::replyToAll(int number) {
    constexpr int limit = 30;
    for (int i = 0; i < limit && !openDialogs().isEmpty(); ++i) {
        Random random(static_cast<quint64>(number + i));
        reply(QString::fromLatin1(random.oneOf({"ok", "cancel", "escape"})), random.below(1000));
    }
}

}  // namespace campaign
