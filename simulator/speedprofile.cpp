#include "simulator/speedprofile.h"

#include <algorithm>
#include <cmath>

namespace sim {

void SpeedProfile::append(double length, double speed, bool stop) {
    Section section;
    section.from = length_;
    section.length = length;
    section.limit = speed;
    section.stop = stop;
    sections_.push_back(section);
    length_ += length;
}

void SpeedProfile::plan(double acceleration) {
    acceleration_ = acceleration;
    // Backwards: the speeds from which the rest can be braked. Forwards: the speeds that can be reached.
    double allowed = 0;
    for (auto section = sections_.rbegin(); section != sections_.rend(); ++section) {
        section->last = section->stop ? 0 : allowed;
        const double braked = std::sqrt(section->last * section->last + 2 * acceleration * section->length);
        allowed = std::min(section->limit, braked);
        if (section + 1 != sections_.rend()) {
            allowed = std::min(allowed, (section + 1)->limit);
        }
    }
    double speed = 0;
    for (Section& section : sections_) {
        section.first = speed;
        section.last = std::min(section.last, std::sqrt(speed * speed + 2 * acceleration * section.length));
        section.start = duration_;
        shape(section);
        duration_ += section.rise + section.cruise + section.fall;
        speed = section.last;
    }
}

void SpeedProfile::shape(Section& section) const {
    const double a = acceleration_, first = section.first, last = section.last;
    const double crossing = std::sqrt((first * first + last * last) / 2 + a * section.length);
    section.peak = std::max({std::min(section.limit, crossing), first, last});
    section.rise = (section.peak - first) / a;
    section.fall = (section.peak - last) / a;
    const double sloped = (2 * section.peak * section.peak - first * first - last * last) / (2 * a);
    section.cruise = section.peak > 0 ? std::max(section.length - sloped, 0.0) / section.peak : 0.0;
}

SpeedProfile::Point SpeedProfile::at(double time) const {
    if (sections_.empty() || time <= 0) {
        return {};
    }
    if (time >= duration_) {
        return {length_, 0};
    }
    const auto after =
        std::upper_bound(sections_.begin(), sections_.end(), time,
                         [](double value, const Section& section) { return value < section.start; });
    const Section& section = *(after - 1);
    const double a = acceleration_;
    const double t = time - section.start;
    if (t < section.rise) {
        return {section.from + section.first * t + a * t * t / 2, section.first + a * t};
    }
    const double risen = (section.first + section.peak) / 2 * section.rise;
    if (t < section.rise + section.cruise) {
        return {section.from + risen + section.peak * (t - section.rise), section.peak};
    }
    const double left = std::max(section.rise + section.cruise + section.fall - t, 0.0);
    return {section.from + section.length - (section.last * left + a * left * left / 2),
            section.last + a * left};
}

double SpeedProfile::timeAt(double s) const {
    if (s <= 0 || sections_.empty()) {
        return 0;
    }
    if (s >= length_) {
        return duration_;
    }
    const auto after =
        std::upper_bound(sections_.begin(), sections_.end(), s,
                         [](double value, const Section& section) { return value < section.from; });
    const Section& section = *(after - 1);
    const double a = acceleration_;
    // Time over a distance from an initial speed with constant acceleration, in the form of the quadratic
    // formula that does not subtract nearly equal numbers.
    const auto over = [a](double speed, double distance) {
        const double root = std::sqrt(speed * speed + 2 * a * std::max(distance, 0.0));
        return root > 0 ? 2 * std::max(distance, 0.0) / (speed + root) : 0.0;
    };
    const double distance = s - section.from;
    const double risen = (section.first + section.peak) / 2 * section.rise;
    const double fallen = (section.last + section.peak) / 2 * section.fall;
    if (distance < risen) {
        return section.start + over(section.first, distance);
    }
    if (distance <= section.length - fallen) {
        return section.start + section.rise + (distance - risen) / section.peak;
    }
    const double whole = section.rise + section.cruise + section.fall;
    return section.start + whole - over(section.last, section.length - distance);
}

}  // namespace sim
