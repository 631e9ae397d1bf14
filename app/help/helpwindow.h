#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace app {

class HandbookView;

/// The handbook in a window of its own with a search. It blocks nothing, and closing it only hides it.
class HelpWindow : public QWidget {
    Q_OBJECT
public:
    HelpWindow();

    /// Shows a chapter. At first beside the panel's window, or over its left side, below the header: what
    /// runs and stops a program is on the right and in the header.
    void open(const QString& chapter, const QWidget* panel);
    HandbookView* view() const { return view_; }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void search(bool backward);

    HandbookView* view_;
    QLineEdit* field_;
    QLabel* result_;
    bool placed_ = false;
};

}  // namespace app
