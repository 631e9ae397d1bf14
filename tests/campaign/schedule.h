#pragma once

#include <QJsonObject>
#include <QStringList>

#include <functional>

namespace campaign {

class World;

/// What came of one schedule.
struct Outcome {
    QStringList broken;  ///< what did not hold, in words, in the order in which it was broken
    QStringList diary;   ///< every event, and behind it what it broke
    qint64 virtualMs = 0;
};

/// Runs one schedule from its beginning to the end of everything that it set going. When the executor cannot
/// be brought to rest there is no way back to a clean beginning: the outcome goes to `stuck`, and the process
/// ends.
Outcome runSchedule(World& world, const QJsonObject& scenario,
                    const std::function<void(const Outcome&)>& stuck);

}  // namespace campaign
