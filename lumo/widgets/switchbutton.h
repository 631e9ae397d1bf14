#pragma once

#include <QColor>
#include <QTimer>
#include <QWidget>

/// A toggle switch: a round knob slides in a rounded track, from off at the left to on at the right. The free
/// part of the track shows a text. The space bar switches it as a press does.
///
/// Sizes are in pixels. `radius`, `showText` and `showCircle` are stored, but have no effect on the drawing.
class SwitchButton : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool checked READ checked)
public:
    explicit SwitchButton(QWidget* parent = nullptr);

    /// Gap between the track's edge and the knob.
    int space() const { return space_; }
    int radius() const { return radius_; }
    bool checked() const { return checked_; }
    bool showText() const { return showText_; }
    bool showCircle() const { return showCircle_; }
    /// The knob slides; otherwise it jumps.
    bool animation() const { return animation_; }
    QColor bgColorOn() const { return bgColorOn_; }
    QColor bgColorOff() const { return bgColorOff_; }
    QColor sliderColorOn() const { return sliderColorOn_; }
    QColor sliderColorOff() const { return sliderColorOff_; }
    QColor textColor() const { return textColor_; }
    QString textOn() const { return textOn_; }
    QString textOff() const { return textOff_; }
    /// Distance of one step of the slide.
    int step() const { return step_; }
    /// Position of the knob.
    int startX() const { return startX_; }
    /// Position that the knob slides to.
    int endX() const { return endX_; }

    QSize sizeHint() const override { return {120, 48}; }

public slots:
    void setSpace(int space);
    void setRadius(int radius);
    /// Changes colours and text without a signal. The knob of a visible switch stays where it is; a hidden
    /// one moves it to its end when it is shown.
    void setChecked(bool checked);
    void setShowText(bool show);
    void setShowCircle(bool show);
    void setAnimation(bool animation);
    void setBgColorOn(const QColor& color);
    void setBgColorOff(const QColor& color);
    void setSliderColorOn(const QColor& color);
    void setSliderColorOff(const QColor& color);
    void setTextColor(const QColor& color);
    void setTextOn(const QString& text);
    void setTextOff(const QString& text);
    /// Puts the knob where it belongs, without a slide: after a change that no press made.
    void rest();
    /// One step of the slide.
    void UpdateValue();

signals:
    /// A press has switched it.
    void statusChanged(bool checked);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    template <typename T>
    void assign(T& member, const T& value) {
        if (member != value) {
            member = value;
            update();
        }
    }
    void toggle();
    void drawTrack(QPainter& painter) const;
    void drawText(QPainter& painter) const;
    void drawKnob(QPainter& painter) const;
    QFont fittingFont(const QString& text) const;
    int knobSize() const;
    int restingX() const;

    int space_ = 2;
    int radius_ = 5;
    bool checked_ = false;
    bool showText_ = false;
    bool showCircle_ = false;
    bool animation_ = true;
    QColor bgColorOn_{30, 144, 255};
    QColor bgColorOff_{111, 122, 126};
    QColor sliderColorOn_{255, 255, 255};
    QColor sliderColorOff_{255, 255, 255};
    QColor textColor_{255, 255, 255};
    QString textOn_;
    QString textOff_;
    int step_ = 0;
    int startX_ = 0;
    int endX_ = 0;
    QTimer timer_{this};
};
