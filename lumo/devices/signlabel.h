#pragma once

#include <QLabel>

namespace lumo {

/// What stands before a text and gives it its colour.
enum class Sign {
    None,
    LampOn,   ///< a filled circle
    LampOff,  ///< a hollow one
    Laser,    ///< red diamond
    Pilot,    ///< the red pilot light
    Armed,    ///< open lock, amber
    Locked,   ///< closed lock
    Warning,  ///< triangle, amber
    Refused,  ///< triangle, red: a value that is not taken
};

/// A text with a sign before its first line. The page's style sheet gives both size and colour by the
/// property `sign`. It is painted anew only when something changes.
class SignLabel : public QLabel {
    Q_OBJECT
    Q_PROPERTY(QString sign READ signName)
public:
    explicit SignLabel(QWidget* parent = nullptr);

    void show(Sign sign, const QString& text);
    /// The same text under another sign.
    void setSign(Sign sign);
    [[nodiscard]] Sign sign() const { return sign_; }
    /// "armed", as style sheets name it.
    [[nodiscard]] QString signName() const;

    using QLabel::show;

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void makeRoom();
    [[nodiscard]] int signSize() const;

    Sign sign_ = Sign::None;
};

}  // namespace lumo
