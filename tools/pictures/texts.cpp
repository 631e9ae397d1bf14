#include "tools/pictures/texts.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QFontMetrics>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTabBar>
#include <QTableView>

namespace pictures {

namespace {

constexpr int roundingPx = 1;

bool isSmaller(const QSize& size, const QSize& needed) {
    return size.width() + roundingPx < needed.width() || size.height() + roundingPx < needed.height();
}

QString cutLabel(const QLabel& label) {
    if (label.text().isEmpty()) {
        return {};
    }
    const bool tooLow = label.wordWrap() && label.heightForWidth(label.width()) > label.height() + roundingPx;
    const bool tooSmall = !label.wordWrap() && isSmaller(label.size(), label.minimumSizeHint());
    return tooLow || tooSmall ? label.text() : QString();
}

QString cutButton(const QAbstractButton& button) {
    if (button.text().isEmpty()) {
        return {};
    }
    return isSmaller(button.size(), button.minimumSizeHint()) ? button.text() : QString();
}

/// A name may be longer than its field, which scrolls. A number may not.
QString cutField(const QLineEdit& field) {
    const bool isNumber = qobject_cast<const QAbstractSpinBox*>(field.parentWidget());
    const QString text = field.text().isEmpty() ? field.placeholderText() : field.text();
    const int needed = field.fontMetrics().horizontalAdvance(text);
    const bool mustFit = isNumber || field.text().isEmpty();
    return mustFit && needed > field.contentsRect().width() ? text : QString();
}

/// A heading may be broken into as many lines as its header is high.
QString cutHeading(const QHeaderView& header) {
    constexpr int marginPx = 4;
    for (int section = 0; header.orientation() == Qt::Horizontal && section < header.count(); ++section) {
        const QString text = header.model()->headerData(section, Qt::Horizontal).toString();
        const QRect room(0, 0, header.sectionSize(section) - marginPx, header.height());
        const QRect needed = header.fontMetrics().boundingRect(room, Qt::TextWordWrap, text);
        if (!header.isSectionHidden(section) && isSmaller(room.size(), needed.size())) {
            return text;
        }
    }
    return {};
}

/// Looks at cells that are drawn by Qt's own delegate and stand wholly in the view. A view that draws its
/// rows itself says so.
QString cutCell(const QAbstractItemView& view) {
    const QAbstractItemModel* model = view.model();
    const auto* table = qobject_cast<const QTableView*>(&view);
    if (!model || !table || view.property("drawsRows").toBool() ||
        qstrcmp(view.itemDelegate()->metaObject()->className(), "QStyledItemDelegate") != 0) {
        return {};
    }
    for (int row = table->rowAt(0); row >= 0 && row < model->rowCount(view.rootIndex()); ++row) {
        for (int column = 0; column < model->columnCount(view.rootIndex()); ++column) {
            const QModelIndex index = model->index(row, column, view.rootIndex());
            const QRect place = view.visualRect(index);
            const QString text = index.data().toString();
            if (place.bottom() > view.viewport()->height()) {
                return {};
            }
            const int width = table->wordWrap() ? 0 : view.sizeHintForIndex(index).width();
            const QSize needed(width, view.sizeHintForIndex(index).height());
            if (!text.isEmpty() && !view.indexWidget(index) && isSmaller(place.size(), needed)) {
                return text;
            }
        }
    }
    return {};
}

QString cutTab(const QTabBar& tabs) {
    for (int tab = 0; tab < tabs.count(); ++tab) {
        if (tabs.fontMetrics().horizontalAdvance(tabs.tabText(tab)) > tabs.tabRect(tab).width()) {
            return tabs.tabText(tab);
        }
    }
    return {};
}

QString cutChoice(const QComboBox& box) {
    const int needed = box.fontMetrics().horizontalAdvance(box.currentText());
    return needed > box.contentsRect().width() && !box.isEditable() ? box.currentText() : QString();
}

}  // namespace

QString nameOf(const QWidget& widget) {
    const QString name = widget.objectName();
    if (!name.isEmpty() && !name.startsWith(QLatin1String("qt_"))) {
        return name;
    }
    const QString type = QLatin1String(widget.metaObject()->className());
    return widget.parentWidget() ? nameOf(*widget.parentWidget()) + QLatin1Char('/') + type : type;
}

QString cutText(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        return cutLabel(*label);
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
        return cutButton(*button);
    }
    if (const auto* field = qobject_cast<const QLineEdit*>(&widget)) {
        return cutField(*field);
    }
    if (const auto* box = qobject_cast<const QComboBox*>(&widget)) {
        return cutChoice(*box);
    }
    if (const auto* header = qobject_cast<const QHeaderView*>(&widget)) {
        return cutHeading(*header);
    }
    if (const auto* view = qobject_cast<const QAbstractItemView*>(&widget)) {
        return cutCell(*view);
    }
    if (const auto* tabs = qobject_cast<const QTabBar*>(&widget)) {
        return cutTab(*tabs);
    }
    if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) {
        return isSmaller(group->size(), group->minimumSizeHint()) ? group->title() : QString();
    }
    return {};
}

}  // namespace pictures
