#pragma once

#include "DialogForm.h"
#include "DialogScript.h"
#include "DragMode.h"
#include "MainWindowFixture.h"

#include <functional>
#include <optional>

/// Two connected datasources: `datasource` with the catalog of the main window's tests, whose rows are whole here, and
/// `other`, whose catalog has nothing but its system rows.
class MoveCopyTest : public MainWindowTest
{
protected:
    void SetUp() override;
    void TearDown() override;

    static DragItem item(const QString& type, const QStringList& names);
    /// Changes the other catalog behind the program's back.
    void changeOther(const QString& statement) const { world.run(other, statement); }

    /// What the program has sent, each statement behind "S: " for the source or "T: " for the target.
    QStringList said() const;
    /// All rows of the tables that are edited, of either side, each behind its side and the name of its table.
    QStringList bothCatalogs() const;
    /// The rows of one table, sorted.
    QStringList rowsOf(const QString& side, const QString& table, const QString& where = {}) const;

    /// The question whether to move or to copy, and the button that answers it.
    void expectQuestion(const QString& prompt, const QString& button);
    /// The question whether to go on.
    void expectGoOn(const QString& prompt, const QString& button);
    /// Fails for dialogs and boxes that have not come.
    void verify();

    /// Puts both catalogs aside, and brings them back, with both datasources connected.
    void keepBoth();
    void beginAnewBoth();

    /// Runs a scenario with a fault in each of its statements. Retry must end as without a fault.
    void sweep(const std::function<void()>& scenario);

    QString other;
    DialogScript dialogs;
};
