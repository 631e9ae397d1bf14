#pragma once

#include <QAbstractButton>

namespace app {

/// Stop in the header, the same look idle or not: a red square and the word on white. It acts when it is
/// pressed.
class RunStopButton : public QAbstractButton {
    Q_OBJECT
public:
    explicit RunStopButton(QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace app
