#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QWidget>

class QAbstractButton;
class QStackedWidget;

namespace app {

class RoleKeeper;

/// Locks the ways to the pages of the package that are the integrator's: ports, stations, devices by hand. A
/// page that is open when the session ends is left. What runs or is on stays so, and Stop is not touched.
class RoleGate : public QObject {
    Q_OBJECT
public:
    /// `keeper` must outlive it. `page`: the package's page.
    RoleGate(const RoleKeeper* keeper, QWidget* page, QObject* parent = nullptr);

    bool eventFilter(QObject* watched, QEvent* event) override;
    /// The integrator is there: opens the page that was refused last.
    void openRefused();
    void forgetRefused() { refused_.clear(); }

signals:
    /// The page with this title was refused.
    void refused(const QString& title);

private:
    void refresh();
    void leaveLockedPage();
    void refuse(QAbstractButton* way);
    [[nodiscard]] QAbstractButton* wayTo(const QWidget* shown) const;

    const RoleKeeper* keeper_;
    QPointer<QWidget> page_;
    QPointer<QStackedWidget> stack_;
    QList<QPointer<QWidget>> badges_;
    QPointer<QAbstractButton> refused_;
};

}  // namespace app
