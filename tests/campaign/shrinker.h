#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QStringList>

#include <functional>

namespace campaign {

/// Makes a failing schedule, as Scenario::toJson writes it, as short as it can be while it still fails:
/// parts of its lists are left out by delta debugging, members are left out so that they get their
/// default, numbers become plain ones, and so on until nothing more can go.
class Shrinker {
public:
    /// `fails` says whether a schedule still shows the same fault; it is asked `limit` times at most.
    Shrinker(std::function<bool(const QJsonObject&)> fails, int limit);

    [[nodiscard]] QJsonObject shrunk(const QJsonObject& failing);
    [[nodiscard]] int trials() const { return trials_; }

private:
    bool accept(const QStringList& path, const QJsonValue& replacement);
    void shrink(const QStringList& path);
    void shrinkList(const QStringList& path);
    void shrinkObject(const QStringList& path);
    void shrinkNumber(const QStringList& path);
    [[nodiscard]] QJsonValue at(const QStringList& path) const;

    std::function<bool(const QJsonObject&)> fails_;
    int limit_;
    int trials_ = 0;
    QJsonObject current_;
};

}  // namespace campaign
