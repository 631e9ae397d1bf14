#include "app/parts/partwatcher.h"

#include "app/results/runresult.h"
#include "mendo/modulemanager.h"
#include "program/words.h"
#include "workcell/runwatch.h"

#include <QFileInfo>

namespace app {

PartWatcher::PartWatcher(PartCounter* counter, const workcell::RunWatch* runs, const QWidget* page,
                         QObject* parent)
    : QObject(parent), counter_(counter), runs_(runs), page_(page) {
    connect(runs, &workcell::RunWatch::begun, this, &PartWatcher::onBegun);
    connect(counter, &PartCounter::changed, this, &PartWatcher::changed);
    lookForProject();
}

/// A start elsewhere than at the first line, or in an open weld, goes on with a part that was stopped.
void PartWatcher::onBegun() {
    if (!runs_->isStep()) {
        begins_ = m(prog::key::triggerStart)->getInt() == 0 && !m(prog::key::weldOpen)->getBool(false);
    }
}

void PartWatcher::add(const RunResult& result) {
    constexpr double msPerS = 1000;
    if (result.projectFile.isEmpty() || result.record.isDry) {
        return;
    }
    project_ = result.projectFile;
    counter_->addRun(result.projectFile, qint64(result.record.seconds * msPerS), begins_,
                     result.record.reason == QLatin1String("finished"));
}

void PartWatcher::lookForProject() {
    const QString path = page_ ? page_->property("projectFile").toString() : QString();
    const QString open = path.isEmpty() ? QString() : QFileInfo(path).absoluteFilePath();
    if (open != open_) {
        open_ = open;
        setProject(open);
    }
}

void PartWatcher::setProject(const QString& project) {
    project_ = project;
    emit changed();
}

}  // namespace app
