#pragma once

#include "app/touch/entryfield.h"

#include <QObject>
#include <QPointer>
#include <QRect>

class QMouseEvent;

namespace app {

class DockArea;
class Keyboard;
class NumberPad;

/// Opens the number pad or the keyboard for the field that the operator taps: in the panel's window as a
/// dock, or as a drawer that shifts what is above it, and beside or below a dialog as a window of its own.
/// They close with the field. A field that gets the focus by the Tab key opens none.
class TouchInput : public QObject {
    Q_OBJECT
public:
    /// The dock of the number pad.
    static const QString padId;

    /// Adds the dock.
    explicit TouchInput(DockArea* docks, QObject* parent = nullptr);
    ~TouchInput() override;

    /// Closes what is open; the field keeps what was typed.
    void close();

signals:
    /// Something that the operator is to know.
    void told(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void onPress(QWidget* widget);
    void onRelease(QWidget* widget);
    void openAtFocus();
    void open(const EntryField& field);
    void openPad(const EntryField& field);
    void openKeyboard(const EntryField& field);
    void follow(QWidget* now);
    void switchOff();
    void place();
    void placeDrawer();
    void placeWindow();
    void putBack();
    [[nodiscard]] bool isOwn(const QWidget* widget) const;
    [[nodiscard]] QWidget* dialog() const;
    [[nodiscard]] QRect room() const;
    QWidget* windowFor(QWidget* content);

    DockArea* docks_;
    QString language_;            ///< of the letters that were shown last
    EntryField field_;            ///< that is typed into
    QPointer<QWidget> released_;  ///< what was tapped
    QPointer<QWidget> windowBefore_;
    bool due_ = false;
    NumberPad* pad_ = nullptr;           ///< in the dock
    QPointer<NumberPad> dialogPad_;      ///< in a window
    QPointer<Keyboard> drawer_;          ///< over the docks' bottom
    QPointer<Keyboard> dialogKeyboard_;  ///< in a window
    QPointer<QWidget> keysWindow_;       ///< of the keys at a dialog
    QPointer<QWidget> shifted_;          ///< what the drawer has shifted
    int shift_ = 0;
    QPointer<QWidget> movedDialog_;
    QRect dialogBefore_;
};

}  // namespace app
