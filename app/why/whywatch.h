#pragma once

#include "app/why/packageflags.h"
#include "app/why/whytext.h"

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QVariantMap>

class QWidget;

namespace sim {
class Controller;
}

namespace app {

/// Power, mode and welding switches as they are now; the rest as it is at first.
WhyState readSwitches();

/// Follows the cell, what decides whether welding is permitted, what the run waits for, the stations and
/// whether editing is locked, and says it. Only reads. While a time is told it is told anew every tenth of
/// a second; at other times nothing is timed.
class WhyWatch : public QObject {
    Q_OBJECT
public:
    /// `controller` must outlive it. `page` is the package's, with the page of the stations in it.
    WhyWatch(const PackageFlags& package, const sim::Controller* controller, const QWidget* page,
             QObject* parent = nullptr);

    WhyState state() const;
    const QStringList& sentences() const { return sentences_; }
    bool isTiming() const { return tick_.isActive(); }

signals:
    /// The sentences have.
    void changed();

private slots:
    void refreshLater();

private:
    void followTree();
    void followStations(const QWidget* page);
    void refresh();
    void followPorts();
    void followLaser();
    void onState();
    void onStopped();
    void onResult(const QVariant& code);
    bool isBusy() const;
    int activity(const char* property) const;
    QVariantMap waiting() const;
    bool isInPulseGap() const;
    WhyState::Laser laser() const;
    void readWait(WhyState* state) const;
    void readPause(WhyState* state) const;
    void readStations(WhyState* state) const;

    PackageFlags package_;
    const sim::Controller* controller_;
    QPointer<QWidget> stations_;
    QPointer<QWidget> listening_;  ///< the stations' switch
    QStringList sentences_;
    QTimer tick_;
    QTimer gap_;  ///< runs while the laser is off for less than a pulse's gap
    bool laserOn_ = false;
    bool wasBusy_ = false;
    bool stopped_ = false;  ///< the last run by hand was, before its end
    int lastError_ = 0;
    bool posted_ = false;
};

}  // namespace app
