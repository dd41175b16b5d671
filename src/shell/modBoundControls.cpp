#include "modBoundControls.h"

#include "Database.h"
#include "DropDown.h"
#include "Recordset.h"
#include "Routine.h"

using namespace Qt::StringLiterals;

int modBoundControls::PopulateList(DropDown& list, dao::Database& db, const QString& statement)
{
    Routine routine("modBoundControls.PopulateList");
    QStringList items;
    routine.run([&] {
        for (const auto rows = db.OpenRecordset(statement); !rows->Eof(); rows->MoveNext())
            items.append(rows->View(0).toString());
    });
    list.refill(items);
    return static_cast<int>(items.size());
}

void modBoundControls::PopulateFields(const Controls& form, const QString& prototype, const dao::Recordset& row)
{
    Routine routine("modBoundControls.PopulateFields");
    routine.run([&] {
        for (const Control& control : form) {
            if (control.Name == prototype && !control.Tag.isEmpty())
                control.setValue(row.Fields().Item(control.Tag).Value().Text());
        }
    });
}

void modBoundControls::EnableControls(const Controls& form, const QString& prototype, bool enabled)
{
    Routine routine("modBoundControls.EnableControls");
    routine.run([&] {
        for (const Control& control : form) {
            if (control.Name == prototype)
                control.Widget->setEnabled(enabled);
        }
    });
}

void modBoundControls::SetControls(const Controls& form, const QString& prototype, const QString& value)
{
    Routine routine("modBoundControls.SetControls");
    routine.run([&] {
        for (const Control& control : form) {
            if (control.Name != prototype)
                continue;
            if (auto* list = qobject_cast<DropDown*>(control.Widget))
                list->setCurrentIndex(-1);
            else
                control.setValue(value);
        }
    });
}
