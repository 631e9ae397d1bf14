#include "app/results/runresult.h"

#include "json/jsonfile.h"
#include "workcell/recordjson.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>
#include <numeric>

namespace app {

namespace {

constexpr int format = 1;

QString text(const QJsonObject& json, const char* key) {
    return json.value(QLatin1String(key)).toString();
}

QJsonArray list(const QJsonObject& json, const char* key) {
    return json.value(QLatin1String(key)).toArray();
}

/// Of a move in whole hundredths of a millimetre, x, y and z in turn.
QJsonArray coordinates(const Polyline& line) {
    constexpr double parts = 100 * prog::mmPerM;
    QJsonArray numbers;
    for (const Position& position : line) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            numbers.append(std::round(position[axis] * parts));
        }
    }
    return numbers;
}

Polyline polyline(const QJsonValue& json) {
    constexpr double parts = 100 * prog::mmPerM;
    const QJsonArray numbers = json.toArray();
    Polyline line;
    for (int i = 0; i + 2 < numbers.size(); i += 3) {
        line.push_back(
            Position{numbers.at(i).toDouble(), numbers.at(i + 1).toDouble(), numbers.at(i + 2).toDouble()} /
            parts);
    }
    return line;
}

QJsonArray jsonOf(const PathMove& move) {
    return {move.line,
            int(move.shape),
            move.weld,
            move.impossible,
            coordinates(move.path),
            coordinates(move.corner),
            coordinates({move.target})};
}

PathMove moveFrom(const QJsonArray& json) {
    PathMove move;
    move.line = json.at(0).toInt();
    move.shape = PathMove::Shape(qBound(0, json.at(1).toInt(), int(PathMove::Shape::Circle)));
    move.weld = json.at(2).toBool();
    move.impossible = json.at(3).toBool();
    move.path = polyline(json.at(4));
    move.corner = polyline(json.at(5));
    const Polyline target = polyline(json.at(6));
    move.target = target.empty() ? Position() : target.front();
    return move;
}

QJsonArray jsonOf(const ProgramLine& line) {
    return {line.type, line.executed, line.target, line.speed, line.zone, line.details};
}

ProgramLine lineFrom(const QJsonArray& json) {
    return {json.at(0).toString(), json.at(1).toBool(),   json.at(2).toString(),
            json.at(3).toString(), json.at(4).toString(), json.at(5).toString()};
}

QJsonObject jsonOf(const SetValues& set) {
    QJsonArray values;
    for (const double value : set.values) {
        values.append(value);
    }
    return {{QStringLiteral("name"), set.name}, {QStringLiteral("values"), values}};
}

SetValues setFrom(const QJsonObject& json) {
    SetValues set{text(json, "name"), {}};
    const QJsonArray values = list(json, "values");
    for (const QJsonValue& value : values) {
        set.values.append(value.toDouble());
    }
    return set;
}

std::optional<workcell::Limits> limitsFrom(const QJsonValue& json) {
    if (!json.isObject()) {
        return std::nullopt;
    }
    mendo::FileProblem told;  // when the run began
    const auto text = mendo::JsonText::parse(QJsonDocument(json.toObject()).toJson(), &told);
    return text ? workcell::Limits::from(*text, &told) : std::nullopt;
}

/// Each element of a container as JSON.
template <typename Container, typename JsonOf>
QJsonArray arrayOf(const Container& elements, JsonOf json) {
    QJsonArray array;
    for (const auto& element : elements) {
        array.append(json(element));
    }
    return array;
}

}  // namespace

std::vector<Polyline> RunResult::gapPieces() const {
    std::vector<Polyline> pieces;
    for (const workcell::SeamRecord& seam : record.seams) {
        for (const workcell::DarkGap& gap : seam.darkGaps) {
            const Polyline piece = track.piece(seam.openedAtMm + gap.fromMm, seam.openedAtMm + gap.toMm);
            if (!piece.empty()) {
                pieces.push_back(piece);
            }
        }
    }
    return pieces;
}

double RunResult::weldedMm() const {
    return std::accumulate(record.seams.begin(), record.seams.end(), 0.0,
                           [](double mm, const workcell::SeamRecord& seam) { return mm + seam.weldedMm; });
}

double RunResult::programmedMm() const {
    return std::accumulate(
        record.seams.begin(), record.seams.end(), 0.0,
        [](double mm, const workcell::SeamRecord& seam) { return mm + seam.programmedMm; });
}

bool RunResult::readLimits(const QString& project, mendo::FileProblem* problem) {
    const QString path = workcell::Limits::fileFor(project);
    if (mendo::isMissing(path)) {
        return true;
    }
    limitsFile = QFileInfo(path).fileName();
    limits = workcell::Limits::read(path, problem);
    return limits.has_value();
}

QVector<workcell::Violation> RunResult::violations() const {
    return limits ? workcell::violations(record, *limits) : QVector<workcell::Violation>();
}

QString RunResult::title() const {
    return QFileInfo(projectFile.isEmpty() ? record.project : projectFile).completeBaseName();
}

QJsonObject RunResult::json() const {
    QJsonObject json;
    json.insert(QStringLiteral("format"), format);
    json.insert(QStringLiteral("begun"), begun.toString(Qt::ISODateWithMs));
    json.insert(QStringLiteral("project_file"), projectFile);
    json.insert(QStringLiteral("by_station"), byStation);
    json.insert(QStringLiteral("is_saved"), isSaved);
    json.insert(QStringLiteral("has_welds"), hasWelds);
    json.insert(QStringLiteral("version"), version);
    json.insert(QStringLiteral("record"), workcell::jsonOfRecord(record));
    json.insert(QStringLiteral("limits_file"), limitsFile);
    json.insert(QStringLiteral("limits"), limits ? QJsonValue(limits->json()) : QJsonValue());
    json.insert(QStringLiteral("files"), arrayOf(files, [](const FileDigest& file) {
                    return QJsonArray{file.name, file.sha256};
                }));
    json.insert(QStringLiteral("sets"), arrayOf(sets, [](const SetValues& set) { return jsonOf(set); }));
    json.insert(QStringLiteral("lines"),
                arrayOf(lines, [](const ProgramLine& line) { return jsonOf(line); }));
    json.insert(QStringLiteral("line_count"), lineCount);
    json.insert(QStringLiteral("moves"), arrayOf(moves, [](const PathMove& move) { return jsonOf(move); }));
    json.insert(QStringLiteral("track"), track.json());
    json.insert(QStringLiteral("bands"), arrayOf(bands, [](const SignalBand& band) { return band.json(); }));
    json.insert(QStringLiteral("profiles"),
                arrayOf(profiles, [](const SeamProfile& profile) { return app::jsonOf(profile); }));
    return json;
}

std::optional<RunResult> RunResult::from(const QJsonObject& json) {
    RunResult result;
    result.begun = QDateTime::fromString(text(json, "begun"), Qt::ISODateWithMs);
    if (json.value(QLatin1String("format")).toInt() != format || !result.begun.isValid()) {
        return std::nullopt;
    }
    result.projectFile = text(json, "project_file");
    result.byStation = json.value(QLatin1String("by_station")).toBool();
    result.isSaved = json.value(QLatin1String("is_saved")).toBool();
    result.hasWelds = json.value(QLatin1String("has_welds")).toBool();
    result.version = text(json, "version");
    result.record = workcell::recordFrom(json.value(QLatin1String("record")).toObject());
    result.limitsFile = text(json, "limits_file");
    result.limits = limitsFrom(json.value(QLatin1String("limits")));
    for (const QJsonValue& file : list(json, "files")) {
        result.files.append({file.toArray().at(0).toString(), file.toArray().at(1).toString()});
    }
    for (const QJsonValue& set : list(json, "sets")) {
        result.sets.append(setFrom(set.toObject()));
    }
    for (const QJsonValue& line : list(json, "lines")) {
        result.lines.append(lineFrom(line.toArray()));
    }
    result.lineCount = json.value(QLatin1String("line_count")).toInt();
    for (const QJsonValue& move : list(json, "moves")) {
        result.moves.push_back(moveFrom(move.toArray()));
    }
    result.track = ToolTrack::from(json.value(QLatin1String("track")).toObject());
    for (const QJsonValue& band : list(json, "bands")) {
        result.bands.append(SignalBand::from(band.toObject()));
    }
    for (const QJsonValue& profile : list(json, "profiles")) {
        result.profiles.append(profileFrom(profile.toArray()));
    }
    return result;
}

}  // namespace app
