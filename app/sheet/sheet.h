#pragma once

#include <QFrame>
#include <QPointer>

class QAbstractButton;
class QHBoxLayout;
class QLabel;
class QVBoxLayout;

namespace app {

/// A message or question of the panel's frame: a card on a veil over the page. It is no window and blocks
/// none: header, rail and status line stay alive. Escape, its Close button, and a tap on the veil close
/// it. Deletes itself when it is closed.
class Sheet : public QFrame {
    Q_OBJECT
public:
    /// `over` is what the veil covers. An open sheet on it is closed.
    Sheet(const QString& name, const QString& title, QWidget* over);
    ~Sheet() override;

    void open();
    void dismiss();

signals:
    void dismissed();

protected:
    /// The content's column, between title and buttons.
    QVBoxLayout* content() const { return content_; }
    void setTitle(const QString& title);
    QLabel* addText(const QString& text);
    /// In px at factor 1; before it is opened.
    void setCardWidth(int px);
    /// A button in the bar at the bottom: the primary one at its right end, others at its left.
    QAbstractButton* addButton(const QString& name, const QString& text, bool primary = false);

    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    QWidget* makeBar();
    void cover();

    QFrame* card_;
    QLabel* title_;
    QVBoxLayout* content_;
    QHBoxLayout* buttons_;
    int widthPx_;
    int aside_ = 0;  ///< buttons at the left end of the bar
    QPointer<QWidget> focusBefore_;
    bool dismissed_ = false;
};

}  // namespace app
