#pragma once

#include <QFrame>
#include <QStringList>

class QLabel;

namespace app {

class WhyWatch;

/// The line that always tells why: a tick where a weld has all it needs, and the watch's sentences, in
/// two rows at most; what does not fit is in its tooltip.
class WhyLine : public QFrame {
    Q_OBJECT
public:
    /// `watch` must outlive it.
    explicit WhyLine(const WhyWatch* watch, QWidget* parent = nullptr);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void refresh();
    void fit();

    const WhyWatch* watch_;
    QLabel* sign_;
    QLabel* text_;
};

}  // namespace app
