#include "bridge/linuxcnc/machinestate.h"

#include "bridge/motion.h"

namespace bridge::linuxcnc {

int errorCode(const QString& text) {
    struct Row {
        const char* part;
        int code;
    };
    constexpr Row rows[] = {
        {"fails kinematicsInverse", OutOfReach}, {"would exceed joint", JointLimit},
        {"positive limit", OutOfReach},          {"negative limit", OutOfReach},
        {"Radius to end of arc", NoCircle},      {"can't enable motion", DriveOff},
        {"stopped by enable input", JointLimit},
    };
    for (const Row& row : rows) {
        if (text.contains(QLatin1String(row.part), Qt::CaseInsensitive)) {
            return row.code;
        }
    }
    constexpr int ofTheController = -8;
    return ofTheController;
}

}  // namespace bridge::linuxcnc
