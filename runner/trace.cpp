#include "runner/trace.h"

#include "mendo/modulemanager.h"
#include "program/words.h"
#include "runner/options.h"

#include <QDir>
#include <QFileInfo>

#include <cstdio>

namespace run {

namespace {

void writeOptions(JsonWriter& line, const Options& options) {
    const auto onOff = [](bool on) { return on ? QStringLiteral("on") : QStringLiteral("off"); };
    line.key(QStringLiteral("options")).beginObject();
    if (options.stations.isEmpty()) {
        line.key(QStringLiteral("project")).string(QFileInfo(options.project).fileName());
    } else {
        line.key(QStringLiteral("stations")).string(QDir(options.stations).dirName());
    }
    line.key(QStringLiteral("language")).string(options.language);
    line.key(QStringLiteral("mode")).string(options.mode);
    line.key(QStringLiteral("power")).string(onOff(options.power));
    line.key(QStringLiteral("weld")).string(onOff(options.weld));
    line.key(QStringLiteral("hand-weld")).string(onOff(options.handWeld));
    if (options.overlapMm > 0.0) {
        line.key(QStringLiteral("overlap")).number(options.overlapMm);
    }
    if (options.dryPercent) {
        line.key(QStringLiteral("dry-run")).number(*options.dryPercent);
    }
    if (options.once) {
        line.key(QStringLiteral("once")).integer(*options.once);
    } else if (options.stations.isEmpty()) {
        line.key(QStringLiteral("line")).integer(options.line);
    }
    line.key(QStringLiteral("axes")).integer(options.axes);
    line.key(QStringLiteral("no-write-multi")).boolean(options.noWriteMulti);
    if (options.latency.isAny()) {
        line.key(QStringLiteral("latency")).string(latencyText(options.latency));
    }
    if (!options.scenario.isEmpty()) {
        line.key(QStringLiteral("scenario")).string(QFileInfo(options.scenario).fileName());
    }
    if (!options.wiring.isEmpty()) {
        line.key(QStringLiteral("wiring")).string(QFileInfo(options.wiring).fileName());
    }
    if (options.repeat > 1) {
        line.key(QStringLiteral("repeat")).integer(options.repeat);
    }
    if (options.everyMs) {
        line.key(QStringLiteral("every")).integer(*options.everyMs);
    }
    line.key(QStringLiteral("ack")).integer(options.ackMs);
    line.key(QStringLiteral("until")).integer(options.untilMs);
    line.key(QStringLiteral("posture")).boolean(options.posture);
    line.endObject();
}

}  // namespace

bool Trace::open(const QString& file, QString* error) {
    out_.setFileName(file);
    const bool opened = file == QLatin1String("-") ? out_.open(stdout, QIODevice::WriteOnly)
                                                   : out_.open(QIODevice::WriteOnly);
    if (!opened) {
        *error = out_.errorString();
    }
    return opened;
}

JsonWriter& Trace::begin(const char* kind) {
    const qint64 now = clock_ ? clock_() : 0;
    return line_.beginObject()
        .key(QStringLiteral("t"))
        .integer(now)
        .key(QStringLiteral("kind"))
        .string(QLatin1String(kind));
}

void Trace::end() {
    QByteArray text = line_.endObject().take();
    if (!out_.isOpen()) {
        return;
    }
    text += '\n';
    failed_ |= out_.write(text) != text.size();
}

bool Trace::close(QString* error) {
    if (!out_.isOpen()) {
        return true;
    }
    failed_ |= !out_.flush();
    if (failed_) {
        *error = out_.errorString();
    }
    out_.close();
    return !failed_;
}

void writeBeginLine(Trace& trace, const Options& options, int statements) {
    JsonWriter& line = trace.begin("begin");
    writeOptions(line, options);
    line.key(QStringLiteral("statements")).integer(statements);
    line.key(QStringLiteral("sets")).beginArray();
    for (const mendo::ModuleObject* set : m(prog::key::param)->cmobjs()) {
        line.string(set->r(QStringLiteral("name"))->getString());
    }
    line.endArray();
    line.key(QStringLiteral("ports")).beginArray();
    for (const mendo::ModuleObject* port : m(prog::key::port)->cmobjs()) {
        line.beginObject();
        for (const QString& field :
             {QStringLiteral("type"), QStringLiteral("name"), QStringLiteral("enable")}) {
            line.key(field).node(port->r(field));
        }
        line.endObject();
    }
    line.endArray();
    line.key(QStringLiteral("dt")).node(m(prog::key::executeDt));
    trace.end();
}

}  // namespace run
