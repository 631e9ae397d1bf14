#pragma once

#include "app/backup/backup.h"
#include "app/sheet/sheet.h"

namespace app {

/// Asks whether to restore a backup, and lists what would be replaced.
class RestoreSheet : public Sheet {
    Q_OBJECT
public:
    RestoreSheet(const RestorePlan& plan, QWidget* over);

signals:
    void agreed();
};

}  // namespace app
