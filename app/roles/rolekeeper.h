#pragma once

#include "app/roles/codehash.h"

#include <QObject>
#include <QTimer>

#include <memory>

namespace app {

/// Operator or integrator. While no code is set, all is open to everybody. The integrator's code is kept as a
/// salted hash in a file of its own; without the file there is no code. A session of the integrator ends
/// after some minutes without input, but not under an open dialog. Wrong codes make the next try wait.
class RoleKeeper : public QObject {
    Q_OBJECT
public:
    static constexpr int leastDigits = 4;
    static constexpr int mostDigits = 12;
    static constexpr int sessionMs = 10 * 60 * 1000;
    static constexpr int freeTries = 3;

    explicit RoleKeeper(const QString& file, QObject* parent = nullptr);
    /// The one in the user's configuration folder; where an administrator has put one into that of the system
    /// (/etc/xdg), that one.
    static QString defaultFile();

    [[nodiscard]] bool hasCode() const { return hasCode_; }
    [[nodiscard]] bool isIntegrator() const { return hasCode_ && isIntegrator_; }
    /// Whether what is the integrator's may be done.
    [[nodiscard]] bool isOpen() const { return !hasCode_ || isIntegrator_; }
    /// Until the next code is taken, in ms.
    [[nodiscard]] qint64 waitMs() const;

    /// Reads the file again, which an administrator may have deleted.
    void reload();
    /// Checks a code; the answer comes later. Nothing while another one is checked or a wait lasts.
    void check(const QString& code);
    /// Sets a new code; the session of the integrator begins. Only the integrator may call it where a code is
    /// set.
    void setCode(const QString& code);
    void removeCode();
    /// Ends the integrator's session.
    void leave();

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void changed();
    void accepted();
    void refused();
    /// The integrator's session has ended.
    void left();
    void removed();
    /// The code could or could not be written.
    void stored(bool done);

private:
    enum class Purpose { Check, Set };
    void begin(Purpose purpose, const QString& code);
    void work();
    void checked(bool fits);
    void enter();
    void onSessionOver();
    bool write();
    void startWait();

    QString file_;
    bool hasCode_ = false;
    bool isIntegrator_ = false;
    QByteArray salt_, hash_;
    int iterations_ = 0;
    int wrong_ = 0;  ///< codes since the last right one
    qint64 waitUntilMs_ = 0;
    QTimer session_;
    QTimer working_;
    Purpose purpose_ = Purpose::Check;
    QByteArray newSalt_;
    std::unique_ptr<CodeHash> work_;
};

}  // namespace app
