#include "app/events/eventlist.h"

#include "look/icon.h"

#include <QColor>

namespace app {

namespace {

bool isTrouble(const Event& event) {
    return event.kind == Event::Kind::Error || event.kind == Event::Kind::Stop ||
           (event.kind == Event::Kind::Fault && event.detail != QLatin1String("ready"));
}

QString textOf(const Event& event, int column) {
    switch (column) {
        case EventList::Time:
            return event.at.toString(QStringLiteral("MM-dd HH:mm:ss"));
        case EventList::What:
            return kindText(event.kind);
        case EventList::By:
            return originText(event.origin);
        case EventList::Project:
            return event.project;
        case EventList::Line:
            return event.line < 0 ? QString() : QString::number(event.line + 1);
        default:
            return detailText(event);
    }
}

}  // namespace

EventList::EventList(QObject* parent) : QAbstractTableModel(parent) {}

void EventList::show(const QVector<Event>& events) {
    beginResetModel();
    events_ = events;
    endResetModel();
}

int EventList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : events_.size();
}

int EventList::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant EventList::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const Event& event = events_[index.row()];
    switch (role) {
        case Qt::DisplayRole:
            return textOf(event, index.column());
        case Qt::DecorationRole:
            return index.column() == What && isTrouble(event)
                       ? look::icon(QStringLiteral("warn"), look::amberInk)
                       : QVariant();
        case Qt::ForegroundRole:
            return index.column() == What && isTrouble(event) ? QColor(look::amberInk) : QVariant();
        case Qt::TextAlignmentRole:
            return index.column() == Line ? int(Qt::AlignRight | Qt::AlignVCenter)
                                          : int(Qt::AlignLeft | Qt::AlignVCenter);
        default:
            return {};
    }
}

QVariant EventList::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole && section == Line) {
        return int(Qt::AlignRight | Qt::AlignVCenter);
    }
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return QAbstractTableModel::headerData(section, orientation, role);
    }
    const QString headings[] = {tr("时间"), tr("事件"), tr("启动者"), tr("工程"), tr("行"), tr("说明")};
    return section < ColumnCount ? headings[section] : QString();
}

}  // namespace app
