#include "runner/messagewatch.h"

#include "runner/longtime.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QEvent>

namespace run {

namespace {

QString iconWord(QMessageBox::Icon icon) {
    switch (icon) {
        case QMessageBox::Information:
            return QStringLiteral("information");
        case QMessageBox::Warning:
            return QStringLiteral("warning");
        case QMessageBox::Critical:
            return QStringLiteral("critical");
        case QMessageBox::Question:
            return QStringLiteral("question");
        case QMessageBox::NoIcon:
            break;
    }
    return QStringLiteral("none");
}

/// The button to press, and its word in the trace; null for a box without buttons.
QAbstractButton* choose(const QMessageBox* box, QString* word) {
    if (QAbstractButton* yes = box->button(QMessageBox::Yes)) {
        *word = QStringLiteral("Yes");
        return yes;
    }
    if (QAbstractButton* ok = box->button(QMessageBox::Ok)) {
        *word = QStringLiteral("OK");
        return ok;
    }
    const QList<QAbstractButton*> buttons = box->buttons();
    if (buttons.isEmpty()) {
        return nullptr;
    }
    *word = buttons.first()->text();
    return buttons.first();
}

}  // namespace

MessageWatch::MessageWatch(qint64 ackMs, QObject* parent) : QObject(parent), ackMs_(ackMs) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool MessageWatch::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show || event->type() == QEvent::Hide) {
        auto* box = qobject_cast<QMessageBox*>(watched);
        if (box && !event->spontaneous()) {
            if (event->type() == QEvent::Show) {
                onShown(box);
            } else {
                onClosed(box);
            }
        }
    }
    return QObject::eventFilter(watched, event);
}

void MessageWatch::onShown(QMessageBox* box) {
    pending_.insert(box);
    connect(box, &QObject::destroyed, this, &MessageWatch::onClosed, Qt::UniqueConnection);
    callAfter(ackMs_, box, [this, box] { answer(box); });
    emit shown(iconWord(box->icon()), box->windowTitle(), box->text());
}

void MessageWatch::onClosed(QObject* box) {
    if (pending_.remove(box)) {
        emit closed();
    }
}

void MessageWatch::answer(QMessageBox* box) {
    if (!pending_.contains(box)) {
        return;
    }
    QString word;
    QAbstractButton* button = choose(box, &word);
    emit answered(box->windowTitle(), word);
    if (button) {
        button->click();
    } else {
        box->close();
    }
}

}  // namespace run
