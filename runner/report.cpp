#include "runner/report.h"

#include "program/geometry.h"

namespace run {

namespace {

constexpr double msPerS = 1000.0;

/// A text padded to a number of characters; printf() would count bytes.
QByteArray column(const QString& text, int width = 22) {
    return text.simplified().leftJustified(width).toUtf8();
}

}  // namespace

QString waitingText(const QVariantMap& waiting) {
    const QVariant detail = waiting.value(QStringLiteral("detail"));
    const QString kind = waiting.value(QStringLiteral("kind")).toString();
    bool isLine = false;
    const int line = detail.toInt(&isLine);
    const QString what = isLine ? QStringLiteral("line %1").arg(line + 1) : detail.toString();
    return what.isEmpty() ? kind : QStringLiteral("%1 (%2)").arg(kind, what);
}

void Report::head() {
    if (!headed_ && progress_ == Progress::Statements) {
        std::fprintf(out_, "%6s  %-7s  %12s\n", "line", "type", "time");
    } else if (!headed_) {
        std::fprintf(out_, "%15s  %12s  %s\n", "station", "time", "state");
    }
    headed_ = true;
}

void Report::statement(int line, const QString& type, qint64 atMs) {
    if (!out_) {
        return;
    }
    head();
    std::fprintf(out_, "%6d  %-7s  %10.3f s\n", line + 1, type.toUtf8().constData(), double(atMs) / msPerS);
}

void Report::station(const QString& name, const QString& state, qint64 atMs) {
    if (!out_) {
        return;
    }
    head();
    std::fprintf(out_, "%s  %10.3f s  %s\n", name.simplified().rightJustified(15).toUtf8().constData(),
                 double(atMs) / msPerS, state.toUtf8().constData());
}

void Report::message(const QString& icon, const QString& title, const QString& text, qint64 atMs) {
    if (!out_) {
        return;
    }
    head();
    const QString line = QStringLiteral("%1: %2").arg(title, text).simplified();
    std::fprintf(out_, "%15s  %10.3f s  %s\n", icon.toUtf8().constData(), double(atMs) / msPerS,
                 line.toUtf8().constData());
}

void Report::table(const Figures& figures) {
    if (!out_) {
        return;
    }
    const auto seconds = [this](const char* name, qint64 ms) {
        std::fprintf(out_, "%-12s %12.3f s\n", name, double(ms) / msPerS);
    };
    const auto millimetres = [this](const char* name, double metres) {
        std::fprintf(out_, "%-12s %12.1f mm\n", name, metres * prog::mmPerM);
    };
    std::fprintf(out_, "\n%-12s %12s\n", "ended", figures.reason.toUtf8().constData());
    if (!figures.waiting.isEmpty()) {
        std::fprintf(out_, "%-12s %12s\n", "waiting for", figures.waiting.toUtf8().constData());
    }
    std::fprintf(out_, "%-12s %12d\n", "lines run", figures.lines);
    millimetres("path length", figures.pathM);
    seconds("laser on", figures.laserMs);
    millimetres("weld length", figures.weldM);
    seconds("gas", figures.gasMs);
    seconds("wire", figures.wireMs);
    seconds("duration", figures.durationMs);
    std::fflush(out_);
}

void Report::stations(const std::vector<StationLine>& lines) {
    if (!out_) {
        return;
    }
    std::fprintf(out_, "\n%s  %s  %5s  %8s  %12s  %12s\n", column(QStringLiteral("station")).constData(),
                 column(QStringLiteral("project")).constData(), "runs", "finished", "busy", "laser on");
    for (const StationLine& line : lines) {
        const StationFigures& f = line.figures;
        std::fprintf(out_, "%s  %s  %5d  %8d  %10.3f s  %10.3f s\n", column(line.name).constData(),
                     column(line.project).constData(), f.runs, f.finished, double(f.busyMs) / msPerS,
                     double(f.laserMs) / msPerS);
    }
    std::fflush(out_);
}

}  // namespace run
