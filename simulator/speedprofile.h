#pragma once

#include <vector>

namespace sim {

/// The fastest speed along a path of sections, from rest to rest, with a speed limit for each section and
/// one constant acceleration: a trapezoid for a single section. Metres, seconds.
class SpeedProfile {
public:
    struct Point {
        double s = 0, speed = 0;
    };

    /// `speed` is the limit and must be positive. `stop`: the speed is zero at the section's end.
    void append(double length, double speed, bool stop);
    /// Call once, after the last section.
    void plan(double acceleration);

    double length() const { return length_; }
    double duration() const { return duration_; }
    /// Position and speed at a time; clamped to the ends.
    Point at(double time) const;
    /// The first time at which `s` is reached.
    double timeAt(double s) const;

private:
    struct Section {
        double from = 0, length = 0, limit = 0;
        bool stop = false;
        double start = 0;                       ///< time at its beginning
        double first = 0, peak = 0, last = 0;   ///< speeds
        double rise = 0, cruise = 0, fall = 0;  ///< durations
    };
    void shape(Section& section) const;

    std::vector<Section> sections_;
    double acceleration_ = 0, length_ = 0, duration_ = 0;
};

}  // namespace sim
