#include "executor/run.h"

#include "json/jsonwriter.h"
#include "mendo/branch.h"
#include "program/dryspeed.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <utility>

using namespace prog;

namespace lumo {

namespace {

/// Names of a list's elements, given now where they have none; objects are not made.
std::vector<QString> elementNames(const ModuleObject* list) {
    std::vector<QString> names;
    mendo::Branch* const branch = mendo::NodeRef(const_cast<ModuleObject*>(list)).branch();
    if (!branch) {
        return names;
    }
    branch->nameAll();
    names.reserve(branch->entries.size());
    for (const mendo::Slot& slot : branch->entries) {
        names.push_back(slot.name);
    }
    return names;
}

}  // namespace

ProgramCopy::ProgramCopy(const ModuleObject* source) {
    constexpr int mostOfNodes = 5000;
    if (source->cmobjCount() <= mostOfNodes) {
        nodes_ = std::make_unique<ModuleObject>(QStringLiteral("run"));
        nodes_->copyFrom(nullptr, source, false);
        return;
    }
    begins_.reserve(static_cast<std::size_t>(source->cmobjCount()));
    for (int line = 0; line < source->cmobjCount(); ++line) {
        begins_.push_back(rest_.size());
        rest_ += mendo::JsonWriter().child(source, line).take();
        if (begins_.size() % linesOfPage == 0) {
            constexpr int fastest = 1;
            pages_.push_back(qCompress(rest_, fastest));
            pages_.back().squeeze();  // it has room for text that does not pack
            rest_.resize(0);
        }
    }
    rest_.squeeze();
}

ModuleObject* ProgramCopy::record(int line) const {
    if (line < 0 || line >= elementCount()) {
        return ModuleObject::null();
    }
    if (nodes_) {
        return nodes_->c(line);
    }
    if (const auto* const known = records_.find(line)) {
        return known->get();
    }
    auto record = std::make_unique<ModuleObject>(QStringLiteral("run"));
    record->loadJson(nullptr, element(line), false);
    return records_.keep(line, std::move(record)).get();
}

int ProgramCopy::elementCount() const {
    return nodes_ ? nodes_->cmobjCount() : int(begins_.size());
}

QJsonValue ProgramCopy::element(int line) const {
    if (nodes_) {
        return nodes_->c(line)->exportToJson();
    }
    if (line != readLine_) {
        readElement_ = QJsonDocument::fromJson('[' + textOf(line) + ']').array().first();
        readLine_ = line;
    }
    return readElement_;
}

QByteArray ProgramCopy::textOf(int line) const {
    const auto at = static_cast<std::size_t>(line);
    const std::size_t page = at / linesOfPage;
    if (page < pages_.size() && page != openPage_) {
        openPage_ = page;
        openText_ = qUncompress(pages_[page]);
    }
    const QByteArray& text = page < pages_.size() ? openText_ : rest_;
    const bool isLast = at + 1 == begins_.size() || (at + 1) % linesOfPage == 0;
    return text.mid(begins_[at], isLast ? -1 : begins_[at + 1] - begins_[at]);
}

int ProgramCopy::lineOf(const ModuleObject* record) const {
    if (nodes_) {
        return record && record->pmobj() == nodes_.get() ? record->indexInPmobj() : -1;
    }
    const auto& all = records_.all();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [record](const auto& line) { return line.second.get() == record; });
    return found == all.end() ? -1 : found->first;
}

Run::Run(const ModuleObject* source, int runMode, bool step)
    : copy_(source),
      program(copy_.isPacked() ? RunProgram(source, copy_) : RunProgram(source)),
      mode(runMode),
      isStep(step),
      dryPercent(m(key::executeDry)->getBool(false) ? drySpeedPercent(m(key::executeDrySpeed)->getDouble(0.0))
                                                    : 0.0) {
    if (ofHandProgram()) {
        originals_ = elementNames(source);
    }
}

QString Run::name(int of) const {
    const auto at = static_cast<std::size_t>(of);
    return of >= 0 && at < originals_.size() ? originals_[at] : QString();
}

ModuleObject* Run::original(int of) const {
    const ModuleObject* const source = m(key::program);
    const QString child = name(of);
    if (child.isEmpty()) {
        return nullptr;
    }
    // Where nothing was moved it stands in its old place: found without an index of all names.
    const QString place = QLatin1Char('#') + QString::number(of);
    const mendo::Branch* const branch = mendo::NodeRef(const_cast<ModuleObject*>(source)).branch();
    if (of < source->cmobjCount() && branch->entries[static_cast<std::size_t>(of)].name == child) {
        return source->c(place);
    }
    return source->hasCmobj(child) ? source->c(child) : nullptr;
}

}  // namespace lumo
