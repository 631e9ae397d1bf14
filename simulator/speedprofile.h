#pragma once

#include <vector>

namespace sim {

/// The speed along a way of sections with a limit each, from rest to rest, as fast as a constant
/// acceleration allows: over one section the usual trapezoid. Metres, seconds.
class SpeedProfile {
public:
    struct Point {
        double s = 0, speed = 0;
    };

    /// `speed` must be positive. `stop`: at the section's end the speed is zero.
    void append(double length, double speed, bool stop);
    /// Call once, after the last section.
    void plan(double acceleration);

    double length() const { return length_; }
    double duration() const { return duration_; }
    /// Where one is at a time; the ends for times outside.
    Point at(double time) const;
    /// When one is there, the first time.
    double timeAt(double s) const;

private:
    struct Section {
        double from = 0, length = 0, limit = 0;
        bool stop = false;
        double start = 0;                       ///< time
        double first = 0, peak = 0, last = 0;   ///< speeds
        double rise = 0, cruise = 0, fall = 0;  ///< times
    };
    void shape(Section& section) const;

    std::vector<Section> sections_;
    double acceleration_ = 0, length_ = 0, duration_ = 0;
};

}  // namespace sim
