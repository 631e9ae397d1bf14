#pragma once

#include "app/state/panelstate.h"

#include <QList>
#include <QPointer>
#include <QWidget>

class QAbstractButton;

namespace app {

/// Leads to a place of the package's page as a hand does: presses its buttons and selects the row.
class Ways {
public:
    /// `page`: the package's page, which is shown.
    explicit Ways(QWidget* page) : page_(page) {}

    /// False for a place that is not on the package's page.
    bool lead(Place place, int line) const;
    /// The button of the package's navigation that opens a page; null where the package has no such page.
    [[nodiscard]] QAbstractButton* button(Place place) const;

    /// All buttons of that navigation.
    [[nodiscard]] QList<QAbstractButton*> navigation() const;

private:
    void selectLine(int line) const;

    QPointer<QWidget> page_;
};

}  // namespace app
