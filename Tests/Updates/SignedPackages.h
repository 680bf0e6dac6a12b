#pragma once

#include "Presets/TemporaryFolder.h"

#include <QByteArray>
#include <QStringList>

namespace tavro {

/// Debian packages and signatures, made for one test with keys that nobody else has.
class SignedPackages {
public:
    SignedPackages();
    ~SignedPackages();

    SignedPackages(const SignedPackages&) = delete;
    SignedPackages& operator=(const SignedPackages&) = delete;

    /// Keys by the name of their owner.
    static const QString maker;
    static const QString stranger;
    /// In the keyring, like the maker, and long expired.
    static const QString formerMaker;

    /// With the keys of the maker and the former maker.
    [[nodiscard]] QString keyring() const { return folder_.path(QStringLiteral("keyring.gpg")); }

    /// The path of a package that holds nothing.
    [[nodiscard]] QString package(const QString& name, const QString& version);

    /// The detached signature of a file, in letters.
    [[nodiscard]] QByteArray signature(const QString& file, const QString& key) const;

    /// A file with its signature in one, in letters.
    [[nodiscard]] QByteArray signedMessage(const QString& file, const QString& key) const;

private:
    [[nodiscard]] QByteArray run(const QString& program, const QStringList& arguments) const;
    [[nodiscard]] QByteArray gpg(const QStringList& arguments) const;
    void makeKey(const QString& name, const QStringList& options, const QString& expiry) const;

    TemporaryFolder folder_;
    int packages_ = 0;
};

} // namespace tavro
