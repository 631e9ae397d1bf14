#pragma once

#include "program/finding.h"

#include <QString>
#include <QVariant>

namespace prog {

/// Gathers the findings of a document, each at the element that is being looked at.
class Collector {
public:
    explicit Collector(Document document) : document_(document) {}

    /// The element that is looked at from now on. `line`: of the statement, from 0; -1: none. In one that is
    /// not executed most faults only warn.
    void lookAt(int element, int line = -1, bool executed = true) {
        element_ = element;
        line_ = line;
        executed_ = executed;
    }
    void add(Fault fault, const QString& path = {}, const QVariantList& arguments = {}) {
        const Severity severity = executed_ || isUnreadable(fault) ? severityOf(fault) : Severity::Warning;
        findings_.push_back({fault, severity, document_, element_, line_, path, arguments});
    }
    void warn(Fault fault, const QString& path, const QVariantList& arguments) {
        add(fault, path, arguments);
        findings_.back().severity = Severity::Warning;
    }

    /// In the order of the elements.
    [[nodiscard]] Findings take();

private:
    Document document_;
    int element_ = -1;
    int line_ = -1;
    bool executed_ = true;
    Findings findings_;
};

}  // namespace prog
