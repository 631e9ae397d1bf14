#pragma once

#include "app/touch/entryfield.h"

#include <QWidget>

#include <vector>

class QLabel;
class QPushButton;
class QToolButton;

namespace app {

class PadDisplay;

/// Keys for a figure, with what the field takes and what stood in it before. Takes no focus: it types into
/// the field, whose rules hold, and a keyboard goes on working beside it.
class NumberPad : public QWidget {
    Q_OBJECT
public:
    explicit NumberPad(QWidget* parent = nullptr);

    /// Types into this field from now on; the first key replaces what stands in it.
    void begin(const EntryField& field);
    /// Leaves the field as it is.
    void end();

    QSize sizeHint() const override;

signals:
    /// OK or Cancel: the field has its value.
    void done();
    /// The operator wants no number pad any more.
    void switchedOff();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QPushButton* addKey(const QString& name, const QString& text);
    void makeHead();
    void makeKeys();
    void makeAnswers();
    void fit();
    void type(QChar letter);
    void clear();
    void takeBack();
    void accept();
    void cancel();
    void refresh();
    void refreshSoon();
    void refreshKeys();

    EntryField field_;
    QString before_;
    bool due_ = false;
    QLabel* caption_;
    QToolButton* off_;
    PadDisplay* display_;
    QLabel* sign_;
    QLabel* limits_;
    std::vector<QPushButton*> keys_;
    QPushButton* erase_ = nullptr;
    QPushButton* clear_ = nullptr;
    QPushButton* minus_ = nullptr;
    QPushButton* point_ = nullptr;
    QPushButton* back_ = nullptr;
    QLabel* backValue_ = nullptr;
    QPushButton* ok_ = nullptr;
    QPushButton* cancel_ = nullptr;
};

}  // namespace app
