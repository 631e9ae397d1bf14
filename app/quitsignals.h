#pragma once

#include <QObject>

namespace app {

/// Quits the event loop on SIGTERM, SIGINT and SIGHUP, as closing the window does, so that laser, gas and
/// wire are switched off.
///
/// Only one object at a time. The destructor restores the former signal handlers.
class QuitSignals : public QObject {
    Q_OBJECT
public:
    QuitSignals();
    ~QuitSignals() override;

private:
    void onSignal();

    int readEnd_ = -1;
};

}  // namespace app
