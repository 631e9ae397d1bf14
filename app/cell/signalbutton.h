#pragma once

#include "app/cell/assignedports.h"

#include <QAbstractButton>

namespace app {

/// One input or output of the controller: name, label of its port, and a lamp (digital) or a bar with the
/// value (analogue). Only inputs can be clicked.
///
/// The lamp is grey, filled when on. A fault is an amber triangle, the emitting laser a red diamond; the
/// shapes differ for people who cannot see the colours.
class SignalButton : public QAbstractButton {
    Q_OBJECT
public:
    enum class Kind { Input, Output };

    /// `name` is the controller's ("LUMO_DI.#2"), `caption` the text shown.
    SignalButton(Kind kind, const QString& name, const QString& caption);

    const QString& name() const { return name_; }
    /// The assigned port; its label is empty when there is none.
    void setPort(const AssignedPort& port);
    const QString& label() const { return port_.label; }
    /// A bool, or an int for an analogue output.
    void setValue(const QVariant& value);
    bool isOn() const { return on_; }
    /// Whether the value means a fault.
    bool isFault() const;
    /// "1", "0" or "50.0 %".
    QString valueText() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintName(QPainter* painter, QRect inside) const;
    void paintLamp(QPainter* painter, const QRect& area) const;
    void paintBar(QPainter* painter) const;

    QString name_;
    AssignedPort port_;
    bool analogue_ = false;
    bool on_ = false;
    int number_ = 0;
};

}  // namespace app
