#include "frmTWErr.h"

#include "Application.h"
#include "Boxes.h"
#include "DBEngine.h"
#include "ErrorForm.h"
#include "FileManagerErrors.h"
#include "modDatabase.h"

namespace
{

ErrorForm& form()
{
    frmTWErr::Load();
    return *ErrorForm::loaded();
}

bool speaksOfPrivileges(const dao::Errors& errors)
{
    return errors.Count() > 0 && errors.Item(0).Description.contains(QStringLiteral("privileges"));
}

} // namespace

void frmTWErr::Push(const char* routine)
{
    if (!ErrorForm::loaded()) [[unlikely]]
        Load();
    ErrorForm::loaded()->callStack().push(routine);
}

void frmTWErr::Pop()
{
    // An unloaded form has an empty stack: there is no reason to load it for that.
    if (ErrorForm* loaded = ErrorForm::loaded())
        loaded->callStack().pop();
}

QStringList frmTWErr::CallStack()
{
    QStringList names;
    if (ErrorForm* loaded = ErrorForm::loaded()) {
        const CallStackModel& stack = loaded->callStack();
        for (int row = 0; row < stack.rowCount(); ++row)
            names.append(stack.data(stack.index(row)).toString());
    }
    return names;
}

frmTWErr::Response frmTWErr::OnError(const QString& routine, const QString& additional, const RuntimeError& error)
{
    form().hideIfShown();
    if (speaksOfPrivileges(dao::DBEngine::Errors())) {
        boxes::show({.prompt = "The current user has insufficient privileges to complete this action.",
                     .icon = boxes::Icon::None,
                     .buttons = boxes::Buttons::Ok,
                     .title = application::title()});
        return Ignore;
    }
    form().report().description.clear();
    return error.number() == ErrorNumber::OdbcFailed ? ODBCErr(routine, additional, error)
                                                     : StandardErr(routine, additional, error);
}

frmTWErr::Response frmTWErr::StandardErr(const QString& routine, const QString& additional, const RuntimeError& error)
{
    ErrorReport& report = form().report();
    report.application = application::title();
    report.version = application::version();
    report.systemInfo = systemInformation();
    report.trappedIn = routine;
    report.number = QString::number(static_cast<int>(error.number()));
    report.description = error.description();
    report.additional = additional;
    return form().ask(QStringLiteral("Unexpected Error"));
}

frmTWErr::Response frmTWErr::ODBCErr(const QString& routine, const QString& additional, const RuntimeError& /*error*/)
{
    ErrorReport& report = form().report();
    report.application = application::title();
    report.version = application::version();
    report.systemInfo = systemInformation();
    report.trappedIn = routine;
    report.description += FetchODBCErrors();
    report.number = QStringLiteral("ODBC Error");
    report.additional = modDatabase::FormatSQL(additional);
    return form().ask(QStringLiteral("Unexpected ODBC Error"));
}

QString frmTWErr::FetchODBCErrors()
{
    return readableText(dao::DBEngine::Errors());
}

void frmTWErr::Load()
{
    if (ErrorForm::loaded())
        return;
    if (!forms::isKnown(ErrorForm::Name))
        forms::add(ErrorForm::Name, [] { return new ErrorForm; });
    forms::get(ErrorForm::Name);
}

void frmTWErr::Unload()
{
    forms::unload(ErrorForm::Name);
}
