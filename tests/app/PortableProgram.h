#pragma once

#include "app/FamiliarOwner.h"
#include "core/AppPaths.h"
#include "support/TestFile.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

// Programs of ours as a user starts and ends them.

/// A program in a folder of its own, with a home directory of its own.
class PortableFolder {
public:
    explicit PortableFolder(const QString& original)
    {
        QDir().mkpath(dataDir());
        QDir().mkpath(home());
        QFile::copy(original, program());
    }

    QString program() const { return m_dir.filePath(QStringLiteral("brixa")); }
    QString dataDir() const { return m_dir.filePath(QStringLiteral("data")); }
    QString database() const { return dataDir() + QStringLiteral("/brixa.db"); }
    // Its database is made in the test's own data directory.
    bool hasFamiliarOwner() const
    {
        return prepareFamiliarOwner() && QFile::copy(AppPaths::databasePath(), database());
    }
    QString home() const { return m_dir.filePath(QStringLiteral("home")); }

    QStringList dataFiles() const
    {
        return QDir(dataDir()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    QString log() const
    {
        QString text;
        const QDir logs(dataDir() + QStringLiteral("/logs"));
        for (const QString& name : logs.entryList(QDir::Files, QDir::Name))
            text += QString::fromUtf8(TestFile::bytesOf(logs.filePath(name)));
        return text;
    }

private:
    QTemporaryDir m_dir;
};

/// The running program; what it logs tells where it has come to.
class Run {
public:
    explicit Run(
        const PortableFolder& folder, const QString& variable = {}, const QString& value = {})
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), folder.home());
        for (const QString& name :
            { QStringLiteral("XDG_CONFIG_HOME"), QStringLiteral("XDG_DATA_HOME"),
                QStringLiteral("XDG_CACHE_HOME"), QStringLiteral("XDG_STATE_HOME") })
            environment.remove(name);
        environment.insert(QStringLiteral("QT_FORCE_STDERR_LOGGING"), QStringLiteral("1"));
        if (!variable.isEmpty())
            environment.insert(variable, value);
        m_process.setProcessEnvironment(environment);
        m_process.start(folder.program(), {});
        m_process.waitForStarted();
    }
    ~Run() { kill(); }

    bool reaches(const QByteArray& line)
    {
        QDeadlineTimer deadline(60'000);
        while (!m_output.contains(line) && !deadline.hasExpired()
            && m_process.state() == QProcess::Running) {
            m_process.waitForReadyRead(200);
            m_output += m_process.readAllStandardError();
        }
        return m_output.contains(line);
    }

    // As a log-out does; the exit status.
    int terminate()
    {
        m_process.terminate();
        return end();
    }

    // Waits until the program ends by itself; the exit status.
    int end()
    {
        if (!m_process.waitForFinished(60'000) && m_process.state() != QProcess::NotRunning)
            return -1;
        m_output += m_process.readAllStandardError();
        return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }

    void kill()
    {
        m_process.kill();
        m_process.waitForFinished(60'000);
    }

    QByteArray output() const { return m_output; }

private:
    QProcess m_process;
    QByteArray m_output;
};
