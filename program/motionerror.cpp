#include "program/motionerror.h"

#include <QtGlobal>

#include <algorithm>
#include <iterator>

namespace prog {

namespace {

#define TEXT(words) QT_TRANSLATE_NOOP("MotionError", words)

/// The last row is for codes that have none.
constexpr MotionError rows[] = {
    {-1, TEXT("a point of the path is out of the robot's reach"),
     TEXT("teach the point closer to the robot, or move the part")},
    {-2, TEXT("an axis would pass its limit on the way"),
     TEXT("teach the point with the arm in another posture, or go there with a joint line first")},
    {-3, TEXT("the points of the arc coincide or lie on one line"),
     TEXT("teach the points of the line again")},
    {-4, TEXT("the drives were off when the motion began"),
     TEXT("switch the drives on, then start the program again")},
    {-5, TEXT("the motion has no speed"), TEXT("enter a speed above 0 in the line")},
    {-6, TEXT("the target is missing or is not one of this robot"),
     TEXT("teach the point of the line again")},
    {-7, TEXT("an axis would have to turn faster than it can"),
     TEXT("enter a lower speed, or teach another posture")},
    {-9, TEXT("the robot reached the target and reported a fault there"),
     TEXT("clear the fault at the robot's controller, then start the program again")},
    {0, TEXT("the robot's controller reports a fault of its own"),
     TEXT("look up the number in the controller's manual and clear the fault there")},
};

}  // namespace

const MotionError& motionError(int code) {
    const auto* const found = std::find_if(std::begin(rows), std::end(rows),
                                           [code](const MotionError& row) { return row.code == code; });
    return found == std::end(rows) ? *std::prev(std::end(rows)) : *found;
}

std::vector<const char*> motionErrorWords() {
    std::vector<const char*> words;
    for (const MotionError& row : rows) {
        words.insert(words.end(), {row.reason, row.remedy});
    }
    return words;
}

}  // namespace prog
