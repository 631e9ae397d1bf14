#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QToolButton;

namespace app {

class HandbookView;

/// The handbook with a search, the content of a dock. It opens at the chapter that was read last, also after
/// another start of the panel in another language.
class HelpPage : public QWidget {
    Q_OBJECT
public:
    explicit HelpPage(QWidget* parent = nullptr);
    /// Remembers the chapter that was read.
    ~HelpPage() override;

    /// Opens a chapter, and gives the keyboard to the text.
    void openChapter(const QString& chapter);
    HandbookView* view() const { return view_; }

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void search(bool backward);
    void fit();
    void fitContents();

    HandbookView* view_;
    QToolButton* contents_;
    QLineEdit* field_;
    QLabel* result_;
};

}  // namespace app
