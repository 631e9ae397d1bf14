#pragma once

#include "app/events/eventsearch.h"
#include "app/events/eventstore.h"

#include <QTimer>
#include <QWidget>

class QBoxLayout;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace app {

class EventList;
class ResultExport;

/// The event log: its newest lines, a search by text, kind and day, and what was found as CSV.
class EventPage : public QWidget {
    Q_OBJECT
public:
    static constexpr int mostShown = 500;

    /// `store` must outlive it.
    explicit EventPage(EventStore* store, QWidget* parent = nullptr);

    /// Writes what the search finds to a file, without a question.
    void exportTo(const QString& file);

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QWidget* makeSearch();
    QWidget* makeBottom();
    void setUpTable();
    void fit();
    void fitWidth();
    QPushButton* makeButton(const QString& name, const QString& text);
    [[nodiscard]] EventFilter filter() const;
    void search();
    void searchLater();
    void showFound();
    void moveDay(int days);
    void showDay();
    void collect(const QString& file);
    void collected();

    EventStore* store_;
    EventList* list_;
    EventSearch search_;
    EventSearch all_;     ///< for the export
    QString exportFile_;  ///< empty: it is asked for
    ResultExport* export_;
    QLineEdit* text_;
    QComboBox* kind_;
    QPushButton* day_;
    QDate chosenDay_;
    QBoxLayout* filter_ = nullptr;
    QTableView* table_;
    QLabel* count_;
    QPushButton* csv_;
    QTimer later_;
};

}  // namespace app
