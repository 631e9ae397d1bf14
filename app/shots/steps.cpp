#include "app/shots/steps.h"

#include "app/shots/scene.h"
#include "simulator/controller.h"

#include <QFile>

namespace app {

void press(Scene& s, const char* button) {
    s.click(QLatin1String(button));
}

void power(Scene& s) {
    s.controller()->setPower(true);
}

/// From the first line, whatever was run before.
void startSample(Scene& s) {
    press(s, "btnReset");
    power(s);
    press(s, "btnStart");
    s.settle();
}

/// Opens a project with this text.
void openText(Scene& s, const char* fileName, const char* text) {
    QFile file{QString::fromLatin1(fileName)};
    if (file.open(QIODevice::WriteOnly)) {
        file.write(text);
    }
    file.close();
    s.openProject(file.fileName());
}

}  // namespace app
