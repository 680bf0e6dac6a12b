#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tavro {

/// A folder that is gone after the test.
class TemporaryFolder {
public:
    QString path(const QString& name) const { return folder_.filePath(name); }

    QString path() const { return folder_.path(); }

    /// A file with this content, by its path.
    QString file(const QString& name, const QByteArray& content) const {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
        return file.fileName();
    }

    static QByteArray contentOf(const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return file.readAll();
    }

    /// Everything in it, hidden files and broken links too.
    QStringList names() const {
        return QDir(path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                                      QDir::Name);
    }

private:
    QTemporaryDir folder_;
};

} // namespace tavro
