#pragma once

#include "DialogHands.h"
#include "RoomFixture.h"

#include <utility>

/// What the wizard that makes a table from a file shows and sends.
namespace wizard
{

using namespace Qt::StringLiterals;

inline const QString name = u"frmWizardFileToTable"_s;
inline const QString datasources = u"cboFileDatasource"_s;
inline const QString files = u"lstFile"_s;
inline const QString databases = u"lstDB"_s;
inline const QString tableName = u"txtProperty_TABLE_NAME"_s;
inline const QString displayName = u"txtProperty_DISPLAY_NAME"_s;
inline const QString specification = u"txtProperty_FILE_SPECIFICATION"_s;
inline const QString remarks = u"txtProperty_REMARKS"_s;
inline const QString previous = u"cmdPrevious"_s;
inline const QString next = u"cmdNext"_s;
inline const QString finish = u"cmdFinish"_s;
inline const QString cancel = u"cmdCancel"_s;

inline const QString noFile = u"Please select a file to convert"_s;
inline const QString noDatabase = u"Please select a database to create the table in."_s;
inline const QString otherDisplayName = u"Display Name must match the Table Name, but may be mixed case."_s;
inline const QString noSpecification = u"Please enter a File Specification for this Table."_s;
inline const QString created = u"Table Created"_s;

inline const QString userFiles =
    u"SELECT FILE_NAME FROM TW_FILE WHERE FILE_NAME NOT IN ('CNTRL','COLUMN','DB','DBPRV','DRIVER','FIELD','FILE',"
    "'KEY','LOCDT','SQLDT','TABLE','TBLPRV','USER') ORDER BY FILE_NAME ASC"_s;
inline const QString userDatabases =
    u"SELECT DATABASE_NAME FROM TW_DB ORDER BY DATABASE_NAME WHERE DATABASE_NAME <> 'TW'"_s;
inline const QString allFiles = u"SELECT FILE_NAME FROM TW_FILE ORDER BY FILE_NAME ASC"_s;
inline const QString allDatabases = u"SELECT DATABASE_NAME FROM TW_DB ORDER BY DATABASE_NAME "_s;

inline QString countFields(const QString& file)
{
    return u"SELECT COUNT (*) AS COLUMN_COUNT FROM TW_FIELD WHERE FILE_NAME = '%1'"_s.arg(file);
}

inline QString findTable(const QString& table, const QString& database = u"SALES"_s)
{
    return u"SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = '%1' AND TABLE_NAME = '%2'"_s.arg(database, table);
}

/// The rest begins with the database and ends with the display name.
inline QString insertTable(const QString& rest)
{
    return u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, "
           "NUMBER_COLUMNS, REMARKS, DISPLAY_NAME) VALUES ("_s +
           rest + u" )"_s;
}

inline QString readFields(const QString& file)
{
    return u"SELECT * FROM TW_FIELD WHERE FILE_NAME = '%1' ORDER BY FIELD_NUMBER ASC"_s.arg(file);
}

inline QString readLocalType(const QString& type)
{
    return u"SELECT * FROM TW_LOCDT WHERE LOCAL_TYPE_NAME = '%1'"_s.arg(type);
}

inline QString readSqlType(const QString& type)
{
    return u"SELECT * FROM TW_SQLDT WHERE SQL_TYPE_NAME = '%1'"_s.arg(type);
}

/// The rest begins with the database and ends with the radix.
inline QString insertColumn(const QString& rest)
{
    return u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, SQL_TYPE_NAME, "
           "LENGTH, PRECISION, SCALE, DEFAULT_VALUE, REMARKS, DISPLAY_NAME, VISIBLE, NULLABLE, UNSIGNED_ATTRIBUTE, "
           "MONEY, AUTO_INCREMENT, CASE_SENSITIVE, SEARCHABLE, UPDATABLE, RADIX) VALUES ("_s +
           rest + u" )"_s;
}

inline QString isSkipped(const QString& type, const QString& file, const QString& field, const QString& datasource)
{
    return u"Unable to find information about the Local Data Type '%1'\nused in File '%2, Field '%3.\n"
           "This datatype is not supported in Datasource '%4' and the Field has been skipped."_s.arg(type, file, field,
                                                                                                     datasource);
}

/// Besides the usual catalog: the file STOCK with a field of each kind that the wizard knows.
class Wizard : public ItemTest
{
protected:
    void SetUp() override
    {
        ItemTest::SetUp();
        change(u"INSERT INTO TW_FILE (FILE_NAME, RECORD_SIZE) VALUES ('STOCK', 40)"_s);
        change(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, LENGTH, PRECISION, SCALE, "
               "DEFAULT_VALUE, REMARKS) VALUES "
               "('STOCK', 1, 'ORDER-NO', 'STRING', 7, 9, 0, 'no''ne', 'key'), "
               "('STOCK', 2, 'QTY', 'ZONED', 5, 6, 2, '', ''), "
               "('STOCK', 3, 'FLAG', 'UNKNOWN', 1, 1, 0, '', ''), "
               "('STOCK', 5, 'COUNT', 'INTEGER-4', 8, 9, NULL, '0', NULL)"_s);
    }

    static QStringList level() { return {u"DB"_s, u"db=SALES"_s, u"TA"_s}; }

    /// Opens the wizard from the context menu of a file, and lets the user go on.
    void open(DialogScript::Action action)
    {
        const QStringList node{u"FI"_s, u"fi=STOCK"_s};
        begin(node);
        dialogs.expect(name, std::move(action));
        choose(key(node), u"mnu_FileFileToTableWizard"_s);
        dialogs.verify();
        boxes.verify();
        EXPECT_FALSE(forms::loaded(name));
    }

    /// Fills everything in, page by page, that must be.
    static void fillIn(DialogForm& form, const QString& file = u"STOCK"_s)
    {
        DialogScript::click(form, next);
        dialog::clickRow(form, files, file);
        DialogScript::click(form, next);
        dialog::clickRow(form, databases, u"SALES"_s);
        DialogScript::click(form, next);
        dialog::write(form, specification, u"a.dat"_s);
    }

    /// The same and finishes, with a table that is made.
    void make(const QString& file = u"STOCK"_s)
    {
        open([&](DialogForm& form) {
            fillIn(form, file);
            boxes.expectInform(created);
            DialogScript::click(form, finish);
        });
    }

    void expectSkipped(const QString& type, const QString& file, const QString& field,
                       ScriptedBoxes::Meanwhile meanwhile = {})
    {
        boxes.expect(isSkipped(type, file, field, datasource), boxes::Icon::None, std::move(meanwhile));
    }

    /// The page that shows, by the buttons that are open: "Page 1 of 4: Next Finish Cancel".
    static QString page(DialogForm& form)
    {
        QStringList shown;
        for (int i = 0; i < 4; ++i) {
            if (dialog::get<QWidget>(form, u"picPage_%1"_s.arg(i)).isVisible())
                shown.append(QString::number(i));
        }
        EXPECT_EQ(shown, QStringList{QString::number(form.windowTitle().mid(5, 1).toInt() - 1)});
        QStringList open;
        for (const QString& button : {previous, next, finish, cancel}) {
            if (dialog::isEnabled(form, button))
                open.append(button.mid(3));
        }
        return form.windowTitle() + ": "_L1 + open.join(' '_L1);
    }

    QStringList columns(const QString& table = u"STOCK"_s) const
    {
        return stored(u"SELECT * FROM TW_COLUMN WHERE DATABASE_NAME = 'SALES' AND TABLE_NAME = '%1' "
                      "ORDER BY COLUMN_NUMBER, COLUMN_NAME"_s.arg(table));
    }
    QStringList tables() const
    {
        return stored(u"SELECT * FROM TW_TABLE WHERE DATABASE_NAME = 'SALES' ORDER BY TABLE_NAME"_s);
    }
};

} // namespace wizard
