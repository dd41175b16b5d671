#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

/// What the error form shows of a failure, and the text that is printed, saved or mailed of it.
struct ErrorReport {
    QString application;
    QString version;
    QString systemInfo;
    QString number;
    QString description;
    QString additional;
    QString trappedIn;
    /// The newest routine first.
    QStringList callStack;

    /// The report with lines ended by line feeds; date and time stand in the long forms of the user's locale.
    QString text(const QDateTime& now) const;
};

/// Name and version of a system: the platform id is 0 to 2 as GetVersionEx reports it, any other for a system beyond.
QString systemInformation(int platform, int major, int minor, int build, const QString& servicePack);

/// The same of the system that the program runs on.
QString systemInformation();
