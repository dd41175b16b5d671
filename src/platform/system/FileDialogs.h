#pragma once

#include <QString>
#include <QStringList>

/// The one way to a file dialog, which tests script as they do boxes.
namespace filedialogs
{

enum class Mode { Open, Save };

struct Request {
    Mode mode = Mode::Open;
    QString title = {};
    QString suggestedName = {};
    /// Pairs of description and pattern separated by bars: "Text Files (*.txt)|*.txt|All Files (*.*)|*.*".
    QString filter = {};
    /// Appended to a name without an extension, as "*.txt" or "txt". A file that is there is opened by its own name.
    QString defaultExtension = {};
    /// Of a dialog that saves.
    bool promptBeforeOverwriting = false;
    bool promptBeforeCreating = false;
    /// Of a dialog that opens.
    bool fileMustExist = false;
};

class Presenter
{
public:
    virtual ~Presenter() = default;
    /// The chosen path; empty when the dialog was cancelled.
    virtual QString choose(const Request& request) = 0;
};

Presenter* setPresenter(Presenter* presenter);

/// The filter in Qt's form, one entry a pair: "Text Files (*.txt)". "*.*" stands for every file, also one without an
/// extension. An empty filter lets every file through.
QStringList nameFilters(const QString& filter);
/// The default extension without star and full stop.
QString suffix(const QString& defaultExtension);

/// The chosen path. Raises 32755 when the user cancels.
QString choose(const Request& request);

} // namespace filedialogs
