#pragma once

#include <QWidget>

class QStackedWidget;

namespace app {

/// Lays out the pages and the strip of the cell beside them. Where both do not fit side by side, the
/// unfolded strip lies over the pages instead of squeezing them: over their left side, because what
/// runs and stops a program is usually on the right.
class PanelBody : public QWidget {
    Q_OBJECT
public:
    explicit PanelBody(QWidget* parent = nullptr);

    /// The pages, which belong to this widget.
    QStackedWidget* pages() const { return pages_; }
    /// Takes over the strip, which is better made in here.
    void setStrip(QWidget* strip);
    QWidget* strip() const { return strip_; }

    void setFolded(bool folded);
    /// Whether pages and strip fit side by side.
    bool hasRoom() const;

    QSize minimumSizeHint() const override;

signals:
    /// There may be room now, or no more.
    void resized();

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    void arrange();

    QStackedWidget* pages_;
    QWidget* strip_ = nullptr;
    bool folded_ = false;
};

}  // namespace app
