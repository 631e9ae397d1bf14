#include "app/roles/rolekeeper.h"

#include "mendo/clock.h"
#include "mendo/modulemanager.h"

#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>

#include <algorithm>

namespace app {

namespace {

const QString saltKey = QStringLiteral("salt");
const QString hashKey = QStringLiteral("hash");
const QString iterationsKey = QStringLiteral("iterations");
const QString wrongKey = QStringLiteral("wrong");

constexpr int iterations = 30000;
constexpr int mostIterations = 10000000;
constexpr int atOnce = 300;  // takes about 1 ms
constexpr int dialogMs = 1000;
constexpr qint64 firstWaitMs = 5000, longestWaitMs = 300000;

qint64 nowMs() {
    return mendo::Clock::current().elapsedMs();
}

/// In a time that does not depend on where they differ.
bool isSame(const QByteArray& a, const QByteArray& b) {
    int difference = a.size() ^ b.size();
    for (int i = 0; i < std::min(a.size(), b.size()); ++i) {
        difference |= a.at(i) ^ b.at(i);
    }
    return difference == 0;
}

bool isInput(QEvent::Type type) {
    return type == QEvent::MouseButtonPress || type == QEvent::KeyPress || type == QEvent::TouchBegin ||
           type == QEvent::Wheel;
}

}  // namespace

RoleKeeper::RoleKeeper(const QString& file, QObject* parent) : QObject(parent), file_(file) {
    session_.setSingleShot(true);
    connect(&session_, &QTimer::timeout, this, &RoleKeeper::onSessionOver);
    connect(&working_, &QTimer::timeout, this, &RoleKeeper::work);
    reload();
    startWait();
}

QString RoleKeeper::defaultFile() {
    QStringList folders = QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation);
    const QString own = folders.takeFirst();
    const auto fileIn = [](const QString& folder) {
        return QStringLiteral("%1/%2/%3-integrator.json")
            .arg(folder, QCoreApplication::organizationName(), QCoreApplication::applicationName());
    };
    for (const QString& folder : qAsConst(folders)) {
        if (QFileInfo::exists(fileIn(folder))) {
            return fileIn(folder);
        }
    }
    return fileIn(own);
}

/// A file that cannot be read keeps everything locked: no code fits.
void RoleKeeper::reload() {
    const bool before = isOpen();
    hasCode_ = QFileInfo::exists(file_);
    if (hasCode_) {
        const QJsonObject json = mendo::ModuleManager::readFromJson(file_).toObject();
        salt_ = QByteArray::fromHex(json[saltKey].toString().toLatin1());
        hash_ = QByteArray::fromHex(json[hashKey].toString().toLatin1());
        iterations_ = qBound(1, json[iterationsKey].toInt(), mostIterations);
        wrong_ = std::max(wrong_, json[wrongKey].toInt());
    }
    if (before != isOpen()) {
        emit changed();
    }
}

qint64 RoleKeeper::waitMs() const {
    return std::max<qint64>(0, waitUntilMs_ - nowMs());
}

/// 5 s after the third wrong code, twice as long after each further one.
void RoleKeeper::startWait() {
    if (hasCode_ && wrong_ >= freeTries) {
        constexpr int mostDoublings = 6;
        const int doublings = std::min(wrong_ - freeTries, mostDoublings);
        waitUntilMs_ = nowMs() + std::min(longestWaitMs, firstWaitMs << doublings);
    }
}

// --- Codes ----------------------------------------------------------------------------------------

void RoleKeeper::check(const QString& code) {
    if (hasCode_ && !work_ && waitMs() == 0) {
        begin(Purpose::Check, code);
    }
}

void RoleKeeper::setCode(const QString& code) {
    if (isOpen() && !work_) {
        begin(Purpose::Set, code);
    }
}

void RoleKeeper::begin(Purpose purpose, const QString& code) {
    purpose_ = purpose;
    newSalt_ = purpose == Purpose::Set ? newSalt() : salt_;
    work_ = std::make_unique<CodeHash>(code.toUtf8(), newSalt_,
                                       purpose == Purpose::Set ? iterations : iterations_);
    working_.start(1);
}

void RoleKeeper::work() {
    if (!work_->advance(atOnce)) {
        return;
    }
    working_.stop();
    const QByteArray result = work_->result();
    work_.reset();
    if (purpose_ == Purpose::Check) {
        checked(!hash_.isEmpty() && isSame(result, hash_));
        return;
    }
    salt_ = newSalt_;
    hash_ = result;
    iterations_ = iterations;
    wrong_ = 0;
    const bool done = write();
    if (done) {
        hasCode_ = true;
        enter();
    }
    emit stored(done);
}

void RoleKeeper::checked(bool fits) {
    const int before = wrong_;
    wrong_ = fits ? 0 : wrong_ + 1;
    if (wrong_ != before && QFileInfo(QFileInfo(file_).absolutePath()).isWritable()) {
        write();
    }
    if (fits) {
        enter();
        emit accepted();
    } else {
        startWait();
        emit refused();
    }
}

/// A damaged file is left as it is.
bool RoleKeeper::write() {
    if (hash_.isEmpty()) {
        return false;
    }
    const QJsonObject json{{saltKey, QString::fromLatin1(salt_.toHex())},
                           {hashKey, QString::fromLatin1(hash_.toHex())},
                           {iterationsKey, iterations_},
                           {wrongKey, wrong_}};
    QDir().mkpath(QFileInfo(file_).absolutePath());
    return mendo::ModuleManager::writeText(file_, QJsonDocument(json).toJson());
}

void RoleKeeper::removeCode() {
    if (isIntegrator() && (QFile::remove(file_) || !QFileInfo::exists(file_))) {
        hasCode_ = false;
        leave();
        emit removed();
    }
}

// --- The session ----------------------------------------------------------------------------------

void RoleKeeper::enter() {
    isIntegrator_ = true;
    session_.start(sessionMs);
    QCoreApplication::instance()->installEventFilter(this);
    emit changed();
}

void RoleKeeper::leave() {
    if (!isIntegrator_) {
        return;
    }
    isIntegrator_ = false;
    session_.stop();
    QCoreApplication::instance()->removeEventFilter(this);
    emit changed();
    emit left();
}

bool RoleKeeper::eventFilter(QObject* watched, QEvent* event) {
    if (isInput(event->type()) && isIntegrator_) {
        session_.start(sessionMs);
    }
    return QObject::eventFilter(watched, event);
}

/// The page under an open dialog is left when the dialog is closed.
void RoleKeeper::onSessionOver() {
    if (QApplication::activeModalWidget()) {
        session_.start(dialogMs);
        return;
    }
    leave();
}

}  // namespace app
