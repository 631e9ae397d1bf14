#pragma once

#include "app/parts/partcounter.h"

#include <QAbstractButton>

namespace app {

/// The counter in the header: parts made and their target. A tap opens target and reset.
class PartsBlock : public QAbstractButton {
    Q_OBJECT
public:
    explicit PartsBlock(QWidget* parent = nullptr);

    /// Without a project the block is disabled.
    void setCount(const QString& project, const PartCount& count);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool isReached_ = false;
    QString made_;
    QString target_;  ///< " / 40"; empty without a target
};

}  // namespace app
