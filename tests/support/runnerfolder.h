#pragma once

#include "support/ports.h"
#include "support/text.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

/// The result of a call of lumo-run.
struct Result {
    int status = -1;
    QByteArray out, err;
    QList<QJsonObject> trace;  ///< the lines of standard output

    QList<QJsonObject> of(const QString& kind) const {
        QList<QJsonObject> found;
        for (const QJsonObject& line : trace) {
            if (line.value("kind") == kind) {
                found.append(line);
            }
        }
        return found;
    }
    QJsonObject done() const { return trace.isEmpty() ? QJsonObject() : trace.last(); }
};

/// Runs the program in a folder.
inline Result runIn(const QString& folder, const QStringList& arguments, const QString& program = LUMO_RUN) {
    constexpr int limitMs = 900000;
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start(program, arguments);
    process.waitForFinished(limitMs);
    Result result;
    result.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.out = process.readAllStandardOutput();
    result.err = process.readAllStandardError();
    for (const QByteArray& line : result.out.split('\n')) {
        if (!line.isEmpty()) {
            result.trace.append(QJsonDocument::fromJson(line).object());
        }
    }
    return result;
}

inline QString reasonOf(const Result& result) {
    return result.done().value("reason").toString();
}

inline const QByteArray portRecords = [] {
    QJsonArray rows;
    for (int i = 0; i < 19; ++i) {
        rows.append(QJsonObject{{"type", i < 6    ? "DI"
                                         : i < 15 ? "DO"
                                                  : "AO"},
                                {"name", test::portNames[i]},
                                {"enable", true}});
    }
    return QJsonDocument(rows).toJson();
}();

inline const QByteArray parameterSets =
    R"([{"name":"thin","power":50,"frequency":50,"ratio":50,"increase_time":200,"decrease_time":200,
    "stay_time":100,"close_delay":100,"open_time":200,"open_interval":0,"delay_before_blow":200,
    "delay_after_blow":300,"speed":10,"move_wire_time":100,"stop_wire_time":150,"give_wire_time":200}])";

inline QByteArray moveL(double x, double z) {
    return "{\"type\":\"moveL\",\"execute\":true,\"speed\":100,\"zone\":0,\"point\":{\"trans\":[" +
           QByteArray::number(x) + ",0," + QByteArray::number(z) +
           "],\"rot\":[3.141592653589793,0,0],\"near\":[0,0,0,0,0,0]}}";
}

inline const QByteArray openStatement = R"({"type":"open","execute":true,"index":0,"weldspeed":20})";
inline const QByteArray closeStatement = R"({"type":"close","execute":true})";
inline const QByteArray delayStatement = R"({"type":"delay","execute":true,"delaytime":500})";

/// A temporary folder with settings files.
class Folder {
public:
    Folder() {
        write("lumo_port.json", portRecords);
        write("lumo_param.json", parameterSets);
    }
    void write(const QString& name, const QByteArray& text) const { test::writeFile(path(name), text); }
    QString path(const QString& name = QString()) const { return dir_.filePath(name); }
    QByteArray read(const QString& name) const { return test::contentOf(path(name)); }
    bool has(const QString& name) const { return QFileInfo::exists(path(name)); }

    Result run(const QStringList& arguments) const { return runIn(path(), arguments); }
    /// Runs a project with a scenario, with the trace on standard output.
    Result trace(const QByteArray& project, const QByteArray& scenario = "[]",
                 const QStringList& more = {}) const {
        write("p.json", project);
        write("s.json", scenario);
        return run(QStringList{"p.json", "--scenario", "s.json", "--quiet", "--trace", "-"} + more);
    }

private:
    QTemporaryDir dir_;
};
