#include "executor/run.h"

#include "json/jsonwriter.h"
#include "mendo/branch.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <iterator>

using namespace prog;

namespace lumo {

namespace {

/// Names of a list's elements, given now where they have none; objects are not made.
std::vector<QString> elementNames(const ModuleObject* list) {
    std::vector<QString> names;
    mendo::Branch* const branch = mendo::NodeRef(const_cast<ModuleObject*>(list)).branch();
    for (int i = 0; branch && i < branch->size(); ++i) {
        names.push_back(branch->nameAt(i));
    }
    return names;
}

}  // namespace

ProgramCopy::ProgramCopy(const ModuleObject* source) : begins_{0} {
    for (int line = 0; line < source->cmobjCount(); ++line) {
        text_ += mendo::JsonWriter().child(source, line).take();
        begins_.push_back(text_.size());
    }
    text_.squeeze();
}

ModuleObject* ProgramCopy::record(int line) const {
    constexpr std::size_t most = 32;
    const auto at = static_cast<std::size_t>(line);
    if (line < 0 || at + 1 >= begins_.size()) {
        return ModuleObject::null();
    }
    const auto known = records_.find(line);
    if (known != records_.end()) {
        return known->second.get();
    }
    if (records_.size() >= most) {  // the line farthest from this one: a run goes forward
        const auto first = records_.begin();
        const auto last = std::prev(records_.end());
        records_.erase(line - first->first > last->first - line ? first : last);
    }
    const QByteArray json = '[' + text_.mid(begins_[at], begins_[at + 1] - begins_[at]) + ']';
    auto record = std::make_unique<ModuleObject>(QStringLiteral("run"));
    record->loadJson(nullptr, QJsonDocument::fromJson(json).array().first(), false);
    return records_.emplace(line, std::move(record)).first->second.get();
}

int ProgramCopy::lineOf(const ModuleObject* record) const {
    const auto found = std::find_if(records_.begin(), records_.end(),
                                    [record](const auto& line) { return line.second.get() == record; });
    return found == records_.end() ? -1 : found->first;
}

Run::Run(const ModuleObject* source, int runMode, bool step)
    : copy_(source), program(source), mode(runMode), isStep(step) {
    if (ofHandProgram()) {
        originals_ = elementNames(source);
    }
}

ModuleObject* Run::original(int of) const {
    const ModuleObject* const source = m(key::program);
    const auto at = static_cast<std::size_t>(of);
    return of >= 0 && at < originals_.size() && source->hasCmobj(originals_[at]) ? source->c(originals_[at])
                                                                                 : nullptr;
}

}  // namespace lumo
