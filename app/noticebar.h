#pragma once

#include "app/fileproblem.h"

#include <QFrame>
#include <QStringList>

class QLabel;
class QToolButton;

namespace app {

/// Tells the operator what the file service reports, in the panel's status line: the newest problem, and on
/// demand the last ones. It never takes the focus and asks for nothing.
class NoticeBar : public QFrame {
    Q_OBJECT
public:
    /// `window`: the widget that the list of the last problems covers while it is open.
    explicit NoticeBar(QWidget* window);

    /// A problem that is the same as the newest one is not listed twice.
    void report(const QString& file, int line, int column, const QString& reason);
    /// The list of the last problems, a child of the window.
    QWidget* list() const;
    /// What stands in the list, newest first.
    const QStringList& texts() const { return texts_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

public slots:
    /// Hides bar and list, and forgets the problems.
    void dismiss();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void showList(bool shown);
    void placeList();
    void refresh();
    void showText(const QString& path);

    QWidget* window_;
    QLabel* text_;
    QToolButton* more_;
    QToolButton* close_;
    QLabel* list_;
    QStringList texts_;
    FileProblem newest_;
};

}  // namespace app
