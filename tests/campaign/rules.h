#pragma once

#include "campaign/runs.h"

#include <QStringList>

#include <memory>
#include <utility>
#include <vector>

namespace campaign {

/// One family of what has to hold. It hears every event together with how things were before it.
class Rule {
public:
    virtual ~Rule() = default;
    virtual void on(const Event& event, const Outputs& outputs, const Runs& runs) = 0;
    [[nodiscard]] QStringList takeBroken() { return std::exchange(broken_, {}); }

protected:
    /// What is said of a rule in vain is no text yet.
    template <typename Words>
    void forbid(bool happens, const Words& words) {
        if (happens) {
            broken_ << QString(words);
        }
    }

private:
    QStringList broken_;
};

std::unique_ptr<Rule> makeLaserRule();
std::vector<std::unique_ptr<Rule>> makeOtherRules();

/// Holds what the safety rules promise against what happened.
class Checker {
public:
    Checker() : rules_(makeOtherRules()) { rules_.push_back(makeLaserRule()); }
    void on(const Event& event) {
        runs_.on(event);
        for (const auto& rule : rules_) {
            rule->on(event, outputs_, runs_);
            broken_ << rule->takeBroken();
        }
        outputs_.on(event);
    }
    /// What did not hold, in words, in the order in which it was broken.
    [[nodiscard]] const QStringList& broken() const { return broken_; }

private:
    Outputs outputs_;
    Runs runs_;
    std::vector<std::unique_ptr<Rule>> rules_;
    QStringList broken_;
};

}  // namespace campaign
