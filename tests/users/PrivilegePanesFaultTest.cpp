#include "DatabasePrivilegeFixture.h"
#include "FaultSweep.h"
#include "TablePrivilegeFixture.h"

#include <functional>
#include <ostream>

using namespace Qt::StringLiterals;
using userpane::displayState;

namespace
{

/// The same for both panes of rights.
template <class Pane>
class RightsFaults : public Pane
{
protected:
    void SetUp() override
    {
        Pane::SetUp();
        this->keepCatalog();
    }

    /// All that shows of the pane and the catalog.
    QStringList outcome(const QStringList& columns) const
    {
        QStringList all = this->ownRows() + this->wholeTree() + QStringList{this->currentPane(), this->selectedKey()};
        if (this->currentPane() == u"frmDBPRV"_s || this->currentPane() == u"frmTBLPRV"_s)
            all += this->shownPane() + this->texts(columns) + this->ticked();
        return all;
    }

    void sweepOpening(const QStringList& columns)
    {
        sweep.run({.prepare =
                       [&] {
                           this->beginAnew();
                           this->begin(this->clerk());
                       },
                   .act = [&](const auto&) { this->click(this->key(this->clerk())); },
                   .outcome = [&, columns] { return outcome(columns) + this->items(u"USER_NAME"_s); },
                   .goOn = [&] { this->click(this->key(this->clerk())); }});
    }

    void sweepAdd(const QStringList& columns, const std::function<void()>& fillIn)
    {
        sweep.run({.prepare =
                       [&] {
                           this->beginAnew();
                           this->beginToAdd();
                           fillIn();
                       },
                   .act = [&](const auto&) { this->press(u"OK"_s); },
                   .outcome = [&, columns] { return outcome(columns) + this->items(u"USER_NAME"_s); },
                   .goOn =
                       [&] {
                           if (!this->text(u"USER_NAME"_s).isEmpty()) {
                               EXPECT_EQ(this->state(), u"User Add: Up1 OK Cancel Undo"_s);
                               return this->press(u"OK"_s);
                           }
                           // Only the users for the next row could not be read.
                           EXPECT_EQ(this->items(u"USER_NAME"_s), QStringList());
                           this->click(this->selectedKey());
                           this->press(u"Cancel"_s);
                           this->press(u"User Add"_s);
                       }});
    }

    void sweepChange(const QStringList& columns)
    {
        sweep.run({.prepare =
                       [&] {
                           this->beginAnew();
                           this->open(this->clerk());
                           this->tick(u"ALLOW_DELETE"_s);
                       },
                   .act = [&](const auto&) { this->press(u"OK"_s); },
                   .outcome = [&, columns] { return outcome(columns); },
                   .goOn =
                       [&] {
                           // Only the last reading failed where the pane has been emptied.
                           if (this->text(u"USER_NAME"_s).isEmpty()) {
                               this->press(u"User Edit"_s);
                               return this->press(u"Cancel"_s);
                           }
                           EXPECT_EQ(this->state(), u"User Edit: Up1 OK Cancel Undo"_s);
                           this->press(u"OK"_s);
                       }});
    }

    void sweepUndo(const QStringList& columns)
    {
        sweep.run({.prepare =
                       [&] {
                           this->beginAnew();
                           this->open(this->clerk());
                           this->tick(u"ALLOW_DELETE"_s);
                       },
                   .act = [&](const auto&) { this->press(u"Undo"_s); },
                   .outcome = [&, columns] { return outcome(columns) + this->items(u"USER_NAME"_s); },
                   .goOn = [&] { this->click(this->key(this->clerk())); }});
    }

    void sweepCancel(const QStringList& columns)
    {
        sweep.run({.prepare =
                       [&] {
                           this->beginAnew();
                           this->open(this->clerk());
                           this->tick(u"ALLOW_DELETE"_s);
                       },
                   .act = [&](const auto&) { this->press(u"Cancel"_s); },
                   .outcome = [&, columns] { return outcome(columns); },
                   .goOn =
                       [&] {
                           EXPECT_EQ(this->state(), displayState);
                           EXPECT_EQ(this->ticked(), QStringList());
                           this->press(u"User Edit"_s);
                           this->press(u"Cancel"_s);
                       }});
    }

    void sweepEdit(const QStringList& columns)
    {
        sweep.run({.prepare =
                       [&] {
                           this->beginAnew();
                           this->open(this->clerk());
                           this->press(u"Cancel"_s);
                       },
                   .act = [&](const auto&) { this->press(u"User Edit"_s); },
                   .outcome = [&, columns] { return outcome(columns) + this->items(u"USER_NAME"_s); },
                   .goOn = [&] { this->click(this->key(this->clerk())); }});
    }

    void sweepUp()
    {
        const auto level = [&] { return this->key(this->clerk().first(this->clerk().size() - 1)); };
        sweep.run({.prepare =
                       [&] {
                           this->beginAnew();
                           this->open(this->clerk());
                       },
                   .act = [&](const auto&) { this->press(u"Up1"_s); },
                   .outcome =
                       [&] {
                           return QStringList{this->currentPane(), this->selectedKey()} + this->gridNames();
                       },
                   .goOn =
                       [&] {
                           EXPECT_EQ(this->selectedKey(), level());
                           this->click(level());
                       }});
    }

    void sweepDelete(const QString& question, const QString& menuItem)
    {
        const auto remove = [&] {
            this->boxes.expectAsk(question, boxes::Answer::Yes);
            this->choose(this->key(this->clerk()), menuItem);
            this->boxes.verify();
        };
        sweep.run({.prepare =
                       [&] {
                           this->beginAnew();
                           this->begin(this->clerk());
                       },
                   .act =
                       [&](const auto& fault) {
                           // Describe and read; a row that could not be read is not asked about.
                           if (fault && fault->answer == Press::Ignore && fault->statement <= 2)
                               return this->choose(this->key(this->clerk()), menuItem);
                           remove();
                       },
                   .outcome = [&] { return this->ownRows() + this->wholeTree() + this->gridNames(); },
                   .goOn =
                       [&] {
                           if (this->find(this->key(this->clerk())))
                               return remove();
                           this->click(this->key(this->clerk().first(this->clerk().size() - 1)));
                       }});
    }

    void retryWithinAnotherUser(const QStringList& columns, const std::function<void()>& choose, int atLeast)
    {
        const auto carry = [&](int failing) {
            this->beginAnew();
            this->open(this->clerk());
            choose();
            this->statements.clear();
            if (failing > 0) {
                this->statements.failAt(failing);
                this->errors.expect(Press::Retry);
            }
            this->press(u"OK"_s);
            this->errors.verify();
        };
        carry(0);
        const QStringList sent = this->statements.statements();
        const QStringList expected = outcome(columns);
        ASSERT_GE(sent.size(), atLeast);
        for (int failing = 1; failing <= sent.size(); ++failing) {
            SCOPED_TRACE(sent[failing - 1].toStdString());
            carry(failing);
            EXPECT_EQ(outcome(columns), expected);
            EXPECT_EQ(this->statements.statements().size(), sent.size() + 1);
        }
    }

    FaultSweep sweep{this->statements, this->errors};
};

using DatabasePrivilegeFaults = RightsFaults<databaseprivileges::DatabasePrivilegePane>;
using TablePrivilegeFaults = RightsFaults<tableprivileges::TablePrivilegePane>;

} // namespace

TEST_F(DatabasePrivilegeFaults, WithinOpeningRights)
{
    sweepOpening(databaseprivileges::columns);
}

TEST_F(DatabasePrivilegeFaults, WithinAnAdd)
{
    sweepAdd(databaseprivileges::columns, [&] {
        pick(u"USER_NAME"_s, u"BOSS"_s);
        pick(u"SECURITY_LEVEL"_s, u"TABLE"_s);
        writePassword(databaseprivileges::secret, u"secret"_s);
    });
}

TEST_F(DatabasePrivilegeFaults, WithinAChange)
{
    sweepChange(databaseprivileges::columns);
}

TEST_F(DatabasePrivilegeFaults, WithinUndoCancelEditAndUp)
{
    {
        SCOPED_TRACE("Undo");
        sweepUndo(databaseprivileges::columns);
    }
    {
        SCOPED_TRACE("Cancel");
        sweepCancel(databaseprivileges::columns);
    }
    {
        SCOPED_TRACE("Edit");
        sweepEdit(databaseprivileges::columns);
    }
    SCOPED_TRACE("Up");
    sweepUp();
}

TEST_F(DatabasePrivilegeFaults, WithinADelete)
{
    sweepDelete(databaseprivileges::mayDeletePrivileges, u"mnu_DBPRVDelete"_s);
}

TEST_F(DatabasePrivilegeFaults, RetryWithinAnotherUserLosesNothing)
{
    retryWithinAnotherUser(
        databaseprivileges::columns,
        [&] {
            pick(u"USER_NAME"_s, u"BOSS"_s);
            writePassword(databaseprivileges::secret, u"secret"_s);
        },
        9);
}

TEST_F(TablePrivilegeFaults, WithinOpeningRights)
{
    sweepOpening(tableprivileges::columns);
}

TEST_F(TablePrivilegeFaults, WithinAnAdd)
{
    sweepAdd(tableprivileges::columns, [&] {
        pick(u"USER_NAME"_s, u"BOSS"_s);
        tick(u"ALLOW_UPDATE"_s);
    });
}

TEST_F(TablePrivilegeFaults, WithinAChange)
{
    sweepChange(tableprivileges::columns);
}

TEST_F(TablePrivilegeFaults, WithinUndoCancelEditAndUp)
{
    {
        SCOPED_TRACE("Undo");
        sweepUndo(tableprivileges::columns);
    }
    {
        SCOPED_TRACE("Cancel");
        sweepCancel(tableprivileges::columns);
    }
    {
        SCOPED_TRACE("Edit");
        sweepEdit(tableprivileges::columns);
    }
    SCOPED_TRACE("Up");
    sweepUp();
}

TEST_F(TablePrivilegeFaults, WithinADelete)
{
    sweepDelete(tableprivileges::mayDeletePrivileges, u"mnu_TBLPRVDelete"_s);
}

TEST_F(TablePrivilegeFaults, RetryWithinAnotherUserLosesNothing)
{
    retryWithinAnotherUser(
        tableprivileges::columns, [&] { pick(u"USER_NAME"_s, u"BOSS"_s); }, 5);
}
