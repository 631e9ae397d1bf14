#pragma once

#include <QAbstractButton>

namespace app {

class RoleKeeper;

/// The padlock in the header, where a code is set: closed for the operator, open for the integrator.
class RoleButton : public QAbstractButton {
    Q_OBJECT
public:
    /// `keeper` must outlive it.
    explicit RoleButton(const RoleKeeper* keeper, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void refresh();

    const RoleKeeper* keeper_;
};

}  // namespace app
