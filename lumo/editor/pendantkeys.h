#pragma once

#include <QObject>

class QWidget;

namespace lumo {

/// The clicks of the pendant's keys that are meant for a page: those that come while its window is
/// active, the page is on the screen and no point is being taught.
class PendantKeys : public QObject {
    Q_OBJECT
public:
    explicit PendantKeys(QWidget* page);

signals:
    void next();
    void last();
    void center();
    void enter();
    void remove();

private:
    void follow(const char* name, void (PendantKeys::*clicked)());

    QWidget* page_;
};

}  // namespace lumo
