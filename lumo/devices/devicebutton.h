#pragma once

#include <QPushButton>
#include <QStringList>

namespace lumo {

/// A large button that switches a device or arms a lock. Icon and caption stand side by side in large type; a
/// caption that is too wide takes two lines, then gives up the icon, then becomes smaller.
class DeviceButton final : public QPushButton {
    Q_OBJECT
    Q_PROPERTY(QString face READ faceName)
public:
    enum class Face {
        Plain,     ///< as any button
        Armed,     ///< an open lock
        OutOfUse,  ///< pressing it does nothing
        Locked,    ///< dark grey
        On,        ///< red
        Off,       ///< black
    };

    explicit DeviceButton(QWidget* parent = nullptr);

    void setFace(Face face);
    /// "armed", as style sheets name it.
    [[nodiscard]] QString faceName() const;
    /// By its name in look/icons.
    void setIconName(const QString& name);
    /// The caption as it is drawn now.
    [[nodiscard]] QStringList shownLines() const { return setting().lines; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Setting {
        QStringList lines;
        QFont font;
        bool hasIcon;
    };
    [[nodiscard]] Setting setting() const;
    [[nodiscard]] QRgb colour() const;

    Face face_ = Face::Plain;
    QString iconName_;
};

}  // namespace lumo
