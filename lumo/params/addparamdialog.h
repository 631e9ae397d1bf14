#pragma once

#include "widgets/watchedlinedialog.h"

class QLabel;
class QLineEdit;

/// Asks for a name, without checking it. Hides before it announces its answer.
class AddParamDialog final : public WatchedLineDialog {
    Q_OBJECT
public:
    explicit AddParamDialog(QWidget* parent = nullptr);

    /// Puts a name into the line, to be typed over.
    void propose(const QString& name);
    /// As typed.
    [[nodiscard]] QString name() const;
    /// Sets the prompt; the default asks for a new parameter set.
    void settitlename(const QString& title);

signals:
    void signalAddParamIsok(bool ok);

protected:
    void announce(bool ok) override { emit signalAddParamIsok(ok); }

private:
    QLabel* label_;
    QLineEdit* lineEdit_;
};
