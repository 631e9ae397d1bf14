#pragma once

#include "conform/check.h"
#include "conform/latency.h"
#include "conform/options.h"

#include <QObject>

#include <memory>
#include <vector>

namespace sim {
class Controller;
}

namespace conform {

/// What came of one check.
struct Judged {
    Check check;
    Outcome outcome;
    double seconds = 0;
    QStringList violations;  ///< rules of the kit that the backend broke meanwhile
};

/// A backend behind an adapter, and the checks on it.
class Session {
public:
    explicit Session(const Options& options);
    ~Session();

    /// Makes the backend and waits until it can be reached. False, with the reason in `error`.
    bool prepare(QString* error);
    /// Makes one check.
    Judged judge(const Check& check);
    /// Measures times, after the checks.
    std::vector<Figure> measureTimes();
    QStringList allViolations() const { return violations_; }

private:
    bool makeBackend(QString* error);
    bool makeSimulator();
    bool loadBackend(QString* error);
    bool awaitReady(QString* error);
    void chooseRegisters();
    void setQuirk(bool on);

    Options options_;
    // Destroyed from below.
    std::unique_ptr<bridge::SignalPort> device_;
    std::unique_ptr<bridge::Controller> backend_;
    std::unique_ptr<bridge::Adapter> adapter_;  ///< of a backend that was loaded
    std::unique_ptr<sim::Controller> simulator_;
    std::unique_ptr<Bench> bench_;
    Subject subject_;
    QStringList violations_;
};

}  // namespace conform
