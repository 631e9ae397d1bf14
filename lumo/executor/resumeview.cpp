#include "executor/resumeview.h"

#include <numeric>

namespace lumo {

namespace {

double lengthMm(const std::vector<ResumeView::Part>& parts) {
    return prog::mmPerM *
           std::accumulate(parts.begin(), parts.end(), 0.0, [](double sum, const ResumeView::Part& part) {
               return sum + part.toM - part.fromM;
           });
}

}  // namespace

double ResumeView::weldedMm() const {
    return lengthMm(welded);
}

double ResumeView::leftMm() const {
    return lengthMm(ahead);
}

}  // namespace lumo
