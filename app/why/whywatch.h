#pragma once

#include "app/why/packageflags.h"
#include "app/why/whytext.h"

#include <QObject>
#include <QTimer>

namespace app {

/// Power, mode and welding switches as they are now; the rest as it is at first.
WhyState readSwitches();

/// Follows what decides whether welding is permitted, what the run waits for and whether editing is
/// locked, and says it. Only reads. While a time is told it is told anew every tenth of a second; at
/// other times nothing is timed.
class WhyWatch : public QObject {
    Q_OBJECT
public:
    /// The package's page has been made.
    explicit WhyWatch(const PackageFlags& package, QObject* parent = nullptr);

    WhyState state() const;
    const QStringList& sentences() const { return sentences_; }
    bool isTiming() const { return tick_.isActive(); }

signals:
    /// The sentences have.
    void changed();

private slots:
    void refreshLater();

private:
    void refresh();
    void followPorts();
    void readWait(WhyState* state) const;

    PackageFlags package_;
    QStringList sentences_;
    QTimer tick_;
    bool posted_ = false;
};

}  // namespace app
