#include "Updates/SignedPackages.h"

#include <QProcess>
#include <QProcessEnvironment>

#include <gtest/gtest.h>

namespace tavro {

const QString SignedPackages::maker = QStringLiteral("Maker of TAVRO");
const QString SignedPackages::stranger = QStringLiteral("Somebody else");
const QString SignedPackages::formerMaker = QStringLiteral("Former maker of TAVRO");

namespace {

/// For everything that is done with the expired key.
QStringList longAgo() {
    return {QStringLiteral("--faked-system-time"), QStringLiteral("20200101T000000!")};
}

} // namespace

SignedPackages::SignedPackages() {
    QDir().mkdir(folder_.path(QStringLiteral("keys")),
                 QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    makeKey(maker, {}, QStringLiteral("never"));
    makeKey(stranger, {}, QStringLiteral("never"));
    makeKey(formerMaker, longAgo(), QStringLiteral("1m"));
    const auto keys = gpg({QStringLiteral("--export"), maker, formerMaker});
    EXPECT_FALSE(keys.isEmpty());
    folder_.file(QStringLiteral("keyring.gpg"), keys);
}

SignedPackages::~SignedPackages() {
    // The keys were given to an agent of their own, which would stay.
    static_cast<void>(run(QStringLiteral("gpgconf"), {QStringLiteral("--kill"), QStringLiteral("all")}));
}

void SignedPackages::makeKey(const QString& name, const QStringList& options, const QString& expiry) const {
    static_cast<void>(gpg(options + QStringList{QStringLiteral("--quick-generate-key"), name,
                                                QStringLiteral("ed25519"), QStringLiteral("sign"), expiry}));
}

QByteArray SignedPackages::run(const QString& program, const QStringList& arguments) const {
    QProcess process;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("GNUPGHOME"), folder_.path(QStringLiteral("keys")));
    process.setProcessEnvironment(environment);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished())
        << program.toStdString() << " " << process.errorString().toStdString();
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
}

QByteArray SignedPackages::gpg(const QStringList& arguments) const {
    return run(QStringLiteral("gpg"),
               QStringList{QStringLiteral("--batch"), QStringLiteral("--no-tty"),
                           QStringLiteral("--pinentry-mode"), QStringLiteral("loopback"),
                           QStringLiteral("--passphrase"), QString()} +
                   arguments);
}

QString SignedPackages::package(const QString& name, const QString& version) {
    const auto number = QString::number(++packages_);
    const auto tree = folder_.path(QStringLiteral("tree") + number);
    EXPECT_TRUE(QDir().mkpath(tree + QLatin1String("/DEBIAN")));
    folder_.file(QStringLiteral("tree%1/DEBIAN/control").arg(number),
                 QStringLiteral("Package: %1\nVersion: %2\nArchitecture: all\n"
                                "Maintainer: Nobody <nobody@updates.example>\nDescription: nothing\n")
                     .arg(name, version)
                     .toUtf8());
    const auto path = folder_.path(QStringLiteral("package%1.deb").arg(number));
    static_cast<void>(run(QStringLiteral("dpkg-deb"),
                          {QStringLiteral("--root-owner-group"), QStringLiteral("--build"), tree, path}));
    return path;
}

QByteArray SignedPackages::signature(const QString& file, const QString& key) const {
    return gpg((key == formerMaker ? longAgo() : QStringList()) +
               QStringList{QStringLiteral("--local-user"), key, QStringLiteral("--armor"),
                           QStringLiteral("--detach-sign"), QStringLiteral("--output"), QStringLiteral("-"),
                           file});
}

QByteArray SignedPackages::signedMessage(const QString& file, const QString& key) const {
    return gpg({QStringLiteral("--local-user"), key, QStringLiteral("--armor"), QStringLiteral("--sign"),
                QStringLiteral("--output"), QStringLiteral("-"), file});
}

} // namespace tavro
