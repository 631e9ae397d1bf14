#pragma once

#include "module/host.h"
#include "widgets/watchedlinedialog.h"

#include <QPointer>

#include <memory>

namespace Ui {
class SelectParamDialog;
}

/// Chooses a parameter set: for a start of welding, together with the weld speed, or for a change within a
/// weld. OK is disabled while no set is chosen, as when the set of the statement was deleted.
class SelectParamDialog final : public WatchedLineDialog {
    Q_OBJECT
public:
    explicit SelectParamDialog(ModuleObject* statement, QWidget* parent = nullptr);
    ~SelectParamDialog() override;

    /// 1: the form for a start of welding, with the weld speed; OK is disabled while that is empty or 0. 0:
    /// the form for a change of parameters. Other values change nothing.
    void setbeginOrparam(int mode);
    /// Position of the chosen set in the list of sets; -1 when none is chosen.
    [[nodiscard]] int index() const;
    /// mm/s, as typed.
    [[nodiscard]] QString weldSpeed() const;

signals:
    void signalSelectParamIsok(bool ok);

protected:
    [[nodiscard]] bool canAccept() const override;
    void announce(bool ok) override { emit signalSelectParamIsok(ok); }

private:
    const std::unique_ptr<Ui::SelectParamDialog> ui_;
    const QPointer<ModuleObject> statement_;
};
