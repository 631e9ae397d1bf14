#include "panel/toolset.h"

#include "files/stationrun.h"
#include "program/words.h"

#include <QComboBox>
#include <QtMath>

using namespace prog;

namespace lumo {

namespace {

/// How the selector of the tool differs from that of the work object.
struct SelectorKind {
    QLatin1String part;  ///< in a tool set
    QLatin1String hostList;
};

SelectorKind kindOf(bool isTool) {
    return isTool ? SelectorKind{field::end, key::toolList} : SelectorKind{field::ref, key::wobjList};
}

ModuleObject* defaultPart(const SelectorKind& kind) {
    return m(key::defaultToolset)->c(kind.part);
}

ModuleObject* partInForce(const SelectorKind& kind) {
    return m(key::toolset)->c(kind.part);
}

QString nameOf(const ModuleObject* part) {
    return part->c(field::name)->getString();
}

/// The host's tool or work object of an entry; the null node if there is none. The host's list may have
/// changed since the selector was filled, so a position counts only if the name agrees.
ModuleObject* hostPart(const SelectorKind& kind, int entry, const QString& name) {
    const ModuleObject* list = m(kind.hostList);
    ModuleObject* atPosition = list->c(entry - 1);
    if (nameOf(atPosition) == name) {
        return atPosition;
    }
    const QList<ModuleObject*> parts = list->cmobjs();
    const auto named = std::find_if(parts.begin(), parts.end(),
                                    [&name](const ModuleObject* part) { return nameOf(part) == name; });
    return named == parts.end() ? ModuleObject::null() : *named;
}

struct Conversion {
    QLatin1String target;
    QLatin1String source;
    double divisor;
    double factor;
};

constexpr double millimetres = 1000.0;
constexpr double squareMillimetres = 1000000.0;

constexpr Conversion frameConversions[] = {
    {"trans.#0"_l1, "frame.pos.x"_l1, millimetres, 1.0}, {"trans.#1"_l1, "frame.pos.y"_l1, millimetres, 1.0},
    {"trans.#2"_l1, "frame.pos.z"_l1, millimetres, 1.0}, {"rot.#0"_l1, "frame.ori.euler.a"_l1, 180.0, M_PI},
    {"rot.#1"_l1, "frame.ori.euler.b"_l1, 180.0, M_PI},  {"rot.#2"_l1, "frame.ori.euler.c"_l1, 180.0, M_PI},
};

constexpr Conversion loadConversions[] = {
    {"load.mass"_l1, "load.mass"_l1, 1.0, 1.0},
    {"load.cog.#0"_l1, "load.pose.pos.x"_l1, millimetres, 1.0},
    {"load.cog.#1"_l1, "load.pose.pos.y"_l1, millimetres, 1.0},
    {"load.cog.#2"_l1, "load.pose.pos.z"_l1, millimetres, 1.0},
    {"load.inertia.#0"_l1, "load.moment.#0"_l1, squareMillimetres, 1.0},
    {"load.inertia.#1"_l1, "load.moment.#1"_l1, squareMillimetres, 1.0},
    {"load.inertia.#2"_l1, "load.moment.#2"_l1, squareMillimetres, 1.0},
};

void convert(const Conversion& row, ModuleObject* source, ModuleObject* target) {
    target->set(nullptr, row.target, source->r(row.source)->getDouble() / row.divisor * row.factor);
}

}  // namespace

void fillToolsetSelector(QComboBox* combo, bool isTool) {
    const SelectorKind kind = kindOf(isTool);
    combo->addItem(nameOf(defaultPart(kind)));
    const QList<ModuleObject*> parts = m(kind.hostList)->cmobjs();
    for (const ModuleObject* part : parts) {
        combo->addItem(nameOf(part));
    }
    const int inForce = combo->findText(nameOf(partInForce(kind)));
    if (inForce >= 0) {
        combo->setCurrentIndex(inForce);
    }
}

bool selectToolsetName(QComboBox* combo, const QString& name) {
    if (name.isEmpty()) {
        return false;
    }
    if (combo->findText(name) < 0) {
        combo->addItem(name);
    }
    const int before = combo->currentIndex();
    combo->setCurrentIndex(combo->findText(name));
    return combo->currentIndex() != before;
}

void applyToolsetSelector(QObject* sender, const QComboBox* combo, bool isTool) {
    const SelectorKind kind = kindOf(isTool);
    const int entry = combo->currentIndex();
    const QString name = combo->currentText();
    ModuleObject* part = partInForce(kind);
    if (entry == 0) {
        part->copyFrom(sender, defaultPart(kind));
    } else if (entry > 0) {
        ModuleObject* source = hostPart(kind, entry, name);
        if (!source->isNull()) {
            ModuleObject converted(QStringLiteral("temp"));
            getToolsAndWobjsParam(isTool, source, &converted);
            part->copyFrom(sender, &converted);
        }
    }
    part->set(sender, field::name, name);
    sendToolset(sender);
}

}  // namespace lumo

void getToolsAndWobjsParam(bool isTool, ModuleObject* source, ModuleObject* target) {
    for (const lumo::Conversion& row : lumo::frameConversions) {
        lumo::convert(row, source, target);
    }
    if (isTool) {
        for (const lumo::Conversion& row : lumo::loadConversions) {
            lumo::convert(row, source, target);
        }
    }
}
