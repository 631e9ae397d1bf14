#pragma once

#include "bridge/adapter.h"
#include "bridge/batch.h"
#include "bridge/linkstate.h"
#include "bridge/results.h"
#include "bridge/signalbank.h"

#include <optional>

namespace mendo {
class ModuleObject;
}

namespace bridge {

/// The adapter's parts and the handlers of their signals.
struct Adapter::Private {
    Private(Adapter* adapter, KordService* robotService, Controller* robot, SignalPort* ioDevice,
            const Options& theOptions);

    void connectBackend();
    void connectParts();
    void handle(const KordCall& call);
    void orderWrites(const KordCall& call);
    void orderMotion(const KordCall& call, Motion::Kind kind);
    void release();
    void stop(bool isReset);
    void onHanded(const QString& path, const mendo::ModuleObject* node);
    void sendToolset();
    void answer(const QString& name, int code);
    void onResult(Motion::Kind kind, int id, int code);
    void onPosture(const Posture& told);
    void onMoving(bool moving);
    void onPower(bool on);
    void onMode(Mode mode);
    void onLink(LinkEnd end, bool up, const LinkReason& reason);
    void loseLink();
    void regainLink();
    void dropMotions();
    void writePower();
    void writeMode();
    void writeState(const QString& newState);
    void refreshState();
    JogAnswer jog(const JogMove& move, bool held);

    Adapter* q;
    KordService* service;
    Controller* backend;
    SignalPort* device;
    Options options;
    Abilities abilities;
    SignalBank bank;
    Results results;
    Batch batch;
    LinkState link;
    bool started = false;
    bool powered = false;  ///< as the backend tells
    bool held = false;     ///< the link was lost: off for the package until an operator switches on
    bool moving = false;   ///< as the backend tells
    bool braking = false;  ///< stopped, and the backend has not told yet that the arm stands
    Mode mode = Mode::Unknown;
    std::optional<Toolset> toolset;  ///< handed last
    QString state;
    Posture posture;
    bool hasPosture = false;
    double travelled = 0;
    double postureMs = 0;
};

}  // namespace bridge
