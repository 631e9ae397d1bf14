#pragma once

#include "app/cell/assignedports.h"

#include <QAbstractButton>

namespace app {

/// One input or output of the controller: its name, what it is assigned to, and a lamp, or a bar and its
/// value. An input is a button that asks to be switched; an output only shows.
///
/// What is normal is grey, on or off. A fault is an amber triangle, the laser's light a red diamond: the
/// shape tells as well as the colour.
class SignalButton : public QAbstractButton {
    Q_OBJECT
public:
    enum class Kind { Input, Output };

    /// `name`: as the controller announces it ("LUMO_DI.#2"); `caption`: what is shown of it.
    SignalButton(Kind kind, const QString& name, const QString& caption);

    const QString& name() const { return name_; }
    /// The equipment behind it; without a label when it is assigned to nothing.
    void setPort(const AssignedPort& port);
    const QString& label() const { return port_.label; }
    /// A bool for a lamp, a number for an analogue output.
    void setValue(const QVariant& value);
    bool isOn() const { return on_; }
    /// Whether the value says that something is wrong.
    bool isFault() const;
    /// The value in words.
    QString valueText() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QFont smallFont() const;
    void paintLamp(QPainter* painter, const QRect& place) const;
    void paintBar(QPainter* painter) const;

    QString name_;
    AssignedPort port_;
    bool analogue_ = false;
    bool on_ = false;
    int number_ = 0;
};

}  // namespace app
