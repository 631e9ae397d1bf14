#include "campaign/childprocess.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>

#include <cstdio>

namespace campaign {

namespace {

constexpr char begins[] = "begin ";
constexpr char ends[] = "end ";

void announce(const QByteArray& line) {
    std::fputs(line.constData(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

}  // namespace

void announceBegin(quint64 seed) {
    announce(begins + QByteArray::number(seed));
}

void announceEnd(quint64 seed, const QStringList& broken, const QJsonObject& statistics) {
    const QJsonObject outcome{{"broken", QJsonArray::fromStringList(broken)}, {"statistics", statistics}};
    announce(ends + QByteArray::number(seed) + ' ' + QJsonDocument(outcome).toJson(QJsonDocument::Compact));
}

ChildProcess::ChildProcess(const QStringList& arguments, int limitMs, QObject* parent)
    : QObject(parent), limitMs_(limitMs) {
    process_.setProgram(QCoreApplication::applicationFilePath());
    process_.setArguments(arguments);
    limit_.setSingleShot(true);
    connect(&limit_, &QTimer::timeout, this, &ChildProcess::kill);
    connect(&process_, &QProcess::readyReadStandardOutput, this, &ChildProcess::read);
    connect(&process_, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &ChildProcess::onEnd);
}

ChildProcess::~ChildProcess() {
    process_.disconnect(this);
    if (process_.state() != QProcess::NotRunning) {
        process_.kill();
        process_.waitForFinished();
    }
}

void ChildProcess::start() {
    process_.start(QIODevice::ReadOnly);
    limit_.start(limitMs_);
}

void ChildProcess::runToEnd() {
    process_.start(QIODevice::ReadOnly);
    if (!process_.waitForFinished(limitMs_) && process_.state() != QProcess::NotRunning) {
        kill();
        process_.waitForFinished();
    }
}

QStringList ChildProcess::ask(const QString& line) {
    QStringList result;
    const QMetaObject::Connection answer =
        connect(this, &ChildProcess::scheduleOver, this,
                [&result](quint64, const QStringList& broken) { result = broken; });
    if (process_.state() == QProcess::NotRunning) {
        hung_ = false;
        process_.start();
    }
    process_.write(line.toUtf8() + '\n');
    const int before = ended_;
    while (ended_ == before && process_.state() != QProcess::NotRunning) {
        if (!process_.waitForReadyRead(limitMs_) && process_.state() != QProcess::NotRunning) {
            kill();
            process_.waitForFinished();
        }
    }
    disconnect(answer);
    return result;
}

void ChildProcess::kill() {
    hung_ = true;
    process_.kill();
}

void ChildProcess::read() {
    while (process_.canReadLine()) {
        readLine(process_.readLine().trimmed());
    }
}

void ChildProcess::readLine(const QByteArray& line) {
    if (line.startsWith(begins)) {
        seed_ = line.mid(int(sizeof begins) - 1).toULongLong();
        underWay_ = true;
    } else if (underWay_ && line.startsWith(ends)) {
        const QByteArray outcome = line.mid(line.indexOf(' ', int(sizeof ends)) + 1);
        const QJsonObject object = QJsonDocument::fromJson(outcome).object();
        QStringList broken;
        for (const QJsonValue words : object["broken"].toArray()) {
            broken << words.toString();
        }
        underWay_ = false;
        ++ended_;
        emit scheduleOver(seed_, broken, object["statistics"].toObject());
    } else {
        return;
    }
    if (limit_.isActive()) {
        limit_.start(limitMs_);
    }
}

void ChildProcess::onEnd() {
    limit_.stop();
    read();
    errors_ = process_.readAllStandardError();
    if (underWay_) {
        underWay_ = false;
        ++ended_;
        emit scheduleOver(seed_, {howItEnded()}, {});
    } else if (process_.exitStatus() != QProcess::NormalExit || process_.exitCode() != 0) {
        lastWords_ = howItEnded();
    }
    emit over();
}

QString ChildProcess::howItEnded() const {
    QString words = hung_ ? QStringLiteral("the process hangs")
                    : process_.exitStatus() == QProcess::CrashExit
                        ? QStringLiteral("the process died of signal %1").arg(process_.exitCode())
                        : QStringLiteral("the process ended with code %1").arg(process_.exitCode());
    // What a sanitizer says.
    const int summary = errors_.indexOf("SUMMARY: ");
    if (summary >= 0) {
        words = QStringLiteral("the process ended: ") +
                QString::fromUtf8(errors_.mid(summary, errors_.indexOf('\n', summary) - summary));
    }
    return words;
}

}  // namespace campaign
