#include "app/progress/runprogress.h"

#include <algorithm>
#include <utility>

namespace app {

RunProgress::RunProgress(std::vector<LineEstimate> lines, int line, qint64 nowMs)
    : lines_(std::move(lines)),
      behindMs_(lines_.size()),
      inputBehind_(lines_.size()),
      line_(line),
      lineBegunMs_(nowMs) {
    bool input = false;
    for (size_t i = lines_.size(); i > 0; --i) {
        behindMs_[i - 1] = totalMs_;
        inputBehind_[i - 1] = input;
        totalMs_ += lines_[i - 1].ms;
        input = input || lines_[i - 1].waitsForInput;
    }
}

void RunProgress::beginLine(int line, qint64 nowMs) {
    if (line == line_ || line < 0 || size_t(line) >= lines_.size()) {
        return;
    }
    line_ = line;
    lineBegunMs_ = nowMs;
}

RunProgress::View RunProgress::at(qint64 nowMs) const {
    View view;
    if (line_ < 0 || size_t(line_) >= lines_.size()) {
        return view;
    }
    const LineEstimate& line = lines_[size_t(line_)];
    view.leftMs = behindMs_[size_t(line_)] + std::max<qint64>(0, line.ms - (nowMs - lineBegunMs_));
    view.share = totalMs_ > 0 ? double(totalMs_ - view.leftMs) / double(totalMs_) : 1;
    view.waits = line.waitsForInput;
    view.willWait = inputBehind_[size_t(line_)];
    return view;
}

}  // namespace app
