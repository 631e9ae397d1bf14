#pragma once

#include <QMessageBox>
#include <QObject>
#include <QSet>
#include <QString>

namespace run {

/// Sees the message boxes of the process and answers them as an operator would: the question with
/// Yes, the rest with OK.
class MessageWatch : public QObject {
    Q_OBJECT
public:
    /// `ackMs`: how long a box stays; 0: until the next pass of the event loop.
    explicit MessageWatch(int ackMs, QObject* parent = nullptr);

    /// Whether a box waits for its answer.
    bool isPending() const { return !pending_.isEmpty(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// `icon`: "warning", "critical", "information", "question" or "none".
    void shown(const QString& icon, const QString& title, const QString& text);
    /// Just before the button is pressed.
    void answered(const QString& title, const QString& answer);
    /// A box is gone, answered or not.
    void closed();

private:
    void onShown(QMessageBox* box);
    void onGone(QObject* box);
    void answer(QMessageBox* box);

    int ackMs_;
    QSet<QObject*> pending_;
};

}  // namespace run
