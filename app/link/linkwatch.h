#pragma once

#include "bridge/linkreason.h"
#include "bridge/rule.h"

#include <QDateTime>
#include <QObject>
#include <QVector>

#include <array>

namespace sim {
class Controller;
}

namespace workcell {
struct OutsideNames;
}

namespace app {

/// The link to the robot controller or to the I/O device, since the panel's start.
struct LinkFacts {
    QString name;  ///< "LinuxCNC", "Modbus TCP, map.json"; empty for a simulated one
    bool isUp = false;
    bridge::LinkReason reason;  ///< why it is not up
    int losses = 0;
    QDateTime lostAt;            ///< the last time
    bridge::LinkReason lostFor;  ///< the reason then
};

/// A rule that the controller has broken since the panel's start.
struct BrokenRule {
    bridge::Rule rule;
    int count = 0;
    QDateTime last, told;
};

/// Watches the links to controller and device, and what the controller does wrong.
class LinkWatch : public QObject {
    Q_OBJECT
public:
    /// `controller` must outlive it.
    LinkWatch(const sim::Controller* controller, const workcell::OutsideNames& names, QObject* parent);

    /// Whether the robot or the device is not simulated.
    bool isOutside() const;
    const LinkFacts& link(bridge::LinkEnd end) const { return links_[std::size_t(end)]; }
    /// In the order in which they were broken first.
    const QVector<BrokenRule>& broken() const { return broken_; }

signals:
    void changed();
    void lost(const app::LinkFacts& link);
    /// Not for the first time.
    void regained(const app::LinkFacts& link);
    /// At most once a minute for each rule.
    void broke(bridge::Rule rule);

private:
    void onLink();
    void onViolated(bridge::Rule rule);

    const sim::Controller* controller_;
    std::array<LinkFacts, 2> links_;
    QVector<BrokenRule> broken_;
};

}  // namespace app
