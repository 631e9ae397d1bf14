#include "undo/edit.h"

#include "undo/history.h"
#include "undo/recording.h"

namespace lumo {

Edit::Edit(EditedList page, const QString& text) {
    History::instance()->begin(page, text);
}

Edit::~Edit() {
    History::instance()->end();
}

void Edit::touch(const ModuleObject* node) {
    if (Recording* const recording = History::instance()->recording()) {
        recording->touch(node);
    }
}

void Edit::moving(int from, int to) {
    if (Recording* const recording = History::instance()->recording()) {
        recording->moving(from, to);
    }
}

}  // namespace lumo
