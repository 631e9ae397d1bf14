#include "telemetry/settings.h"

#include "json/jsonfile.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>
#include <QStandardPaths>

#include <algorithm>
#include <cerrno>

namespace telemetry {

namespace {

using Kind = mendo::FileProblem::Kind;

const QString onKey = QStringLiteral("on");
const QString tlsKey = QStringLiteral("tls");
const QString portKey = QStringLiteral("port");
const QString passwordKey = QStringLiteral("password");

struct TextField {
    QString key;
    QString Settings::*value;
};
const TextField textFields[] = {
    {QStringLiteral("host"), &Settings::host},
    {QStringLiteral("prefix"), &Settings::prefix},
    {QStringLiteral("cell"), &Settings::cell},
    {QStringLiteral("user"), &Settings::user},
    {passwordKey, &Settings::password},
    {QStringLiteral("ca_file"), &Settings::caFile},
    {QStringLiteral("certificate_file"), &Settings::certificateFile},
    {QStringLiteral("key_file"), &Settings::keyFile},
};

/// Whether a text can stand in a topic to which something is published.
bool isTopicPart(const QString& text) {
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) {
        return c.isPrint() && c != QLatin1Char('+') && c != QLatin1Char('#');
    });
}

bool isPrefix(const QString& text) {
    const QStringList parts = text.split(QLatin1Char('/'));
    return !text.startsWith(QLatin1Char('$')) && std::all_of(parts.begin(), parts.end(), isTopicPart);
}

/// Takes one entry of the file over; why it cannot be taken.
std::optional<Kind> take(const QString& key, const QJsonValue& value, Settings* settings) {
    if (key == onKey || key == tlsKey) {
        (key == onKey ? settings->isOn : settings->tls) = value.toBool();
        return value.isBool() ? std::nullopt : std::make_optional(Kind::NoTruthValue);
    }
    if (key == portKey) {
        settings->port = value.toInt();
        return value.isDouble() ? std::nullopt : std::make_optional(Kind::NoNumber);
    }
    for (const TextField& field : textFields) {
        if (key == field.key) {
            settings->*field.value = value.toString();
            return value.isString() ? std::nullopt : std::make_optional(Kind::NoText);
        }
    }
    return Kind::UnknownField;
}

}  // namespace

QString Flaw::text() const {
    switch (kind) {
        case Kind::NoHost:
            return QStringLiteral("there is no host");
        case Kind::BadPort:
            return QStringLiteral("the port is not 1 to 65535");
        case Kind::BadCell:
            return QStringLiteral("the cell's name is empty or has one of / + #");
        case Kind::BadPrefix:
            return QStringLiteral("the prefix has an empty part, + or #, or begins with $");
        case Kind::PasswordWithoutUser:
            return QStringLiteral("there is a password and no user");
        case Kind::FilesWithoutTls:
            return QStringLiteral("certificates are named and TLS is off");
        case Kind::CertificateWithoutKey:
            return QStringLiteral("certificate and key of the client belong together");
        case Kind::NoFile:
            break;
    }
    return QStringLiteral("%1 cannot be read").arg(argument);
}

std::optional<Flaw> Settings::flaw() const {
    if (!isOn) {
        return std::nullopt;
    }
    constexpr int mostPort = 65535;
    const QStringList files{caFile, certificateFile, keyFile};
    const bool hasFiles = !files.join(QString()).isEmpty();
    const struct {
        bool isWrong;
        Flaw::Kind kind;
    } rows[] = {
        {host.trimmed().isEmpty(), Flaw::Kind::NoHost},
        {port < 1 || port > mostPort, Flaw::Kind::BadPort},
        {!isTopicPart(cell) || cell.contains(QLatin1Char('/')), Flaw::Kind::BadCell},
        {!isPrefix(prefix), Flaw::Kind::BadPrefix},
        {!password.isEmpty() && user.isEmpty(), Flaw::Kind::PasswordWithoutUser},
        {hasFiles && !tls, Flaw::Kind::FilesWithoutTls},
        {certificateFile.isEmpty() != keyFile.isEmpty(), Flaw::Kind::CertificateWithoutKey},
    };
    for (const auto& row : rows) {
        if (row.isWrong) {
            return Flaw{row.kind};
        }
    }
    for (const QString& file : files) {
        const QFileInfo info(file);
        if (!file.isEmpty() && !(info.isFile() && info.isReadable())) {
            return Flaw{Flaw::Kind::NoFile, file};
        }
    }
    return std::nullopt;
}

bool Settings::exposesPassword() const {
    const QString name = host.trimmed();
    const bool isThisMachine = name == QLatin1String("localhost") || name == QLatin1String("::1") ||
                               name.startsWith(QLatin1String("127."));
    return !tls && !password.isEmpty() && !isThisMachine;
}

QString Settings::root() const {
    return QStringLiteral("%1/%2/").arg(prefix, cell);
}

QJsonObject Settings::json() const {
    QJsonObject json{{onKey, isOn}, {tlsKey, tls}, {portKey, port}};
    for (const TextField& field : textFields) {
        json.insert(field.key, this->*field.value);
    }
    return json;
}

QJsonObject Settings::jsonWithoutPassword() const {
    QJsonObject shown = json();
    if (!password.isEmpty()) {
        shown.insert(passwordKey, QStringLiteral("(set)"));
    }
    return shown;
}

std::optional<Settings> Settings::read(const QString& file, mendo::FileProblem* problem) {
    const std::optional<mendo::JsonText> text = mendo::readJsonFile(file, problem);
    if (!text) {
        return std::nullopt;
    }
    if (text->isArray()) {
        *problem = {file, text->place(), {{Kind::NoRecord}}};
        return std::nullopt;
    }
    Settings settings;
    const QJsonObject json = text->value().toObject();
    for (auto entry = json.begin(); entry != json.end(); ++entry) {
        if (const std::optional<Kind> fault = take(entry.key(), entry.value(), &settings)) {
            *problem = {file, text->place({entry.key()}), {{*fault, {entry.key()}}}};
            return std::nullopt;
        }
    }
    return settings;
}

bool Settings::write(const QString& file, mendo::FileProblem* problem) const {
    QDir().mkpath(QFileInfo(file).absolutePath());
    QSaveFile saved(file);
    const QByteArray text = QJsonDocument(json()).toJson();
    errno = 0;
    // Before anything secret is in it.
    if (saved.open(QIODevice::WriteOnly) && saved.setPermissions(QFile::ReadOwner | QFile::WriteOwner) &&
        saved.write(text) == text.size() && saved.commit()) {
        return true;
    }
    *problem = {file, {}, {mendo::systemReason(errno != 0 ? errno : EIO)}};
    return false;
}

QString Settings::defaultFile() {
    const QStringList folders = QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation);
    const QString own = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    const auto fileIn = [](const QString& folder) { return folder + QStringLiteral("/lumo/telemetry.json"); };
    for (const QString& folder : folders) {
        if (folder != own && QFileInfo::exists(fileIn(folder))) {
            return fileIn(folder);
        }
    }
    return fileIn(own);
}

}  // namespace telemetry
