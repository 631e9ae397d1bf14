#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

namespace test {

/// A child by object name; ends the program when there is none.
template <typename Widget = QWidget>
Widget* child(const QWidget* parent, const char* name) {
    auto* const found = parent->findChild<Widget*>(QLatin1String(name));
    if (!found) {
        qFatal("no child %s", name);
    }
    return found;
}

/// The first visible window of a class, such as the open dialog or message box; null when there is none.
template <typename Window = QDialog>
Window* shown() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* const found = qobject_cast<Window*>(window);
        if (found && found->isVisible()) {
            return found;
        }
    }
    return nullptr;
}

/// Clicks with the mouse, so that a disabled widget does not react. A button beyond the edge of the small
/// offscreen screen is pressed with the space bar: a scroll area looks for what lies under a tap.
inline void click(QWidget* widget) {
    const QPoint place = widget->mapToGlobal(widget->rect().center());
    if (qobject_cast<QAbstractButton*>(widget) && !QApplication::widgetAt(place)) {
        QTest::keyClick(widget, Qt::Key_Space);
    } else {
        QTest::mouseClick(widget, Qt::LeftButton);
    }
}

inline QPoint placeOf(QTableWidget* table, int row, int column) {
    table->scrollToItem(table->item(row, column));
    return table->visualItemRect(table->item(row, column)).center();
}

inline void clickCell(QTableWidget* table, int row, int column) {
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, placeOf(table, row, column));
}

inline void doubleClickCell(QTableWidget* table, int row, int column) {
    clickCell(table, row, column);
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, placeOf(table, row, column));
}

inline QPushButton* button(const QWidget* dialog, QDialogButtonBox::StandardButton which) {
    return child<QDialogButtonBox>(dialog, "buttonBox")->button(which);
}

inline void clickOk(const QWidget* dialog) {
    click(button(dialog, QDialogButtonBox::Ok));
}

/// Texts of the visible message boxes, sorted.
inline QStringList boxes() {
    QStringList texts;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        const auto* const box = qobject_cast<QMessageBox*>(window);
        if (box && box->isVisible()) {
            texts << box->text();
        }
    }
    texts.sort();
    return texts;
}

/// Clicks the button of the shown message box that has this text; whether there is one.
inline bool answerBox(const QString& text) {
    const auto* const box = shown<QMessageBox>();
    const QList<QAbstractButton*> buttons = box ? box->buttons() : QList<QAbstractButton*>();
    for (QAbstractButton* button : buttons) {
        if (button->text() == text) {
            click(button);
            return true;
        }
    }
    return false;
}

inline void closeBoxes() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (qobject_cast<QMessageBox*>(window)) {
            delete window;
        }
    }
}

inline QStringList textsOf(const QComboBox* combo) {
    QStringList texts;
    for (int i = 0; i < combo->count(); ++i) {
        texts << combo->itemText(i);
    }
    return texts;
}

/// The texts of a table's column.
inline QStringList columnOf(const QTableWidget* table, int column) {
    QStringList texts;
    for (int row = 0; row < table->rowCount(); ++row) {
        const QTableWidgetItem* const item = table->item(row, column);
        texts << (item ? item->text() : QString());
    }
    return texts;
}

}  // namespace test
