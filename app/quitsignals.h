#pragma once

#include <QObject>

namespace app {

/// Ends the program in order when the system asks for it (SIGTERM, SIGINT, SIGHUP): the event loop is
/// quit as by closing the window, so that laser, gas and wire are switched off.
///
/// One lives at a time, beside the application; when it goes, the signals do what they did before.
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
