#pragma once

#include <QCoreApplication>
#include <QString>
#include <QTranslator>

namespace test {

/// Installs the package's catalogue of a language during its lifetime.
class Language {
public:
    explicit Language(const QString& name) {
        if (catalogue_.load(QStringLiteral(":/lumo/language/lumo_%1.qm").arg(name))) {
            QCoreApplication::installTranslator(&catalogue_);
        }
    }
    ~Language() { QCoreApplication::removeTranslator(&catalogue_); }
    Q_DISABLE_COPY_MOVE(Language)

private:
    QTranslator catalogue_;
};

}  // namespace test
