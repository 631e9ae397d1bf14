#pragma once

#include "json/fileproblem.h"

#include <QFrame>
#include <QStringList>

class QLabel;
class QToolButton;

namespace app {

/// Shows file problems and other messages over the panel's status line: the newest one, and on demand a list
/// of the last ten. It never takes the keyboard focus.
class NoticeBar : public QFrame {
    Q_OBJECT
public:
    /// `window` is the widget that the open list covers.
    explicit NoticeBar(QWidget* window);

    /// Adds a problem unless it equals the newest one.
    void report(const mendo::FileProblem& problem);
    /// Adds a message unless it equals the newest one.
    void tell(const QString& message);
    /// The list of problems, a child of the window.
    QWidget* list() const;
    /// The texts of the list, newest first.
    const QStringList& texts() const { return texts_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

public slots:
    /// Hides bar and list and forgets the problems.
    void dismiss();

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void fit();
    void showList(bool shown);
    void placeList();
    void refresh();
    void add(const QString& text);
    void showText(const QString& path);

    QWidget* window_;
    QLabel* sign_;
    QLabel* text_;
    QToolButton* more_;
    QToolButton* close_;
    QLabel* list_;
    QStringList texts_;
    mendo::FileProblem newest_;  ///< without reasons: the newest is a message
    QString newestMessage_;
};

}  // namespace app
