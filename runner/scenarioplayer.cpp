#include "runner/scenarioplayer.h"

#include "mendo/modulemanager.h"
#include "runner/hand.h"
#include "simulator/cell.h"
#include "simulator/controller.h"

#include <QDir>
#include <QFileInfo>
#include <QTimer>

namespace run {

ScenarioPlayer::ScenarioPlayer(const Scenario& scenario, Hand* hand, sim::Controller* controller,
                               sim::Cell* cell, const QString& projectFolder, QObject* parent)
    : QObject(parent),
      scenario_(scenario),
      hand_(hand),
      controller_(controller),
      cell_(cell),
      projectFolder_(projectFolder) {}

void ScenarioPlayer::start() {
    const std::vector<ScenarioEntry>& entries = scenario_.entries();
    for (std::size_t end = 1; end <= entries.size(); ++end) {
        if (end == entries.size() || entries[end].atMs != entries[end - 1].atMs)
            QTimer::singleShot(entries[end - 1].atMs, Qt::PreciseTimer, this, [this, end] { makeDue(end); });
    }
}

void ScenarioPlayer::makeDue(std::size_t end) {
    due_ = end;
    drain();
}

/// An entry may run a whole program before it returns; the event loop that runs inside it then goes
/// on with the entries behind it.
void ScenarioPlayer::drain() {
    while (next_ < due_) {
        const ScenarioEntry& entry = scenario_.entries()[next_++];
        if (next_ < due_)
            QMetaObject::invokeMethod(
                this, [this] { drain(); }, Qt::QueuedConnection);
        ++applying_;
        emit applying(entry.text);
        apply(entry);
        --applying_;
        emit applied();
    }
}

void ScenarioPlayer::apply(const ScenarioEntry& entry) {
    const QJsonValue value = entry.keys.value(QStringLiteral("value"));
    const QString name = entry.keys.value(QStringLiteral("name")).toString();
    sim::Quirk quirk;
    switch (entry.action) {
        case Action::Power:
            controller_->setPower(value.toString() == QLatin1String("on"));
            break;
        case Action::Mode:
            controller_->setMode(value.toString());
            break;
        case Action::Input:
            controller_->setInput(name, value.toBool());
            break;
        case Action::Key:
            controller_->reportKey(name, value.toBool());
            break;
        case Action::MotionError:
            controller_->failMotion(entry.keys.value(QStringLiteral("code")).toInt());
            break;
        case Action::Fault:
            cell_->setFault(name, value.toBool());
            break;
        case Action::Quirk:
            if (sim::Controller::quirkFromName(name, &quirk))
                controller_->setQuirk(quirk, value.toBool());
            break;
        default:
            applyToHand(entry);
    }
}

void ScenarioPlayer::applyToHand(const ScenarioEntry& entry) {
    const QJsonValue value = entry.keys.value(QStringLiteral("value"));
    const int line = entry.keys.value(QStringLiteral("line0")).toInt();
    const QString path = entry.keys.value(QStringLiteral("path")).toString();
    switch (entry.action) {
        case Action::Start:
            hand_->start(line);
            break;
        case Action::Once:
            hand_->once(line);
            break;
        case Action::Resume:
            hand_->resume();
            break;
        case Action::Pause:
            hand_->pause();
            break;
        case Action::Weld:
            hand_->setWeld(value.toBool());
            break;
        case Action::HandWeld:
            hand_->setHandWeld(value.toBool());
            break;
        case Action::Monitor:
            hand_->setMonitoring(value.toBool());
            break;
        case Action::Set:
            emit writing(path);
            hand_->set(path, value);
            break;
        case Action::Load:
            load(entry.keys.value(QStringLiteral("file")).toString());
            break;
        default:
            break;
    }
}

void ScenarioPlayer::load(const QString& file) {
    const QString path = QDir(projectFolder_).absoluteFilePath(file);
    if (!QFileInfo::exists(path))
        printWarning(QStringLiteral("%1: there is no such file, an empty program is loaded").arg(file));
    hand_->loadProject(mendo::ModuleManager::readFromJson(path));
    if (Hand::isIdle())
        hand_->resetResumeData();
}

}  // namespace run
