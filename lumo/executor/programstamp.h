#pragma once

#include "module/host.h"

#include <QObject>
#include <QPointer>

/// Tells whether a program is still the one it was: replacing its content changes the stamp, while
/// editing, inserting, removing and reordering statements do not.
class ProgramStamp : public QObject {
    Q_OBJECT
public:
    explicit ProgramStamp(ModuleObject* program, QObject* parent = nullptr);

    [[nodiscard]] int value() const { return value_; }

private:
    void onChanged();
    void onAdded();
    void onRemoved(const QString& name);
    void takeAnchor(ModuleObject* candidate);

    ModuleObject* program_;
    QPointer<ModuleObject> anchor_;  ///< a statement that the program holds
    int value_ = 0;
};
