#include "workcell/safety/event.h"

#include <array>

namespace workcell::safety {

namespace {

/// In the order of Kind.
constexpr std::array<const char*, int(Kind::End) + 1> words = {
    "start", "once",      "pause",    "power", "replace",    "edit",  "quit",   "act",       "state",
    "line",  "statement", "weldFlag", "set",   "pausePoint", "write", "output", "command",   "done",
    "wait",  "result",    "dropped",  "zone",  "permission", "robot", "byHand", "complaint", "end"};

}  // namespace

QString wordOf(Kind kind) {
    return QString::fromLatin1(words[std::size_t(kind)]);
}

QStringList cueWords() {
    QStringList cues;
    for (const Kind kind :
         {Kind::State, Kind::Line, Kind::Statement, Kind::WeldFlag, Kind::Set, Kind::PausePoint, Kind::Write,
          Kind::Output, Kind::Command, Kind::Wait, Kind::Result, Kind::Zone, Kind::Robot}) {
        cues.append(wordOf(kind));
    }
    return cues;
}

QString Event::toText() const {
    constexpr int timeWidth = 7;
    return QStringLiteral("%1 %2 %3 %4").arg(ms, timeWidth).arg(wordOf(kind), text).arg(value) +
           QStringLiteral(" [%1] depth %2, %3 pending").arg(action).arg(depth).arg(pending);
}

}  // namespace workcell::safety
