#pragma once

#include "json/fileproblem.h"

#include <QJsonObject>
#include <QString>

#include <optional>

namespace telemetry {

/// What keeps settings from being used.
struct Flaw {
    enum class Kind {
        NoHost,
        BadPort,                ///< not 1 to 65535
        BadCell,                ///< empty, or with / + # or a control character
        BadPrefix,              ///< the same, but / is allowed inside
        PasswordWithoutUser,    ///< MQTT knows no such login
        FilesWithoutTls,        ///< certificates are named and the connection is not encrypted
        CertificateWithoutKey,  ///< or the key without the certificate
        NoFile,                 ///< argument: the file that cannot be read
    };
    Kind kind;
    QString argument = {};

    /// In plain English, without a full stop.
    [[nodiscard]] QString text() const;
};

/// To which broker the cell tells what it does, and as whom. Kept in a JSON file of its own that only its
/// owner can read, because of the password.
struct Settings {
    static constexpr int plainPort = 1883, tlsPort = 8883;

    bool isOn = false;
    QString host;
    int port = plainPort;
    QString prefix = QStringLiteral("lumo");  ///< in front of the cell in all topics
    QString cell;                             ///< the part of the topics that names this cell
    QString user, password;                   ///< empty: none
    /// Encrypted, the broker's certificate and name checked; that cannot be switched off.
    bool tls = false;
    QString caFile;                    ///< PEM; empty: the authorities that the system trusts
    QString certificateFile, keyFile;  ///< PEM, of this client; empty: none

    /// The first thing that is wrong. Nothing is looked at while it is off.
    [[nodiscard]] std::optional<Flaw> flaw() const;
    /// The password would cross a network as plain text.
    [[nodiscard]] bool exposesPassword() const;
    /// "lumo/cell-3/".
    [[nodiscard]] QString root() const;

    /// As the file has it.
    [[nodiscard]] QJsonObject json() const;
    /// With "(set)" instead of the password, for people to look at.
    [[nodiscard]] QJsonObject jsonWithoutPassword() const;
    /// What is missing has its default. Nothing, with place and reason in `problem`, for a file that cannot
    /// be read, has an unknown field or a value of a wrong kind.
    [[nodiscard]] static std::optional<Settings> read(const QString& file, mendo::FileProblem* problem);
    /// Writes the file whole, for its owner alone. False, with the reason in `problem`.
    [[nodiscard]] bool write(const QString& file, mendo::FileProblem* problem) const;

    /// The file in the user's configuration folder; where an administrator has put one into that of the
    /// system (/etc/xdg), that one.
    [[nodiscard]] static QString defaultFile();

    friend bool operator==(const Settings& a, const Settings& b) { return a.json() == b.json(); }
};

}  // namespace telemetry
