#include "MoveCopyFixture.h"

#include "CConnections.h"
#include "Settings.h"
#include "frmTWErr.h"
#include "modDragAndDrop.h"

using namespace Qt::StringLiterals;
using modDragAndDrop::DragFieldsToFile;
using modDragAndDrop::DragFieldToFile;
using modDragAndDrop::DragFilesToDSN;
using modDragAndDrop::DragFileToDSN;

namespace
{

class DragFiles : public MoveCopyTest
{
protected:
    void SetUp() override
    {
        MoveCopyTest::SetUp();
        change(u"UPDATE TW_FILE SET OPEN_STRING = '/data/it''s', REMARKS = '%1 & 100%' WHERE FILE_NAME = 'PAYROLL'"_s);
        statements.clear();
    }

    DragItem file(const QString& name) const { return item(u"fi"_s, {datasource, name}); }
    DragItem field(const QString& owner, const QString& name) const { return item(u"fd"_s, {datasource, owner, name}); }
    DragItem files(const QString& side) const { return item(u"FI"_s, {side}); }

    QString fileQuestion(const QString& name) const
    {
        return u"Do you want to Move or Copy the File '%1' from Datasource '%2' to Datasource '%3'?"_s.arg(
            name, datasource, other);
    }
    QString filesQuestion() const
    {
        return u"Do you want to Move or Copy the Files collection in Datasource '%1' to Datasource '%2'?"_s.arg(
            datasource, other);
    }

    /// The statements of one field on its way, its row behind the file.
    static QStringList carried(const QString& field, const QString& values, bool moved)
    {
        const QString select = u"SELECT * FROM TW_FIELD WHERE FILE_NAME = 'PAYROLL' AND FIELD_NAME = '%1'"_s.arg(field);
        QStringList all{u"T: "_s + select, u"S: "_s + select,
                        u"T: INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, "
                        "LENGTH, PRECISION, SCALE, ENCRYPTED, FORMAT, DEFAULT_VALUE, REMARKS) VALUES ('PAYROLL', "_s +
                            values + ')'_L1};
        if (moved)
            all.append(u"S: DELETE FROM TW_FIELD WHERE FILE_NAME = 'PAYROLL' AND FIELD_NAME = '%1'"_s.arg(field));
        return all;
    }

    QStringList payroll(bool moved) const
    {
        QStringList all{
            u"T: SELECT * FROM TW_FILE WHERE FILE_NAME = 'PAYROLL'"_s,
            u"S: SELECT * FROM TW_FILE WHERE FILE_NAME = 'PAYROLL'"_s,
            u"T: INSERT INTO TW_FILE (FILE_NAME, OPEN_STRING, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE, REMARKS) "
            "VALUES ('PAYROLL', '/data/it''s', '12', 'INDEXED', 'FIXED', '%1 & 100%')"_s,
            u"S: SELECT FIELD_NAME FROM TW_FIELD WHERE FILE_NAME = 'PAYROLL'"_s};
        // The driver lists the fields by name.
        all += carried(u"BONUS"_s, u"3, 'BONUS', 'CHARACTER', 4, 4, 0, 0, 0, '', '', ''"_s, moved);
        all += carried(u"EMPLOYEE"_s, u"1, 'EMPLOYEE', 'CHARACTER', 0, 4, 0, 0, 0, '', '', ''"_s, moved);
        all += carried(u"SALARY"_s, u"2, 'SALARY', 'CHARACTER', 8, 4, 0, 0, 0, '', '', ''"_s, moved);
        if (moved)
            all += {u"S: DELETE FROM TW_FILE WHERE FILE_NAME = 'PAYROLL'"_s,
                    u"S: DELETE FROM TW_FIELD WHERE FILE_NAME = 'PAYROLL'"_s};
        return all;
    }

    QStringList fileNames(const QString& side) const
    {
        QStringList all;
        for (const QStringList& row : world.rows(side, u"SELECT FILE_NAME FROM TW_FILE ORDER BY FILE_NAME"_s))
            all.append(row.join(','));
        return all;
    }

    const QString fileRow = u"PAYROLL|/data/it's|12|INDEXED|FIXED|%1 & 100%"_s;
    const QString goOnWithFiles = u"Do you want to continue with the remainder of the Files in this collection?"_s;
    const QString goOnWithFields = u"Do you want to continue with the remainder of the Fields in this collection?"_s;
};

} // namespace

TEST_F(DragFiles, ACopiedFileTakesItsFieldsAlongAndStays)
{
    const QStringList fields = rowsOf(datasource, u"TW_FIELD"_s, u"FILE_NAME = 'PAYROLL'"_s);
    expectQuestion(fileQuestion(u"PAYROLL"_s), u"cmdCopy"_s);
    EXPECT_TRUE(DragFileToDSN(file(u"PAYROLL"_s), files(other), DragMode::Ask));
    EXPECT_EQ(said(), payroll(false));
    EXPECT_EQ(statusText(), u"Ready"_s);
    for (const QString& side : {datasource, other}) {
        EXPECT_EQ(rowsOf(side, u"TW_FILE"_s, u"FILE_NAME = 'PAYROLL'"_s), QStringList{fileRow});
        EXPECT_EQ(rowsOf(side, u"TW_FIELD"_s, u"FILE_NAME = 'PAYROLL'"_s), fields);
    }
}

TEST_F(DragFiles, AMovedFileIsGoneFromItsSource)
{
    const QStringList fields = rowsOf(datasource, u"TW_FIELD"_s, u"FILE_NAME = 'PAYROLL'"_s);
    const QStringList columns = rowsOf(datasource, u"TW_COLUMN"_s);
    expectQuestion(fileQuestion(u"PAYROLL"_s), u"cmdMove"_s);
    EXPECT_TRUE(DragFileToDSN(file(u"PAYROLL"_s), files(other), DragMode::Ask));
    EXPECT_EQ(said(), payroll(true));
    EXPECT_EQ(rowsOf(datasource, u"TW_FILE"_s, u"FILE_NAME = 'PAYROLL'"_s), QStringList());
    EXPECT_EQ(rowsOf(datasource, u"TW_FIELD"_s, u"FILE_NAME = 'PAYROLL'"_s), QStringList());
    EXPECT_EQ(rowsOf(other, u"TW_FILE"_s, u"FILE_NAME = 'PAYROLL'"_s), QStringList{fileRow});
    EXPECT_EQ(rowsOf(other, u"TW_FIELD"_s, u"FILE_NAME = 'PAYROLL'"_s), fields);
    // Tables and columns keep pointing at what is no longer there.
    EXPECT_EQ(rowsOf(datasource, u"TW_COLUMN"_s), columns);
}

TEST_F(DragFiles, CancelOrClosingTheQuestionDoesNothing)
{
    expectQuestion(fileQuestion(u"PAYROLL"_s), u"cmdCancel"_s);
    EXPECT_FALSE(DragFileToDSN(file(u"PAYROLL"_s), files(other), DragMode::Ask));
    dialogs.expect(u"frmMoveCopy"_s, [](DialogForm& dialog) { dialog.close(); });
    EXPECT_FALSE(DragFileToDSN(file(u"PAYROLL"_s), files(other), DragMode::Ask));
    expectQuestion(filesQuestion(), u"cmdCancel"_s);
    EXPECT_FALSE(DragFilesToDSN(files(datasource), files(other), DragMode::Ask));
    EXPECT_EQ(said(), QStringList());
}

TEST_F(DragFiles, AFileThatTheTargetHasStaysWhereItIs)
{
    changeOther(u"INSERT INTO TW_FILE (FILE_NAME, REMARKS) VALUES ('PAYROLL', 'theirs')"_s);
    const QStringList before = bothCatalogs();
    boxes.expectInform(u"Datasource '%1' already contains a File called 'PAYROLL'!"_s.arg(other));
    EXPECT_FALSE(DragFileToDSN(file(u"PAYROLL"_s), files(other), DragMode::Move));
    EXPECT_EQ(said(), QStringList{u"T: SELECT * FROM TW_FILE WHERE FILE_NAME = 'PAYROLL'"_s});
    EXPECT_EQ(bothCatalogs(), before);
}

TEST_F(DragFiles, NothingGoesToItsOwnDatasource)
{
    EXPECT_FALSE(DragFileToDSN(file(u"PAYROLL"_s), files(datasource), DragMode::Ask));
    EXPECT_FALSE(DragFilesToDSN(files(datasource), files(datasource), DragMode::Ask));
    EXPECT_EQ(said(), QStringList());
}

TEST_F(DragFiles, ADatasourceWithoutAConnectionGetsNothing)
{
    const QString third = datasource + u"Third"_s;
    world.addDatasource(third);
    EXPECT_FALSE(DragFileToDSN(file(u"PAYROLL"_s), files(third), DragMode::Ask));
    EXPECT_FALSE(DragFileToDSN(item(u"fi"_s, {third, u"PAYROLL"_s}), files(other), DragMode::Ask));
    EXPECT_FALSE(DragFilesToDSN(files(datasource), files(third), DragMode::Copy));
    EXPECT_FALSE(DragFieldsToFile(item(u"FD"_s, {third, u"A"_s}), item(u"fi"_s, {other, u"A"_s}), DragMode::Copy));
    EXPECT_FALSE(
        DragFieldToFile(item(u"fd"_s, {third, u"A"_s, u"B"_s}), item(u"fi"_s, {other, u"A"_s}), DragMode::Ask));
    EXPECT_EQ(said(), QStringList());
    EXPECT_EQ(CConnections::instance().Count(), 2);
}

TEST_F(DragFiles, ACollectionTakesTheFileKeyAlongAndLeavesTheCatalogsOwn)
{
    change(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('DBPRV2')"_s);
    change(u"INSERT OR IGNORE INTO TW_FILE (FILE_NAME) VALUES ('KEY')"_s);
    changeOther(u"DELETE FROM TW_FILE"_s);
    changeOther(u"DELETE FROM TW_FIELD"_s);
    expectQuestion(filesQuestion(), u"cmdCopy"_s);
    EXPECT_TRUE(DragFilesToDSN(files(datasource), files(other), DragMode::Ask));
    EXPECT_EQ(said().front(),
              u"S: SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME NOT IN('CNTRL', 'COLUMN', 'DB', 'DBPRV', 'DRIVER', "
              "'FIELD', 'FILE', 'LOCDT', 'SQLDT', 'TABLE', 'TBLPRV', 'USER')"_s);
    EXPECT_EQ(fileNames(other), (QStringList{u"DBPRV2"_s, u"EMPTY"_s, u"KEY"_s, u"PAYROLL"_s}));
    EXPECT_EQ(rowsOf(other, u"TW_FIELD"_s, u"FILE_NAME <> 'KEY'"_s).size(), 3);
}

TEST_F(DragFiles, ACollectionMovesAsAWhole)
{
    changeOther(u"DELETE FROM TW_FILE"_s);
    changeOther(u"DELETE FROM TW_FIELD"_s);
    const QStringList before = rowsOf(datasource, u"TW_FILE"_s, u"FILE_NAME IN ('EMPTY', 'PAYROLL')"_s);
    change(u"DELETE FROM TW_FILE WHERE FILE_NAME = 'KEY'"_s);
    expectQuestion(filesQuestion(), u"cmdMove"_s);
    EXPECT_TRUE(DragFilesToDSN(files(datasource), files(other), DragMode::Ask));
    EXPECT_EQ(rowsOf(other, u"TW_FILE"_s), before);
    EXPECT_EQ(rowsOf(datasource, u"TW_FILE"_s, u"FILE_NAME IN ('EMPTY', 'PAYROLL')"_s), QStringList());
    EXPECT_EQ(rowsOf(other, u"TW_FIELD"_s).size(), 3);
}

TEST_F(DragFiles, WithSystemTablesShownTheyGoAlong)
{
    const QStringList all = fileNames(datasource);
    EXPECT_TRUE(all.contains(u"COLUMN"_s));
    for (const int shown : {1, 2, -1}) {
        settings::save(u"Options"_s, u"SysTables"_s, shown);
        changeOther(u"DELETE FROM TW_FILE"_s);
        changeOther(u"DELETE FROM TW_FIELD"_s);
        statements.clear();
        EXPECT_TRUE(DragFilesToDSN(files(datasource), files(other), DragMode::Copy));
        EXPECT_EQ(said().front(), u"S: SELECT FILE_NAME FROM TW_FILE "_s) << shown;
        EXPECT_EQ(fileNames(other), all) << shown;
    }
}

TEST_F(DragFiles, YesAsksAgainYesToAllNeverAndNoEnds)
{
    change(u"DELETE FROM TW_FILE WHERE FILE_NAME = 'KEY'"_s);
    change(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('A1'), ('A2'), ('A3')"_s);
    changeOther(u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('A1'), ('A2'), ('A3')"_s);
    const auto box = [&](const QString& name) {
        boxes.expectInform(u"Datasource '%1' already contains a File called '%2'!"_s.arg(other, name));
    };
    QStringList order;
    for (const QStringList& row : world.rows(datasource, u"SELECT FILE_NAME FROM TW_FILE"_s)) {
        if (row.front().startsWith('A'_L1))
            order.append(row.front());
    }
    ASSERT_EQ(order.size(), 3);

    box(order[0]);
    expectGoOn(goOnWithFiles, u"cmdNo"_s);
    EXPECT_TRUE(DragFilesToDSN(files(datasource), files(other), DragMode::Copy));
    verify();

    box(order[0]);
    expectGoOn(goOnWithFiles, u"cmdYes"_s);
    box(order[1]);
    expectGoOn(goOnWithFiles, u"cmdYesAll"_s);
    box(order[2]);
    EXPECT_TRUE(DragFilesToDSN(files(datasource), files(other), DragMode::Copy));
    verify();
    EXPECT_EQ(rowsOf(other, u"TW_FILE"_s, u"FILE_NAME = 'PAYROLL'"_s), QStringList{fileRow});
}

TEST_F(DragFiles, AFieldGoesToAnotherFileOfItsDatasource)
{
    expectQuestion(u"Do you want to Move or Copy the Field 'SALARY' in Datasource '%1', File 'PAYROLL' "
                   "to Datasource '%1', File 'EMPTY'?"_s.arg(datasource),
                   u"cmdMove"_s);
    EXPECT_TRUE(
        DragFieldToFile(field(u"PAYROLL"_s, u"SALARY"_s), item(u"FD"_s, {datasource, u"EMPTY"_s}), DragMode::Ask));
    EXPECT_EQ(
        said(),
        (QStringList{u"S: SELECT * FROM TW_FIELD WHERE FILE_NAME = 'EMPTY' AND FIELD_NAME = 'SALARY'"_s,
                     u"S: SELECT * FROM TW_FIELD WHERE FILE_NAME = 'PAYROLL' AND FIELD_NAME = 'SALARY'"_s,
                     u"S: INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, "
                     "PRECISION, SCALE, ENCRYPTED, FORMAT, DEFAULT_VALUE, REMARKS) "
                     "VALUES ('EMPTY', 2, 'SALARY', 'CHARACTER', 8, 4, 0, 0, 0, '', '', '')"_s,
                     u"S: DELETE FROM TW_FIELD WHERE FILE_NAME = 'PAYROLL' AND FIELD_NAME = 'SALARY'"_s}));
    EXPECT_EQ(fieldsOf(u"EMPTY"_s), QStringList{u"SALARY 2 8"_s});
    EXPECT_EQ(fieldsOf(u"PAYROLL"_s), (QStringList{u"EMPLOYEE 1 0"_s, u"BONUS 3 4"_s}));
    EXPECT_EQ(statusText(), u"Ready"_s);
}

TEST_F(DragFiles, AFieldThatTheFileHasIsRefused)
{
    addField(u"EMPTY"_s, u"SALARY"_s, 1, 0, 4);
    boxes.expectInform(u"Datasource '%1', File 'EMPTY' already contains a field called  'SALARY'!"_s.arg(datasource));
    EXPECT_FALSE(
        DragFieldToFile(field(u"PAYROLL"_s, u"SALARY"_s), item(u"fi"_s, {datasource, u"EMPTY"_s}), DragMode::Move));
    EXPECT_EQ(statements.writes(), QStringList());
    EXPECT_EQ(fieldsOf(u"PAYROLL"_s).size(), 3);
}

TEST_F(DragFiles, TheFieldsOfAFileAskWhetherToGoOn)
{
    addField(u"EMPTY"_s, u"SALARY"_s, 1, 0, 4);
    expectQuestion(u"Do you want to Move or Copy the Fields collection in Datasource '%1', File 'PAYROLL' "
                   "to the Datasource '%1', File 'EMPTY'?"_s.arg(datasource),
                   u"cmdMove"_s);
    boxes.expectInform(u"Datasource '%1', File 'EMPTY' already contains a field called  'SALARY'!"_s.arg(datasource));
    expectGoOn(goOnWithFields, u"cmdYes"_s);
    EXPECT_TRUE(DragFieldsToFile(item(u"FD"_s, {datasource, u"PAYROLL"_s}), item(u"fi"_s, {datasource, u"EMPTY"_s}),
                                 DragMode::Ask));
    EXPECT_EQ(fieldsOf(u"PAYROLL"_s), QStringList{u"SALARY 2 8"_s});
    EXPECT_EQ(fieldsOf(u"EMPTY"_s), (QStringList{u"EMPLOYEE 1 0"_s, u"SALARY 1 0"_s, u"BONUS 3 4"_s}));
}

TEST_F(DragFiles, AMovedFileLosesTheFieldsThatWereStopped)
{
    changeOther(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NAME) VALUES ('PAYROLL', 'BONUS')"_s);
    boxes.expectInform(u"Datasource '%1', File 'PAYROLL' already contains a field called  'BONUS'!"_s.arg(other));
    expectGoOn(goOnWithFields, u"cmdNo"_s);
    EXPECT_TRUE(DragFileToDSN(file(u"PAYROLL"_s), files(other), DragMode::Move));
    EXPECT_EQ(fieldsOf(u"PAYROLL"_s), QStringList());
    EXPECT_EQ(rowsOf(other, u"TW_FIELD"_s, u"FILE_NAME = 'PAYROLL'"_s).size(), 1);
}

TEST_F(DragFiles, AMissingNumberMakesTheInsertFailAndTheSourceStays)
{
    change(u"UPDATE TW_FIELD SET PRECISION = NULL WHERE FIELD_NAME = 'SALARY'"_s);
    errors.expect(Press::Ignore);
    EXPECT_FALSE(
        DragFieldToFile(field(u"PAYROLL"_s, u"SALARY"_s), item(u"fi"_s, {datasource, u"EMPTY"_s}), DragMode::Move));
    ASSERT_EQ(errors.shown().size(), 1u);
    EXPECT_EQ(errors.shown().front().trappedIn, u"modDragAndDrop.DragFieldToFile"_s);
    EXPECT_EQ(said().back(),
              u"S: INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, "
              "PRECISION, SCALE, ENCRYPTED, FORMAT, DEFAULT_VALUE, REMARKS) "
              "VALUES ('EMPTY', 2, 'SALARY', 'CHARACTER', 8, 4, , 0, 0, '', '', '')"_s);
    EXPECT_EQ(fieldsOf(u"PAYROLL"_s).size(), 3);
    EXPECT_EQ(frmTWErr::CallStack(), QStringList());
}

TEST_F(DragFiles, ARowThatIsGoneIsReportedBeforeAnythingIsWritten)
{
    errors.expect(Press::Ignore);
    EXPECT_FALSE(DragFileToDSN(file(u"GONE"_s), files(other), DragMode::Move));
    errors.expect(Press::Ignore);
    EXPECT_FALSE(DragFieldToFile(field(u"PAYROLL"_s, u"GONE"_s), item(u"fi"_s, {other, u"PAYROLL"_s}), DragMode::Move));
    ASSERT_EQ(errors.shown().size(), 2u);
    EXPECT_EQ(errors.shown().front().number, u"3021"_s);
    EXPECT_EQ(errors.shown().front().trappedIn, u"modDragAndDrop.DragFileToDSN"_s);
    EXPECT_EQ(errors.shown().back().trappedIn, u"modDragAndDrop.DragFieldToFile"_s);
    EXPECT_EQ(statements.writes(), QStringList());
}

TEST_F(DragFiles, NamesOfAnyKindArriveAsTheyAre)
{
    const QString name = u"O'HARA%1🚀"_s;
    change(u"INSERT INTO TW_FILE (FILE_NAME, RECORD_SIZE) VALUES ('O''HARA%1🚀', 10)"_s);
    change(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NAME) VALUES ('O''HARA%1🚀', 'IT''S %2')"_s);
    expectQuestion(fileQuestion(name), u"cmdMove"_s);
    EXPECT_TRUE(DragFileToDSN(file(name), files(other), DragMode::Ask));
    EXPECT_EQ(rowsOf(other, u"TW_FILE"_s, u"FILE_NAME LIKE 'O%'"_s), QStringList{name + u"||10|||"_s});
    EXPECT_EQ(rowsOf(other, u"TW_FIELD"_s, u"FILE_NAME LIKE 'O%'"_s).size(), 1);
    EXPECT_EQ(rowsOf(datasource, u"TW_FIELD"_s, u"FILE_NAME LIKE 'O%'"_s), QStringList());
}

TEST_F(DragFiles, AFaultInAMoveIsMendedByARetry)
{
    change(u"DELETE FROM TW_FILE WHERE FILE_NAME = 'KEY'"_s);
    sweep([&] { EXPECT_TRUE(DragFilesToDSN(files(datasource), files(other), DragMode::Move)); });
}

TEST_F(DragFiles, AnIgnoredFaultEndsTheRoutineThatItIsIn)
{
    const QStringList whole = payroll(true);
    keepBoth();
    for (int k = 1; k <= whole.size(); ++k) {
        SCOPED_TRACE(whole.at(k - 1).toStdString());
        beginAnewBoth();
        statements.failAt(k);
        errors.expect(Press::Ignore);
        // The statements behind the list of the fields belong to one field each.
        const bool inField = k > 4 && k <= whole.size() - 2;
        if (inField)
            expectGoOn(goOnWithFields, u"cmdYes"_s);
        const bool ended = DragFileToDSN(file(u"PAYROLL"_s), files(other), DragMode::Move);
        verify();
        QStringList expected = whole.first(k);
        if (inField)
            expected += whole.sliced(4 + 4 * ((k - 5) / 4 + 1));
        else if (k == 4)
            expected += whole.sliced(whole.size() - 2);
        EXPECT_EQ(said(), expected);
        EXPECT_EQ(ended, k >= 4 && k <= whole.size() - 2);
        EXPECT_EQ(frmTWErr::CallStack(), QStringList());
        EXPECT_EQ(errors.shown().back().trappedIn, inField  ? u"modDragAndDrop.DragFieldToFile"_s
                                                   : k == 4 ? u"modDragAndDrop.DragFieldsToFile"_s
                                                            : u"modDragAndDrop.DragFileToDSN"_s);
    }
}
