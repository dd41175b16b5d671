#include "Outside.h"

#include "Printing.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QProcess>
#include <QRegularExpression>
#include <QUrl>

#include <cstdlib>
#include <utility>

namespace
{

Outside* replacement = nullptr;

/// A scheme has two letters or more, so that a file name with a colon behind its first letter stays a file name.
bool hasScheme(const QString& target)
{
    static const QRegularExpression scheme("^[A-Za-z][A-Za-z0-9+.-]+:");
    return scheme.match(target).hasMatch();
}

class RealOutside final : public Outside
{
public:
    bool open(const QString& target) override
    {
        const QFileInfo file(target);
        if (file.exists())
            return QDesktopServices::openUrl(QUrl::fromLocalFile(file.absoluteFilePath()));
        const QUrl url = hasScheme(target) ? QUrl(target, QUrl::TolerantMode) : QUrl();
        if (!url.isValid() || (url.isLocalFile() && !QFileInfo::exists(url.toLocalFile())))
            return false;
        return QDesktopServices::openUrl(url);
    }

    bool run(const QString& program, const QStringList& arguments) override
    {
        return QProcess::startDetached(program, arguments);
    }

    void print(const QString& title, const QString& body) override { printing::printOnDefault(title, body); }

    void setClipboard(const QString& text) override { QGuiApplication::clipboard()->setText(text); }

    QDateTime now() override { return QDateTime::currentDateTime(); }

    [[noreturn]] void endProcess() override { std::_Exit(EXIT_FAILURE); }
};

} // namespace

Outside& Outside::instance()
{
    static RealOutside real;
    return replacement ? *replacement : real;
}

Outside* Outside::replace(Outside* outside)
{
    return std::exchange(replacement, outside);
}
