#pragma once

#include <QAbstractButton>

namespace app {

/// One input or output of the controller: its name, what it is assigned to, and a lamp or a value.
/// An input is a button that asks to be switched; an output only shows.
class SignalButton : public QAbstractButton {
    Q_OBJECT
public:
    enum class Kind { Input, Output };

    /// `name`: as the controller announces it ("LUMO_DI.#2"); `caption`: what is shown of it.
    SignalButton(Kind kind, const QString& name, const QString& caption);

    const QString& name() const { return name_; }
    /// The equipment behind it; empty when it is assigned to nothing.
    void setLabel(const QString& label);
    const QString& label() const { return label_; }
    /// A bool for a lamp, a number for an analogue output.
    void setValue(const QVariant& value);
    bool isOn() const { return on_; }
    /// The value in words.
    QString valueText() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QFont smallFont() const;
    void paintLamp(QPainter* painter, const QRect& place) const;

    QString name_, label_;
    bool analogue_ = false;
    bool on_ = false;
    int number_ = 0;
};

}  // namespace app
