#include "FileDialogs.h"

#include "Application.h"
#include "Boxes.h"
#include "MousePointer.h"
#include "RuntimeError.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>
#include <QRegularExpression>
#include <QStandardPaths>

#include <memory>
#include <utility>

namespace
{

using namespace filedialogs;

filedialogs::Presenter* replacement = nullptr;

/// Where the user chose a file last; the next dialog starts there.
QString lastFolder;

QString startFolder()
{
    if (!lastFolder.isEmpty() && QFileInfo(lastFolder).isDir())
        return lastFolder;
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QFileInfo(documents).isDir() ? documents : QDir::homePath();
}

class RealPresenter final : public Presenter
{
public:
    QString choose(const Request& request) override
    {
        const mousepointer::Suspended pointer;
        Choice choice{request.suggestedName, {}};
        for (;;) {
            choice = run(request, choice);
            if (choice.path.isEmpty())
                return {};
            lastFolder = QFileInfo(choice.path).absolutePath();
            if (request.mode == Mode::Save ? maySave(request, choice.path) : mayOpen(request, choice.path))
                return choice.path;
        }
    }

private:
    /// What a dialog begins with and ends in.
    struct Choice {
        QString path;
        QString filter;
    };

    static Choice run(const Request& request, const Choice& suggestion)
    {
        // The dialog goes with its parent if that is deleted while it shows, so it can't stand on the stack.
        auto owned = std::make_unique<QFileDialog>(QApplication::activeWindow(), request.title);
        const QPointer<QFileDialog> dialog = owned.get();
        const bool saves = request.mode == Mode::Save;
        dialog->setAcceptMode(saves ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
        // Dialogs differ in what they do about a missing file and where they append the extension: see mayOpen.
        dialog->setFileMode(QFileDialog::AnyFile);
        // Desktop dialogs ask about the name before the extension is appended, so the question is asked here.
        dialog->setOption(QFileDialog::DontConfirmOverwrite);
        dialog->setNameFilters(nameFilters(request.filter));
        if (!suggestion.filter.isEmpty())
            dialog->selectNameFilter(suggestion.filter);
        if (saves)
            dialog->setDefaultSuffix(suffix(request.defaultExtension));
        const QFileInfo suggested(suggestion.path);
        const bool hasFolder = suggestion.path.contains('/') && suggested.absoluteDir().exists();
        dialog->setDirectory(hasFolder ? suggested.absolutePath() : startFolder());
        if (!suggested.fileName().isEmpty())
            dialog->selectFile(suggested.fileName());

        const bool accepted = dialog->exec() == QDialog::Accepted;
        if (!dialog) {
            static_cast<void>(owned.release());
            return {};
        }
        return accepted ? Choice{dialog->selectedFiles().value(0), dialog->selectedNameFilter()} : Choice();
    }

    /// A file is opened by the name as it was chosen, and by the name with the extension only where there is no such
    /// file.
    static bool mayOpen(const Request& request, QString& path)
    {
        if (isFile(path))
            return true;
        const QString extension = suffix(request.defaultExtension);
        const QString extended = extension.isEmpty() ? path : path + '.' + extension;
        if (isFile(extended)) {
            path = extended;
            return true;
        }
        if (request.fileMustExist) {
            boxes::show({path + "\nFile not found.\nCheck the file name and try again.", boxes::Icon::Exclamation,
                         boxes::Buttons::Ok, application::title()});
            return false;
        }
        if (!QFileInfo(path).fileName().contains('.'))
            path = extended;
        return true;
    }

    static bool isFile(const QString& path)
    {
        const QFileInfo file(path);
        return file.exists() && !file.isDir();
    }

    static bool maySave(const Request& request, const QString& path)
    {
        const bool isThere = QFileInfo::exists(path);
        if (isThere && request.promptBeforeOverwriting)
            return agrees(path + "\nalready exists. Do you want to replace it?", boxes::Icon::Exclamation);
        if (!isThere && request.promptBeforeCreating)
            return agrees(path + "\ndoes not exist. Do you want to create it?", boxes::Icon::Question);
        return true;
    }

    static bool agrees(const QString& question, boxes::Icon icon)
    {
        return boxes::show({question, icon, boxes::Buttons::YesNo, application::title()}) == boxes::Answer::Yes;
    }
};

} // namespace

QStringList filedialogs::nameFilters(const QString& filter)
{
    static const QRegularExpression patternsAtEnd(R"(\s*\([^()]*[*?][^()]*\)\s*$)");

    const QStringList parts = filter.split('|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString description = parts[i].trimmed();
        description.remove(patternsAtEnd);
        QStringList patterns = parts[i + 1].split(';', Qt::SkipEmptyParts);
        for (QString& pattern : patterns) {
            pattern = pattern.trimmed();
            // Names without an extension are files like any other.
            if (pattern == "*.*")
                pattern = '*';
        }
        if (!patterns.isEmpty())
            filters.append(description + " (" + patterns.join(' ') + ')');
    }
    return filters.isEmpty() ? QStringList("All Files (*)") : filters;
}

QString filedialogs::suffix(const QString& defaultExtension)
{
    return defaultExtension.mid(defaultExtension.lastIndexOf('.') + 1).remove('*');
}

filedialogs::Presenter* filedialogs::setPresenter(Presenter* presenter)
{
    return std::exchange(replacement, presenter);
}

QString filedialogs::choose(const Request& request)
{
    RealPresenter real;
    Presenter& presenter = replacement ? *replacement : real;
    const QString path = presenter.choose(request);
    if (path.isEmpty())
        throw RuntimeError(ErrorNumber::DialogCancelled);
    return path;
}
