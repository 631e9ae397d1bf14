#pragma once

#include "module/host.h"
#include "widgets/watchedlinedialog.h"

#include <memory>

namespace Ui {
class DelayDialog;
}

/// How long a "delay" statement waits. OK is disabled while the line holds no time.
class DelayDialog final : public WatchedLineDialog {
    Q_OBJECT
public:
    /// Does not keep the statement.
    explicit DelayDialog(ModuleObject* statement, QWidget* parent = nullptr);
    ~DelayDialog() override;

    /// ms, as typed.
    [[nodiscard]] QString value() const;

signals:
    void signaldelayIsok(bool ok);

protected:
    void announce(bool ok) override { emit signaldelayIsok(ok); }

private:
    const std::unique_ptr<Ui::DelayDialog> ui_;
};
