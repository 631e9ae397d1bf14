#pragma once

#include <QMessageBox>
#include <QObject>
#include <QSet>
#include <QString>

namespace run {

/// Watches the message boxes of the process and answers them: a question with Yes, any other box with OK.
class MessageWatch : public QObject {
    Q_OBJECT
public:
    /// `ackMs`: how long a box stays; 0: until the next pass of the event loop.
    explicit MessageWatch(qint64 ackMs, QObject* parent = nullptr);

    /// Whether a box is open.
    bool isPending() const { return !pending_.isEmpty(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// `icon`: "warning", "critical", "information", "question" or "none".
    void shown(const QString& icon, const QString& title, const QString& text);
    /// Emitted before the button is pressed.
    void answered(const QString& title, const QString& answer);
    /// A box was closed or destroyed, answered or not.
    void closed();

private:
    void onShown(QMessageBox* box);
    void onClosed(QObject* box);
    void answer(QMessageBox* box);

    qint64 ackMs_;
    QSet<QObject*> pending_;
};

}  // namespace run
