#include "tools/pictures/tour.h"

#include "simulator/controller.h"
#include "tools/pictures/scene.h"

#include <QFile>

namespace pictures {

const std::vector<Stop>& stops() {
    static const std::vector<Stop> all = [] {
        std::vector<Stop> collected;
        for (const auto tour :
             {projectStops, panelStops, editorStops, runStops, statusStops, parameterStops, portStops,
              stationStops, deviceStops, noticeStops, sheetStops, viewStops, railStops, touchStops}) {
            const std::vector<Stop> part = tour();
            collected.insert(collected.end(), part.begin(), part.end());
        }
        return collected;
    }();
    return all;
}

void press(Scene& s, const char* button) {
    s.click(QLatin1String(button));
}

void power(Scene& s) {
    s.controller()->setPower(true);
}

void startSample(Scene& s) {
    press(s, "btnReset");
    power(s);
    press(s, "btnStart");
    s.settle();
}

void openText(Scene& s, const char* fileName, const char* text) {
    QFile file{QString::fromLatin1(fileName)};
    if (file.open(QIODevice::WriteOnly)) {
        file.write(text);
    }
    file.close();
    s.openProject(file.fileName());
}

}  // namespace pictures
