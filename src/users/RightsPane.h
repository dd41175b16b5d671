#pragma once

#include "DropDown.h"
#include "Privileges.h"
#include "PropertySheet.h"
#include "Recordset.h"
#include "modBoundControls.h"

/// What the panes of a user's rights on a database and on a table have in common: the user is chosen from a list, and
/// what is above the row stands fixed. The base is the family that the pane belongs to.
template <class Base>
class RightsPane : public Base
{
protected:
    using Base::Base;
    using State = typename Base::State;

    void fill(const dao::Recordset& row) override
    {
        userList().refill({row.Fields().Item(user()).Value().Text()});
        Base::fill(row);
    }

    void populateLists() override { modBoundControls::PopulateList(userList(), this->db(), privileges::users()); }

    /// A user who is gone, or could not be read, is not in the list but stays in the row.
    void listChanged(const QString& column) override
    {
        if (this->sheet().list(column).currentIndex() >= 0)
            Base::listChanged(column);
    }

    /// What a new row begins with is no entry to be undone.
    void undo(State state) override
    {
        Base::undo(state);
        if (state == State::Add)
            this->adding();
    }

    /// Names what is above a new row.
    void adding() override = 0;

private:
    static QString user() { return QStringLiteral("USER_NAME"); }
    DropDown& userList() const { return this->sheet().list(user()); }
};
