#pragma once

#include "flight/keyframes.h"
#include "flight/record.h"
#include "flight/trees.h"
#include "mendo/observer.h"

#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace mendo {
class JsonWriter;
}

namespace flight {

/// What a recording says about the program that makes it.
struct Facts {
    QString version;                   ///< of the package
    QString language;                  ///< of the panel: "cn", "en", "ru"
    bool isExact = false;              ///< on virtual time, where nothing is late
    const int* runMode = nullptr;      ///< the package's: one of prog::runmode; null: by hand
    std::function<QString()> project;  ///< name of the open project
};

/// Turns what happens to the package, and what it does, into records: commands, results, inputs, postures,
/// states, and every write below "lumo". From its construction to its destruction it is the host's observer.
/// Neither waits for anything nor calls back into the package.
class Recorder : public mendo::Observer {
public:
    /// `sink` must outlive it.
    Recorder(Sink* sink, Facts facts);
    ~Recorder() override;

    /// The process begins to end. The package winds down then, which no record can tell the reason of.
    void noteQuitting();

    void valueSet(const mendo::ModuleObject* node, const QString& below, const QVariant& value,
                  const QObject* sender) override;
    void announced(const mendo::ModuleObject* node) override;
    void contentSet(const mendo::ModuleObject* node, const QObject* sender) override;
    void inserted(const mendo::ModuleObject* parent, int position, const QObject* sender) override;
    void removing(const mendo::ModuleObject* parent, int position, const QObject* sender) override;
    void moved(const mendo::ModuleObject* parent, int from, int to, const QObject* sender) override;
    void called(const KordCall& call) override;
    void returned() override;

private:
    /// A write or call whose listeners have not returned.
    struct Frame {
        Record::Inside inside;
        int loopLevel;
    };
    Record::By byOf(const Place& place, const QObject* sender) const;
    Record::Inside insideAt(int loopLevel) const;
    void push(const Place& place, Record::By by, int loopLevel);
    bool begin(const mendo::ModuleObject* node, const QObject* sender, Record::Kind kind, Record* record,
               bool all);
    void put(Record* record, mendo::JsonWriter* body);
    quint64 append(Record* record);
    void notePosture(Record::Inside inside, bool isWhole);
    void flushPosture();
    void keepKeyFrame();
    bool isStart(const mendo::ModuleObject* node) const;
    void runAsked(Record* record, const mendo::ModuleObject* trigger, const QVariant& value);
    void writeFacts(mendo::JsonWriter* body) const;
    void stamp(Record* record);

    Sink* sink_;
    Facts facts_;
    Trees trees_;
    KeyFrames keys_;
    std::vector<Frame> frames_;
    qint64 keyPosition_ = 0;         ///< of the sink at the last key frame
    std::optional<Record> posture_;  ///< noted and not written yet
    qint64 postureMs_ = 0;           ///< of the last one written
    qint64 wallOffsetMs_ = 0;
    qint64 wallAtMs_ = -1;  ///< steady time when the offset was taken
    bool isWritingKeys_ = false;
    bool isQuitting_ = false;
};

}  // namespace flight
