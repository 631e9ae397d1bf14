// What the backend tells, and what becomes of the link.

#include "bridge/adapterprivate.h"
#include "bridge/nodes.h"
#include "bridge/words.h"
#include "kord/kordservice.h"
#include "mendo/clock.h"
#include "mendo/modulemanager.h"

#include <cmath>

namespace bridge {

namespace {

const QString idleWord = QStringLiteral("idle");
const QString movingWord = QStringLiteral("moving");

double distance(const Pose& a, const Pose& b) {
    return std::hypot(a.trans[0] - b.trans[0], a.trans[1] - b.trans[1], a.trans[2] - b.trans[2]);
}

}  // namespace

// --- The backend ---------------------------------------------------------------------------------

void Adapter::Private::onResult(Motion::Kind kind, int id, int code) {
    if (code < 0) {
        batch.clear();
    }
    if (options.repair) {
        refreshState();
    }
    const QString command = q->resultCommand(kind);
    emit q->result(command, id, code);
    service->commandNode(command)->setValue(q, code);
    if (options.repair) {
        emit q->caughtUp();
    }
}

void Adapter::Private::onPosture(const Posture& told) {
    travelled += hasPosture ? distance(posture.pose, told.pose) : 0;
    posture = told;
    postureMs = double(mendo::Clock::current().elapsedMs()) - told.ageMs;
    hasPosture = true;
    results.notePosture();
    bridge::writePosture(q, service, told);
    if (!abilities.progress && moving) {
        emit q->postureMoved();
    }
}

void Adapter::Private::onMoving(bool on) {
    moving = on;
    if (!on) {
        braking = false;
        if (!abilities.progress) {
            emit q->cameToRest();
        }
    }
    if (options.repair) {
        refreshState();
    } else {
        writeState(on ? movingWord : idleWord);
    }
    results.setMoving(on);
}

/// Moving from the release to the last result.
void Adapter::Private::refreshState() {
    const bool isMoving = moving || braking || results.hasReleased();
    writeState(isMoving ? movingWord : idleWord);
}

void Adapter::Private::writeState(const QString& newState) {
    if (newState != state) {
        state = newState;
        m(word::state)->setValue(q, newState);
    }
}

/// Drives that come on again while there is a link were switched on by somebody.
void Adapter::Private::onPower(bool on) {
    held = held && !(link.isUp() && on && !powered);
    powered = on;
    if (!on) {
        dropMotions();
    }
    if (link.isUp()) {
        writePower();
    }
}

void Adapter::Private::writePower() {
    const bool isOn = powered && !held && link.isUp();
    const QString word = isOn ? QStringLiteral("on") : QStringLiteral("off");
    if (!options.repair || m(word::power)->getString() != word) {
        m(word::power)->setValue(q, word);
    }
}

void Adapter::Private::onMode(Mode told) {
    mode = told;
    if (link.isUp()) {
        writeMode();
    }
}

void Adapter::Private::writeMode() {
    m(word::mode)->setValue(q, modeWord(link.isUp() ? mode : Mode::Unknown));
}

// --- The link ------------------------------------------------------------------------------------

void Adapter::Private::onLink(LinkEnd end, bool up, const LinkReason& reason) {
    const bool wasUp = link.isUp();
    link.set(end, up, reason);
    bank.setLinked(end == LinkEnd::Robot ? backend->signalPort() : device, up, reason.text());
    if (wasUp && !link.isUp()) {
        loseLink();
    } else if (!wasUp && link.isUp()) {
        regainLink();
    }
    emit q->linkChanged(link.isUp(), q->linkReason());
}

/// A package that sees the loss of power stops the robot and switches all outputs off, as far as they can
/// be reached.
void Adapter::Private::loseLink() {
    held = true;
    dropMotions();
    writePower();
    writeMode();
    if (link.isUp(LinkEnd::Robot)) {
        stop(false);
        backend->setPower(false);
        return;
    }
    // Whether the arm still moves is not known; no order of a package moves it.
    moving = braking = false;
    results.setMoving(false);
    writeState(idleWord);
}

void Adapter::Private::regainLink() {
    if (held) {
        backend->setPower(false);
    }
    sendToolset();
    writePower();
    writeMode();
}

}  // namespace bridge
