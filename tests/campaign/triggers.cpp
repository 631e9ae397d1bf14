#include "campaign/triggers.h"

#include "campaign/performer.h"
#include "module/globals.h"
#include "module/keys.h"

namespace campaign {

Triggers::Triggers(Performer& performer) : performer_(performer), firstLine_(m(lumo::key::program)->c(0)) {
    listen(lumo::key::triggerStart, Event::Kind::Start);
    listen(lumo::key::triggerOnce, Event::Kind::Once);
    listen(lumo::key::triggerPause, Event::Kind::Pause);
    connect(m(lumo::key::program), &ModuleObject::changed, this, &Triggers::onProgram);
}

void Triggers::listen(const QString& path, Event::Kind kind) {
    connect(m(path), &ModuleObject::changed, this,
            [this, kind](const QVariant& value, const QVariant&, QObject* sender) {
                asked_.append(performer_.beginForeign(kind, value, sender));
            });
}

void Triggers::listenLast() {
    for (const QLatin1String path :
         {lumo::key::triggerStart, lumo::key::triggerOnce, lumo::key::triggerPause}) {
        connect(m(path), &ModuleObject::changed, this, [this] { performer_.endForeign(asked_.takeLast()); });
    }
}

/// A reorder announces itself like a replacement, but leaves the lines in place.
void Triggers::onProgram() {
    ModuleObject* const program = m(lumo::key::program);
    if (!firstLine_ || firstLine_->pmobj() != program) {
        performer_.noteReplacement();
    }
    firstLine_ = program->c(0);
}

}  // namespace campaign
