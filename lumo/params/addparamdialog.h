#pragma once

#include "widgets/watchedlinedialog.h"

class QLabel;
class QLineEdit;

/// Asks for a name. It checks nothing and is hidden when it announces its answer.
class AddParamDialog final : public WatchedLineDialog {
    Q_OBJECT
public:
    explicit AddParamDialog(QWidget* parent = nullptr);

    /// As typed.
    [[nodiscard]] QString name() const;
    /// Sets the prompt; without it, it asks for a new parameter set.
    void settitlename(const QString& title);

signals:
    void signalAddParamIsok(bool ok);

protected:
    void announce(bool ok) override { emit signalAddParamIsok(ok); }

private:
    QLabel* label_;
    QLineEdit* lineEdit_;
};
