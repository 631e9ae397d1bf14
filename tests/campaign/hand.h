#pragma once

#include "campaign/pageworld.h"

namespace sim {
class Controller;
}

namespace campaign {

/// Somebody at the page: clicks, chooses and types what is on the screen. What is not there, or not within
/// reach, is left alone. Everything may return late, from a run that a click has begun, and find the page
/// gone.
class Hand {
public:
    explicit Hand(PageWorld& world) : world_(world) {}

    /// `deed`: the name of what is clicked; or "row" (of the table in sight), "combo", "box" and "field" (the
    /// one with that number on the page in sight), "listen", "weld", "handWeld" (switches), "jump", "key".
    void doThis(const QString& deed, int number, int mode, bool on, sim::Controller& controller);
    /// Answers the dialog that was opened last: "ok", "cancel" or "escape"; before that `number` decides what
    /// is entered, 0: nothing.
    void reply(const QString& with, int number);
    /// Answers everything that is open, and what that opens.
    void replyToAll(int number);

private:
    [[nodiscard]] QWidget* inSight(const QString& name) const;
    template <typename Widget>
    [[nodiscard]] Widget* numbered(int number) const;
    void selectRow(int row) const;
    void choose(int number, int item) const;
    void type(int number, int seed) const;
    void jump(int line) const;

    PageWorld& world_;
};

}  // namespace campaign
