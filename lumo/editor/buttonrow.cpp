#include "editor/buttonrow.h"

#include "look/scale.h"
#include "widgets/wrapbutton.h"

#include <algorithm>
#include <numeric>

namespace lumo {

namespace {

// At factor 1.
constexpr int leastWidth = 48;
constexpr int aroundWords = 10;
constexpr int usualGap = 8;
constexpr int many = 8;
constexpr int mostGroupGap = 16;  // more than between buttons

int widthOver(const WrapButton* button, bool least) {
    const int words = (least ? button->leastFaceSize() : button->faceSize()).width();
    return std::max(look::px(leastWidth), words + look::px(aroundWords));
}

/// In two lines the widest, until all have room.
void wrapWidest(const QList<WrapButton*>& buttons, int room, QVector<int>* widths) {
    QVector<int> order(buttons.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [widths](int a, int b) { return widths->at(a) > widths->at(b); });
    int needed = std::accumulate(widths->begin(), widths->end(), 0);
    for (const int i : order) {
        if (needed <= room) {
            return;
        }
        const int least = std::min(widths->at(i), widthOver(buttons[i], true));
        needed -= widths->at(i) - least;
        (*widths)[i] = least;
    }
}

}  // namespace

QVector<QRect> equalPlaces(const QRect& row, int count) {
    const int between = count > many ? look::px(usualGap) / 2 : look::px(usualGap);
    const double each = double(row.width() - between * (count - 1)) / count;
    QVector<QRect> places;
    for (int i = 0; i < count; ++i) {
        const int left = row.left() + qRound(i * (each + between));
        const int right = row.left() + qRound(i * (each + between) + each);
        places.append(QRect(left, row.top(), right - left, row.height()));
    }
    return places;
}

QVector<QRect> groupPlaces(const QRect& row, const QList<QList<WrapButton*>>& groups) {
    QList<WrapButton*> all;
    QVector<int> widths;
    for (const auto& group : groups) {
        for (WrapButton* const button : group) {
            all.append(button);
            widths.append(widthOver(button, false));
        }
    }
    const int gaps = all.size() - 1, groupGaps = groups.size() - 1;
    int between = look::px(usualGap);
    wrapWidest(all, row.width() - gaps * between, &widths);
    const int needed = std::accumulate(widths.begin(), widths.end(), 0);
    if (needed + gaps * between > row.width()) {
        between /= 2;
    }
    const int left = row.width() - needed - gaps * between;
    const int wider = std::clamp(left / groups.size() / 2, 0, look::px(mostGroupGap));
    const double grow = double(left - wider * groupGaps) / all.size();  // below 0 where all is too narrow
    QVector<QRect> places;
    double x = row.left();
    for (const auto& group : groups) {
        for (int i = 0; i < group.size(); ++i) {
            const double width = widths[places.size()] + grow;
            places.append(QRect(qRound(x), row.top(), qRound(x + width) - qRound(x), row.height()));
            x += width + between;
        }
        x += wider;
    }
    return places;
}

}  // namespace lumo
