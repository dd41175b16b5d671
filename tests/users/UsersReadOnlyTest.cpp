#include "UsersGridFixture.h"

#include <QFile>

#include <ostream>

using namespace Qt::StringLiterals;
using namespace usersgrid;

namespace
{

/// Where every write is refused: by a catalog that is read only, or by a driver that finds no privileges for it.
enum class Refusal { ReadOnly, NoPrivileges };

void PrintTo(Refusal refusal, std::ostream* out)
{
    *out << (refusal == Refusal::ReadOnly ? "ReadOnly" : "NoPrivileges");
}

template <class Base>
class Refused : public Base, public testing::WithParamInterface<Refusal>
{
protected:
    void SetUp() override
    {
        Base::SetUp();
        if (GetParam() == Refusal::ReadOnly) {
            // Catalogs of a write format that is newer than what the engine knows are read and never written.
            this->change(u"PRAGMA wal_checkpoint(TRUNCATE)"_s);
            QFile catalog(this->world.catalogFile(this->datasource));
            ASSERT_TRUE(catalog.open(QIODevice::ReadWrite));
            ASSERT_TRUE(catalog.seek(18));
            ASSERT_EQ(catalog.write("\x03", 1), 1);
        }
        m_before = this->wholeCatalog();
    }

    /// Does what writes, and expects the refusal of its first statement.
    template <class Act>
    void expectRefusal(const QString& routine, Act act)
    {
        this->statements.clear();
        expectReport();
        act();
        this->errors.verify();
        this->boxes.verify();
        EXPECT_EQ(this->statements.writes().size(), 1);
        expectNoChange(routine);
    }
    /// What each refusal ends in, behind what the write asks first, if anything.
    void expectReport()
    {
        if (GetParam() == Refusal::ReadOnly)
            this->errors.expect(Press::Ignore);
        else
            this->boxes.expect(u"The current user has insufficient privileges to complete this action."_s,
                               boxes::Icon::None);
    }
    void expectNoChange(const QString& routine)
    {
        EXPECT_EQ(this->wholeCatalog(), m_before);
        if (GetParam() == Refusal::ReadOnly) {
            EXPECT_EQ(this->errors.shown().back().description,
                      u"\nError: &H8\nattempt to write a readonly database (8)\n"_s);
            EXPECT_EQ(this->errors.shown().back().trappedIn, routine);
        } else {
            EXPECT_TRUE(this->errors.shown().empty());
        }
    }
    /// The statement of what is done next that is the first to write.
    void refuse(int statement)
    {
        if (GetParam() == Refusal::NoPrivileges)
            this->statements.failAt(statement, {{-1, u"[Test] You have no privileges for this"_s}});
    }

private:
    QStringList m_before;
};

using RefusedPanes = Refused<UsersItemTest>;
using RefusedGrids = Refused<WithUsers<GridTest>>;

} // namespace

INSTANTIATE_TEST_SUITE_P(Users, RefusedPanes, testing::Values(Refusal::ReadOnly, Refusal::NoPrivileges));
INSTANTIATE_TEST_SUITE_P(Users, RefusedGrids, testing::Values(Refusal::ReadOnly, Refusal::NoPrivileges));

TEST_P(RefusedPanes, EachPaneOpensAndNothingOfWhatWasEnteredIsLost)
{
    for (const QStringList& steps :
         {user(u"CLERK"_s), ofDatabase(u"SALES"_s, u"CLERK"_s), ofTable(u"SALES"_s, u"ORDERS"_s, u"CLERK"_s)}) {
        SCOPED_TRACE(key(steps).toStdString());
        open(steps);
        EXPECT_EQ(text(u"USER_NAME"_s), u"CLERK"_s);
        write(u"REMARKS"_s, u"x"_s);
        expectRefusal(currentPane() + u".tbr_ButtonClick"_s, [&] {
            refuse(1);
            press(u"OK"_s);
        });
        EXPECT_EQ(state(), u"User Edit: Up1 OK Cancel Undo"_s);
        EXPECT_EQ(text(u"REMARKS"_s), u"x"_s);
        press(u"Cancel"_s);
        EXPECT_NE(text(u"REMARKS"_s), u"x"_s);
        EXPECT_EQ(state(), displayState);
    }
}

TEST_P(RefusedPanes, NothingIsAdded)
{
    open(user(u"CLERK"_s));
    press(u"Cancel"_s);
    press(u"User Add"_s);
    write(u"USER_NAME"_s, u"new"_s);
    boxes.expectAsk(wantsPassword, boxes::Answer::No);
    expectRefusal(u"frmUser.tbr_ButtonClick"_s, [&] {
        refuse(2);
        press(u"OK"_s);
    });
    EXPECT_EQ(state(), u"User Add: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(text(u"USER_NAME"_s), u"NEW"_s);
    EXPECT_EQ(children(key({u"US"_s})), (QStringList{u"ADMIN"_s, u"BOSS"_s, u"CLERK"_s}));

    open(ofDatabase(u"SALES"_s, u"CLERK"_s));
    press(u"Cancel"_s);
    press(u"User Add"_s);
    pick(u"USER_NAME"_s, u"BOSS"_s);
    pick(u"SECURITY_LEVEL"_s, u"TABLE"_s);
    writePassword(u"DATABASE_PASSWORD"_s, u"secret"_s);
    expectRefusal(u"frmDBPRV.tbr_ButtonClick"_s, [&] {
        refuse(2);
        press(u"OK"_s);
    });
    EXPECT_EQ(text(u"USER_NAME"_s), u"BOSS"_s);
    EXPECT_EQ(passwords(u"DATABASE_PASSWORD"_s), (QStringList{u"SECRET"_s, u"SECRET"_s}));

    open(ofTable(u"SALES"_s, u"ORDERS"_s, u"CLERK"_s));
    press(u"Cancel"_s);
    press(u"User Add"_s);
    pick(u"USER_NAME"_s, u"BOSS"_s);
    expectRefusal(u"frmTBLPRV.tbr_ButtonClick"_s, [&] {
        refuse(2);
        press(u"OK"_s);
    });
    EXPECT_EQ(text(u"USER_NAME"_s), u"BOSS"_s);
}

TEST_P(RefusedPanes, ARenameIsRefusedTwiceAndChangesNothing)
{
    open(user(u"CLERK"_s));
    write(u"USER_NAME"_s, u"teller"_s);
    boxes.expectAsk(wantsPassword, boxes::Answer::No);
    expectReport();
    expectReport();
    statements.clear();
    // Whether the name is free, the row as it is, its removal, and what else was entered.
    refuse(3);
    refuse(4);
    press(u"OK"_s);
    errors.verify();
    boxes.verify();
    EXPECT_EQ(statements.writes(), (QStringList{u"DELETE FROM TW_USER WHERE USER_NAME = 'CLERK'"_s,
                                                updateRemarks(u"CLERK"_s, u"at the desk"_s)}));
    expectNoChange(u"frmUser.tbr_ButtonClick"_s);
    EXPECT_EQ(state(), u"User Edit: Up1 OK Cancel Undo"_s);
    EXPECT_EQ(text(u"USER_NAME"_s), u"TELLER"_s);
    EXPECT_EQ(children(key({u"US"_s})), (QStringList{u"ADMIN"_s, u"BOSS"_s, u"CLERK"_s}));
    // By now the pane goes by the new name, of which there is no row.
    press(u"Cancel"_s);
    EXPECT_EQ(paneTitle(), u"TELLER - User Properties"_s);
    EXPECT_EQ(texts(shownColumns).join(QString()), QString());
    EXPECT_TRUE(find(key(user(u"CLERK"_s))));
}

TEST_P(RefusedPanes, NothingIsDeleted)
{
    for (const auto& [steps, question, routine] :
         {std::tuple(user(u"CLERK"_s), mayDelete, u"frmUser"_s),
          std::tuple(ofDatabase(u"SALES"_s, u"CLERK"_s),
                     u"Are you sure you wish to delete this users database privileges?"_s, u"frmDBPRV"_s),
          std::tuple(ofTable(u"SALES"_s, u"ORDERS"_s, u"CLERK"_s),
                     u"Are you sure you want to delete this users table privileges?"_s, u"frmTBLPRV"_s)}) {
        SCOPED_TRACE(routine.toStdString());
        open(steps);
        press(u"Cancel"_s);
        boxes.expectAsk(question, boxes::Answer::Yes);
        expectRefusal(routine + u".tbr_ButtonClick"_s, [&] {
            // The row is read first.
            refuse(2);
            press(u"User Delete"_s);
        });
        EXPECT_TRUE(find(key(steps)));
        EXPECT_EQ(state(), u"User Delete: Up1 OK Cancel"_s);
        press(u"Cancel"_s);
        EXPECT_EQ(state(), displayState);
    }
}

TEST_P(RefusedGrids, EachGridOpensAndKeepsTheRowThatCannotBeWritten)
{
    for (const auto& [steps, grid] :
         {std::pair(QStringList{u"US"_s}, u"frmUsers"_s), std::pair(ofDatabase(u"SALES"_s), u"frmDBPRVs"_s),
          std::pair(ofTable(u"SALES"_s, u"ORDERS"_s), u"frmTBLPRVs"_s)}) {
        SCOPED_TRACE(grid.toStdString());
        open(steps);
        change(u"CLERK"_s, u"Remarks"_s, u"x"_s);
        const QString where = current();
        expectRefusal(grid + u".LeaveCell"_s, [&] {
            refuse(1);
            clickBeside();
        });
        EXPECT_EQ(current(), where);
        EXPECT_EQ(cell(u"CLERK"_s, u"Remarks"_s), u"x"_s);
        // Reading it anew shows what is stored.
        reopen(steps);
        EXPECT_NE(cell(u"CLERK"_s, u"Remarks"_s), u"x"_s);
    }
}
