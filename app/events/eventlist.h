#pragma once

#include "app/events/event.h"

#include <QAbstractTableModel>
#include <QVector>

namespace app {

/// The rows of the event log's page, newest first.
class EventList : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Time, What, By, Project, Line, Detail, ColumnCount };

    explicit EventList(QObject* parent = nullptr);

    void show(const QVector<Event>& events);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QVector<Event> events_;
};

}  // namespace app
