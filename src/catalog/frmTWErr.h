#pragma once

#include "RuntimeError.h"

#include <QString>
#include <QStringList>

/// The error form: the call stack of all routines that are running, and the dialog that reports a failure, prints,
/// saves or mails it and returns the user's answer. There is one, hidden for the whole run; a touch loads it anew after
/// an unload.
namespace frmTWErr
{

/// What a trap acts upon.
enum Response { Abort = 3, Retry = 4, Ignore = 5 };

/// Puts a routine's name on top of the stack, which keeps the pointer: the text must be a literal.
void Push(const char* routine);
/// Takes the top name off; an empty stack stays empty.
void Pop();
/// The names on the stack, the newest first.
QStringList CallStack();

/// Called by a trap for a failure in `routine`; `additional` is free text, as a rule "None" or the failed statement.
/// A failure whose first engine error speaks of privileges shows one plain box and counts as Ignore. Raises 13 for a
/// file manager's message without a code.
Response OnError(const QString& routine, const QString& additional, const RuntimeError& error);

/// The dialog for an ordinary run-time error. A failure of one of its report buttons shows the same dialog with the new
/// failure over this one; the answer to the last one ends them all.
Response StandardErr(const QString& routine, const QString& additional, const RuntimeError& error);
/// The dialog for error 3146. Raises 13 for a file manager's message without a code.
Response ODBCErr(const QString& routine, const QString& additional, const RuntimeError& error);

/// The readable text of the engine's error chain. Raises 13 for a file manager's message without a code.
QString FetchODBCErrors();

/// Loads the form, hidden, with an empty stack. No effect on a loaded form.
void Load();
/// Unloads it; the stack is gone.
void Unload();

} // namespace frmTWErr
