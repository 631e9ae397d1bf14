#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace app {

class HandbookView;

/// The handbook with a search, the content of a dock.
class HelpPage : public QWidget {
    Q_OBJECT
public:
    explicit HelpPage(QWidget* parent = nullptr);

    /// Opens a chapter, and gives the keyboard to the text.
    void openChapter(const QString& chapter);
    HandbookView* view() const { return view_; }

protected:
    void changeEvent(QEvent* event) override;

private:
    void search(bool backward);
    void fit();

    HandbookView* view_;
    QLineEdit* field_;
    QLabel* result_;
};

}  // namespace app
