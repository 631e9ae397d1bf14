#include "runner/tracesteps.h"

#include "json/jsonfile.h"
#include "program/statement.h"
#include "program/words.h"

#include <QJsonDocument>

#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <limits>
#include <string_view>
#include <utility>

namespace run {

namespace {

std::uint64_t keyOf(const QByteArray& text) {
    return std::hash<std::string_view>{}({text.constData(), std::size_t(text.size())});
}

std::uint64_t mixed(std::uint64_t key, std::uint64_t more) {
    constexpr std::uint64_t prime = 1099511628211u;
    return (key ^ more) * prime;
}

/// The command that a statement of a type orders its motion with; null for a type that moves nothing.
const QLatin1String* motionCommand(const QString& type) {
    const prog::StatementRow* const row = prog::statementRow(type);
    if (!row || !row->moves) {
        return nullptr;
    }
    switch (row->type) {
        case prog::StatementType::MoveJ:
            return &prog::command::moveJ;
        case prog::StatementType::MoveL:
            return &prog::command::moveL;
        default:
            return &prog::command::moveC;
    }
}

bool isMotion(const QString& command) {
    return command == prog::command::moveJ || command == prog::command::moveL ||
           command == prog::command::moveC;
}

}  // namespace

QString TraceStep::name() const {
    if (number == 0) {
        return run == 0 ? QStringLiteral("before the run") : QStringLiteral("after run %1").arg(run);
    }
    QString name =
        line < 0 ? QStringLiteral("statement %1").arg(number) : QStringLiteral("line %1").arg(line + 1);
    if (!type.isEmpty()) {
        name += QStringLiteral(" (%1)").arg(type);
    }
    return run > 1 ? QStringLiteral("run %1, ").arg(run) + name : name;
}

std::uint64_t TraceStep::key() const {
    std::uint64_t key = keyOf(type.toUtf8()) + (number == 0 ? 1 : 0);
    for (const TraceEvent& event : commands) {
        key = mixed(key, event.key);
    }
    return key;
}

/// Reads a trace line by line.
class TraceSteps::Reader {
public:
    explicit Reader(TraceSteps* trace) : trace_(trace) { trace_->steps_.emplace_back(); }

    /// False for what is no line of a trace.
    bool take(const QByteArray& text, qint64 offset) {
        const QJsonObject line = QJsonDocument::fromJson(text).object();
        const QString kind = line.value(QStringLiteral("kind")).toString();
        if (!line.value(QStringLiteral("t")).isDouble() || kind.isEmpty()) {
            return false;
        }
        if (!begun_ && kind != QLatin1String("begin")) {
            return false;
        }
        begun_ = true;
        const int behindTime = text.indexOf(',');
        TraceEvent event;
        event.t = line.value(QStringLiteral("t")).toVariant().toLongLong();
        event.offset = offset;
        event.size = text.size();
        event.key = keyOf(text.mid(behindTime));
        takeKind(kind, line, event);
        return true;
    }

    void finish() {
        for (std::size_t i = 0; i < trace_->steps_.size(); ++i) {
            moveToTheirLines(i);
        }
    }

private:
    void takeKind(const QString& kind, const QJsonObject& line, TraceEvent& event) {
        static const QStringList commands = {QStringLiteral("command"), QStringLiteral("set"),
                                             QStringLiteral("output"),  QStringLiteral("rejected"),
                                             QStringLiteral("message"), QStringLiteral("answer"),
                                             QStringLiteral("file")};
        if (commands.contains(kind)) {
            if (kind == QLatin1String("command") && isMotion(line.value(QStringLiteral("name")).toString())) {
                event.motion = int(trace_->fates_.size());
                trace_->fates_.emplace_back();
            }
            trace_->steps_.back().commands.push_back(event);
        } else if (kind == QLatin1String("changed")) {
            takeChange(line, event.t);
        } else if (kind == QLatin1String("motion") || kind == QLatin1String("result")) {
            takeFate(line);
        } else if (kind == QLatin1String("input") || kind == QLatin1String("station")) {
            trace_->world_.push_back(event);
        } else if (kind == QLatin1String("event")) {
            QJsonObject action = line.value(QStringLiteral("action")).toObject();
            action.remove(QStringLiteral("at"));
            action.insert(QStringLiteral("refused"), line.value(QStringLiteral("refused")));
            event.key = keyOf(QJsonDocument(action).toJson(QJsonDocument::Compact));
            trace_->world_.push_back(event);
        } else if (kind == QLatin1String("done")) {
            trace_->done_ = line;
            trace_->done_.remove(QStringLiteral("t"));
            trace_->done_.remove(QStringLiteral("ms"));
            trace_->endMs_ = event.t;
        }
    }

    /// A statement of the operator's program begins with its line, the type follows at once; in a single step
    /// only the line changes, in a station's run only the type.
    void takeChange(const QJsonObject& line, qint64 t) {
        const QString path = line.value(QStringLiteral("path")).toString();
        const QJsonValue value = line.value(QStringLiteral("value"));
        if (path == prog::key::executeState) {
            if (value.toString() == prog::word::busy) {
                ++run_;
                number_ = 0;
            } else if (trace_->steps_.back().number > 0) {
                begin(t, 0);
            }
        } else if (path == prog::key::executeLine) {
            if (value.toInt(-1) >= 0) {
                begin(t, ++number_);
                trace_->steps_.back().line = value.toInt();
            }
        } else if (path == prog::key::currentType && !value.toString().isEmpty()) {
            TraceStep& last = trace_->steps_.back();
            if (last.number == 0 || !last.type.isEmpty() || !last.commands.empty()) {
                begin(t, ++number_);
            }
            trace_->steps_.back().type = value.toString();
        }
    }

    void begin(qint64 t, int number) {
        TraceStep step;
        step.run = run_;
        step.number = number;
        step.t = t;
        trace_->steps_.push_back(step);
    }

    /// Motions are numbered from 1 in the order of their commands.
    void takeFate(const QJsonObject& line) {
        const int motion = line.value(QStringLiteral("id")).toInt() - 1;
        const QString event = line.value(QStringLiteral("event")).toString();
        if (motion < 0 || motion >= int(trace_->fates_.size()) || event == QLatin1String("queued") ||
            event == QLatin1String("started")) {
            return;
        }
        QString& fate = trace_->fates_[std::size_t(motion)];
        fate += fate.isEmpty() ? QString() : QStringLiteral(", ");
        fate += event.isEmpty() ? QStringLiteral("result %1").arg(line.value(QStringLiteral("code")).toInt())
                                : event;
    }

    QString nameOf(const TraceEvent& event) const {
        return trace_->text(event).value(QStringLiteral("name")).toString();
    }

    /// Lets the motions begin that were ordered.
    bool isRelease(const TraceEvent& event) const { return nameOf(event) == prog::command::enough; }

    /// Where the batch that a statement gives begins: behind the way back to where a run was stopped, which
    /// is released before.
    std::size_t batchBegin(const std::vector<TraceEvent>& events) const {
        std::size_t begin = 0, last = 0;
        for (std::size_t i = 0; i < events.size(); ++i) {
            if (isRelease(events[i])) {
                begin = std::exchange(last, i);
            }
        }
        return begin;
    }

    /// Moves the motion commands of a batch, which its first statement gives, to the statements that follow,
    /// where these are known to order such motions; its release goes to the last of them.
    void moveToTheirLines(std::size_t first) {
        std::vector<TraceStep>& steps = trace_->steps_;
        const auto isMotion = [](const TraceEvent& event) { return event.motion >= 0; };
        const std::vector<TraceEvent> events = steps[first].commands;
        if (std::count_if(events.begin(), events.end(), isMotion) < 2) {
            return;
        }
        const std::size_t batch = batchBegin(events);
        std::vector<TraceEvent> kept(events.begin(), events.begin() + qint64(batch));
        bool isOwn = true;
        std::size_t to = first;
        for (std::size_t i = batch; i < events.size(); ++i) {
            const bool moves = isMotion(events[i]);
            const QLatin1String* next = to + 1 < steps.size() ? motionCommand(steps[to + 1].type) : nullptr;
            if (moves && !isOwn && next && *next == nameOf(events[i]) &&
                steps[to + 1].run == steps[first].run) {
                ++to;
                steps[to].commands.insert(steps[to].commands.begin(), events[i]);
            } else if (to > first && !moves && isRelease(events[i])) {
                steps[to].commands.insert(steps[to].commands.begin() + 1, events[i]);
            } else {
                kept.push_back(events[i]);
            }
            isOwn = isOwn && !moves;
        }
        steps[first].commands = std::move(kept);
    }

    TraceSteps* trace_;
    bool begun_ = false;
    int run_ = 0;
    int number_ = 0;
};

std::optional<TraceSteps> TraceSteps::read(const QString& file, Problem* problem) {
    TraceSteps trace;
    const mendo::FileProblem::Reason reason = trace.open(file);
    if (trace.content_.trimmed().isEmpty()) {
        *problem = {file, {}, trace.file_->isOpen() ? QStringLiteral("no trace") : reason.text()};
        return std::nullopt;
    }
    Reader reader(&trace);
    int number = 0;
    for (int from = 0; from < trace.content_.size();) {
        const int newline = trace.content_.indexOf('\n', from);
        const int end = newline < 0 ? trace.content_.size() : newline;
        ++number;
        const QByteArray line = QByteArray::fromRawData(trace.content_.constData() + from, end - from);
        if (!line.trimmed().isEmpty() && !reader.take(line, from)) {
            *problem = {file, {number, 1}, QStringLiteral("no line of a trace")};
            return std::nullopt;
        }
        from = end + 1;
    }
    reader.finish();
    return trace;
}

/// Maps the file into memory. Returns why it cannot be read, for a file that stays closed.
mendo::FileProblem::Reason TraceSteps::open(const QString& file) {
    using Kind = mendo::FileProblem::Kind;
    file_ = std::make_unique<QFile>(file);
    const QFileInfo info(file);
    if (!info.exists() || info.isDir()) {
        return {info.isDir() ? Kind::IsFolder : Kind::NoSuchFile};
    }
    const qint64 size = info.size();
    if (size > std::numeric_limits<int>::max()) {
        return {Kind::FileTooLarge};
    }
    errno = 0;
    if (!file_->open(QIODevice::ReadOnly)) {
        return mendo::systemReason(errno);
    }
    const uchar* const bytes = size > 0 ? file_->map(0, size) : nullptr;
    content_ =
        bytes ? QByteArray::fromRawData(reinterpret_cast<const char*>(bytes), int(size)) : file_->readAll();
    return {};
}

QJsonObject TraceSteps::text(const TraceEvent& event) const {
    return QJsonDocument::fromJson(content_.mid(int(event.offset), event.size)).object();
}

}  // namespace run
