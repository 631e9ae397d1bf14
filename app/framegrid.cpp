#include "app/framegrid.h"

#include "look/scale.h"

namespace app::framegrid {

namespace {

constexpr int grid = 8;
constexpr int normalFrom = 1280, wideFrom = 1600;

int logical(int window) {
    return int(window / look::factor());
}

int roundedUp(int length) {
    return (length + grid - 1) / grid * grid;
}

}  // namespace

bool isNarrow(int window) {
    return logical(window) < normalFrom;
}

int headerHeight() {
    return roundedUp(look::px(56));
}

/// Its line of text grows, the space round it does not.
int statusHeight() {
    return look::px(40) / grid * grid;
}

int railWidth(int window) {
    return roundedUp(look::px(isNarrow(window) ? 80 : 96));
}

int stateWidth(int window) {
    if (isNarrow(window)) {
        return look::px(272);
    }
    return look::px(logical(window) < wideFrom ? 328 : 392);
}

int wideDock(int window) {
    if (logical(window) < wideFrom) {
        return look::px(400);
    }
    return roundedUp(look::px(look::factor() < 1.5 ? 440 : 468));
}

}  // namespace app::framegrid
