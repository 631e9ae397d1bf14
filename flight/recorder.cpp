#include "flight/recorder.h"

#include "flight/posturerecord.h"

#include "json/jsonwriter.h"
#include "kord/kordservice.h"
#include "mendo/clock.h"
#include "mendo/modulemanager.h"
#include "program/words.h"

#include <QDateTime>
#include <QThread>

#include <cstring>

namespace flight {

using mendo::JsonWriter;
using mendo::ModuleObject;
using By = Record::By;
using Inside = Record::Inside;
using Kind = Record::Kind;
using Tree = Record::Tree;

namespace {

constexpr qint64 wallEveryMs = 1000;  // the wall clock is asked that often
constexpr qint64 postureEveryMs = 5;  // postures that nothing follows are written no more often
constexpr qint64 keyFramesInRing = 8;

const QString pathKey = QStringLiteral("p");
const QString valueKey = QStringLiteral("v");
const QString countKey = QStringLiteral("n");

}  // namespace

Recorder::Recorder(Sink* sink, Facts facts)
    : sink_(sink), facts_(std::move(facts)), keys_(&trees_, sink, [this](Kind kind, const QByteArray& body) {
          Record record;
          record.kind = kind;
          record.body = body;
          return append(&record);
      }) {
    Record record;
    record.kind = Kind::Opened;
    JsonWriter body;
    body.beginObject();
    writeFacts(&body);
    put(&record, &body);
    install(this);
}

Recorder::~Recorder() {
    flushPosture();
}

void Recorder::noteQuitting() {
    if (!isQuitting_) {
        isQuitting_ = true;
        flushPosture();
        Record record;
        record.kind = Kind::Quitting;
        JsonWriter body;
        put(&record, &body.beginObject());
    }
}

void Recorder::writeFacts(JsonWriter* body) const {
    body->key(QStringLiteral("version")).string(facts_.version);
    body->key(QStringLiteral("language")).string(facts_.language);
    body->key(QStringLiteral("exact")).boolean(facts_.isExact);
    body->key(QStringLiteral("format")).integer(recordingFormat);
}

// --- Who and where ----------------------------------------------------------------------------------

By Recorder::byOf(const Place& place, const QObject* sender) const {
    if (place.isPosture) {
        return By::Cell;
    }
    if (sender && sender->inherits("LumoExecutor")) {
        return By::Executor;
    }
    const bool isPages = place.tree == Tree::Data && place.part && place.part->name() == QLatin1String("pel");
    if (!place.isPackage && !isPages) {
        return By::Cell;
    }
    if (!sender) {
        return By::Nobody;
    }
    return std::strstr(sender->metaObject()->className(), "SignalsBind") ? By::Station : By::Operator;
}

/// A wait in a loop of its own inside a write or call is no part of it.
Inside Recorder::insideAt(int loopLevel) const {
    return !frames_.empty() && frames_.back().loopLevel == loopLevel ? frames_.back().inside : Inside::Loop;
}

/// What is written to a node that is not recorded is inside of the same.
void Recorder::push(const Place& place, By by, int loopLevel) {
    Inside inside = insideAt(loopLevel);
    if (place.isKnown) {
        inside = by == By::Executor ? Inside::Executor : by == By::Cell ? Inside::Cell : Inside::Act;
    }
    frames_.push_back({inside, loopLevel});
}

void Recorder::returned() {
    if (!frames_.empty()) {
        frames_.pop_back();
    }
}

// --- Records ----------------------------------------------------------------------------------------

void Recorder::stamp(Record* record) {
    const mendo::Clock& clock = mendo::Clock::current();
    record->ms = clock.elapsedMs();
    if (wallAtMs_ < 0 || record->ms - wallAtMs_ >= wallEveryMs) {
        wallAtMs_ = record->ms;
        wallOffsetMs_ = clock.now().toMSecsSinceEpoch() - record->ms;
    }
    record->wallMs = record->ms + wallOffsetMs_;
}

quint64 Recorder::append(Record* record) {
    stamp(record);
    return sink_->append(*record);
}

/// `body`: an object that is open.
void Recorder::put(Record* record, JsonWriter* body) {
    record->body = body->endObject().take();
    append(record);
    keepKeyFrame();
}

/// False for a node that is not recorded. `all`: the node's own children are others now.
bool Recorder::begin(const ModuleObject* node, const QObject* sender, Kind kind, Record* record, bool all) {
    const Place place = trees_.placeOf(node);
    const By by = place.isKnown ? byOf(place, sender) : By::Nobody;
    const int loopLevel = QThread::currentThread()->loopLevel();
    record->inside = insideAt(loopLevel);
    push(place, by, loopLevel);
    if (!place.isKnown) {
        return false;
    }
    if (!place.isPosture || !posture_) {
        keys_.touched(place, all && (node == place.part || !place.part));
    }
    if (place.isPosture) {
        notePosture(record->inside, kind != Kind::Value || node == trees_.posture());
        return false;
    }
    flushPosture();
    record->kind = kind;
    record->by = by;
    record->tree = place.tree;
    return true;
}

void Recorder::valueSet(const ModuleObject* node, const QString& below, const QVariant& value,
                        const QObject* sender) {
    const bool isBelow =
        !below.isEmpty() && (node == trees_.root(Tree::Host) || trees_.placeOf(node).isKnown);
    const ModuleObject* const leaf = isBelow ? node->r(below) : node;
    Record record;
    if (!begin(leaf, sender, Kind::Value, &record, isBelow)) {
        return;
    }
    if (record.by != By::Executor && isStart(leaf)) {
        runAsked(&record, leaf, value);
        return;
    }
    JsonWriter body;
    body.beginObject().key(pathKey).string(Trees::pathOf(leaf, record.tree));
    put(&record, &body.key(valueKey).variant(value));
}

void Recorder::announced(const ModuleObject* node) {
    Record record;
    if (begin(node, nullptr, Kind::Announced, &record, false)) {
        JsonWriter body;
        body.beginObject().key(pathKey).string(Trees::pathOf(node, record.tree));
        put(&record, &body);
    }
}

void Recorder::contentSet(const ModuleObject* node, const QObject* sender) {
    Record record;
    if (!begin(node, sender, Kind::Content, &record, true)) {
        return;
    }
    JsonWriter body;
    body.beginObject().key(pathKey).string(Trees::pathOf(node, record.tree)).key(valueKey).node(node);
    put(&record, &body);
}

void Recorder::inserted(const ModuleObject* parent, int position, const QObject* sender) {
    Record record;
    if (!begin(parent, sender, Kind::Inserted, &record, true)) {
        return;
    }
    JsonWriter body;
    body.beginObject().key(pathKey).string(Trees::pathOf(parent, record.tree));
    body.key(QStringLiteral("i")).integer(position).key(countKey).integer(parent->cmobjCount());
    if (!parent->isList()) {
        body.key(QStringLiteral("k")).string(parent->c(position)->name());
    }
    put(&record, &body.key(valueKey).child(parent, position));
}

void Recorder::removing(const ModuleObject* parent, int position, const QObject* sender) {
    Record record;
    if (!begin(parent, sender, Kind::Removed, &record, true)) {
        return;
    }
    JsonWriter body;
    body.beginObject().key(pathKey).string(Trees::pathOf(parent, record.tree));
    body.key(QStringLiteral("i")).integer(position).key(countKey).integer(parent->cmobjCount() - 1);
    put(&record, &body);
}

void Recorder::moved(const ModuleObject* parent, int from, int to, const QObject* sender) {
    Record record;
    if (!begin(parent, sender, Kind::Moved, &record, false)) {
        return;
    }
    JsonWriter body;
    body.beginObject().key(pathKey).string(Trees::pathOf(parent, record.tree));
    put(&record, &body.key(QStringLiteral("f")).integer(from).key(QStringLiteral("t")).integer(to));
}

void Recorder::called(const KordCall& call) {
    flushPosture();
    Record record;
    record.kind = Kind::Command;
    const int loopLevel = QThread::currentThread()->loopLevel();
    record.inside = insideAt(loopLevel);
    record.tree = Tree::Results;
    Place package;
    package.isPackage = true;
    record.by = byOf(package, call.sender);
    frames_.push_back({record.isByExecutor() ? Inside::Command : Inside::Act, loopLevel});
    JsonWriter body;
    body.beginObject().key(QStringLiteral("name")).string(call.name);
    body.key(QStringLiteral("exec")).boolean(call.exec).key(QStringLiteral("args"));
    put(&record, &(call.node ? body.node(call.node) : body.variant(call.value)));
}

// --- Posture ----------------------------------------------------------------------------------------

/// A controller writes the numbers one by one and then announces the node. A posture that is not announced is
/// written before the next record.
void Recorder::notePosture(Inside inside, bool isWhole) {
    if (!posture_) {
        posture_.emplace();
        posture_->kind = Kind::Posture;
        posture_->by = By::Cell;
        posture_->tree = Tree::Data;
        posture_->inside = inside;
        stamp(&*posture_);
    } else if (isWhole) {
        stamp(&*posture_);
    }
    if (isWhole && posture_->ms - postureMs_ >= postureEveryMs) {
        flushPosture();
    }
}

void Recorder::flushPosture() {
    if (posture_) {
        posture_->body = Posture::of(trees_.posture()).encoded();
        postureMs_ = posture_->ms;
        sink_->append(*posture_);
        posture_.reset();
    }
}

// --- Key frames -------------------------------------------------------------------------------------

/// So that the ring always holds the whole state.
void Recorder::keepKeyFrame() {
    const qint64 everyBytes = sink_->capacity() / keyFramesInRing;
    if (isWritingKeys_ || everyBytes <= 0 || sink_->position() - keyPosition_ < everyBytes) {
        return;
    }
    isWritingKeys_ = true;
    Record record;
    record.kind = Kind::KeyFrame;
    record.body = R"({"sections":)" + keys_.write() + '}';
    append(&record);
    keyPosition_ = sink_->position();
    isWritingKeys_ = false;
}

bool Recorder::isStart(const ModuleObject* node) const {
    const QString name = node->name();
    return (name == QLatin1String("start") || name == QLatin1String("once")) &&
           (node == m(prog::key::triggerStart) || node == m(prog::key::triggerOnce));
}

/// A start or step is asked for. The state is that before the executor hears of it.
void Recorder::runAsked(Record* record, const ModuleObject* trigger, const QVariant& value) {
    record->kind = Kind::Run;
    const bool isIdle = m(prog::key::executeState)->getString() == prog::word::idle;
    JsonWriter body;
    body.beginObject().key(QStringLiteral("trigger")).string(trigger->name());
    body.key(valueKey).variant(value).key(QStringLiteral("idle")).boolean(isIdle);
    body.key(QStringLiteral("mode")).integer(facts_.runMode ? *facts_.runMode : prog::runmode::byHand);
    body.key(QStringLiteral("project")).string(facts_.project ? facts_.project() : QString());
    writeFacts(&body);
    if (isIdle) {
        isWritingKeys_ = true;
        body.key(QStringLiteral("sections")).raw(keys_.write());
        keyPosition_ = sink_->position();
        isWritingKeys_ = false;
        body.key(QStringLiteral("commands")).beginArray();
        for (const ModuleObject* command : trees_.root(Tree::Results)->cmobjs()) {
            body.string(command->name());
        }
        body.endArray();
    }
    put(record, &body);
}

}  // namespace flight
