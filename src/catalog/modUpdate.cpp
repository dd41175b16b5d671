#include "modUpdate.h"

#include "CConnections.h"
#include "Database.h"
#include "Recordset.h"
#include "Routine.h"
#include "RuntimeError.h"
#include "modDatabase.h"

#include <QStringList>

#include <memory>

using namespace Qt::StringLiterals;
using modDatabase::SQLQuote;

namespace
{

/// The statements that a routine has built so far, which the report of a failure shows.
struct Statements {
    /// The SELECT of the old row, later the last statement for the dependents.
    QString current;
    QString insertion;
    QString deletion;

    QString report() const
    {
        QStringList built{current, insertion, deletion};
        built.removeAll(QString());
        return built.join("\n\n"_L1);
    }
};

/// The open database of a connection. Raises 91 where there is none.
dao::Database& database(const QString& connection)
{
    const CConnection* found = CConnections::instance().Item(connection);
    if (!found || !found->db())
        throw RuntimeError(ErrorNumber::ObjectNotSet);
    return *found->db();
}

dao::Value value(const dao::Recordset& row, const QString& column)
{
    return row.Fields().Item(column).Value();
}

/// A text for between apostrophes, as the row holds it.
QString quoted(const dao::Recordset& row, const QString& column)
{
    return SQLQuote(value(row, column));
}

/// A text for between apostrophes, laid out as a statement is: its own apostrophes stay single.
QString formatted(const dao::Recordset& row, const QString& column)
{
    return modDatabase::FormatSQL(value(row, column));
}

/// A number as the row holds it; a null leaves nothing. Behind a zero that reads 0.
QString number(const dao::Recordset& row, const QString& column)
{
    return value(row, column).Text();
}

/// The first column of the current row.
QString name(const dao::Recordset& rows)
{
    return rows.Fields().Item(0).Value().Text();
}

} // namespace

// Values go into a statement by one call of QString::arg: what looks like a place marker within a value is then left
// alone.

void modUpdate::UpdateField(const QString& connection, const QString& oldFile, const QString& newFile,
                            const QString& oldField, const QString& newField, std::int32_t offset)
{
    Statements sql;
    Routine routine("modUpdate.UpdateField");
    routine.additional([&] { return sql.report(); });
    routine.run([&] {
        dao::Database& db = database(connection);

        sql.current = u"SELECT * FROM TW_FIELD WHERE FILE_NAME = '%1' AND FIELD_NAME = '%2'"_s.arg(SQLQuote(oldFile),
                                                                                                   SQLQuote(oldField));
        const auto row = db.OpenRecordset(sql.current);
        sql.deletion = u"DELETE FROM TW_FIELD WHERE FILE_NAME = '%1' AND FIELD_NAME = '%2'"_s.arg(SQLQuote(oldFile),
                                                                                                  SQLQuote(oldField));
        sql.insertion =
            u"INSERT INTO TW_FIELD "
            "(FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, PRECISION, SCALE, ENCRYPTED, "
            "FORMAT, DEFAULT_VALUE, REMARKS) "
            "VALUES ('%1', 0%2, '%3', '%4', 0%5, 0%6, 0%7, 0%8, 0%9, '%10', '%11', '%12')"_s.arg(
                SQLQuote(newFile), number(*row, u"FIELD_NUMBER"_s), SQLQuote(newField),
                quoted(*row, u"LOCAL_TYPE_NAME"_s), QString::number(offset), number(*row, u"LENGTH"_s),
                number(*row, u"PRECISION"_s), number(*row, u"SCALE"_s), number(*row, u"ENCRYPTED"_s),
                formatted(*row, u"FORMAT"_s), formatted(*row, u"DEFAULT_VALUE"_s), formatted(*row, u"REMARKS"_s));
        db.Execute(sql.deletion);
        db.Execute(sql.insertion);

        // Tables of a renamed file bear its new name by now. Those of one name in several databases are not told
        // apart.
        sql.current = u"SELECT TABLE_NAME FROM TW_TABLE WHERE FILE_NAME='%1'"_s.arg(SQLQuote(newFile));
        for (const auto tables = db.OpenRecordset(sql.current); !tables->Eof(); tables->MoveNext()) {
            sql.current = u"UPDATE TW_COLUMN SET FIELD_NAME = '%1' WHERE FIELD_NAME = '%2' AND TABLE_NAME = '%3'"_s.arg(
                SQLQuote(newField), SQLQuote(oldField), SQLQuote(name(*tables)));
            db.Execute(sql.current);
        }
    });
}

void modUpdate::UpdateFile(const QString& connection, const QString& oldFile, const QString& newFile)
{
    Statements sql;
    Routine routine("modUpdate.UpdateFile");
    routine.additional([&] { return sql.report(); });
    routine.run([&] {
        dao::Database& db = database(connection);

        sql.current = u"SELECT * FROM TW_FILE WHERE FILE_NAME = '%1'"_s.arg(SQLQuote(oldFile));
        const auto row = db.OpenRecordset(sql.current);
        sql.deletion = u"DELETE FROM TW_FILE WHERE FILE_NAME = '%1'"_s.arg(SQLQuote(oldFile));
        sql.insertion =
            u"INSERT INTO TW_FILE "
            "(FILE_NAME, OPEN_STRING, RECORD_SIZE, FILE_ORGANISATION, RECORD_TYPE, REMARKS) "
            "VALUES ('%1', '%2', 0%3, '%4', '%5', '%6')"_s.arg(
                SQLQuote(newFile), quoted(*row, u"OPEN_STRING"_s), number(*row, u"RECORD_SIZE"_s),
                quoted(*row, u"FILE_ORGANISATION"_s), quoted(*row, u"RECORD_TYPE"_s), quoted(*row, u"REMARKS"_s));
        db.Execute(sql.deletion);
        db.Execute(sql.insertion);

        sql.current =
            u"UPDATE TW_TABLE SET FILE_NAME = '%1' WHERE FILE_NAME = '%2'"_s.arg(SQLQuote(newFile), SQLQuote(oldFile));
        db.Execute(sql.current);

        sql.current = u"SELECT FIELD_NAME, OFFSET FROM TW_FIELD WHERE FILE_NAME = '%1'"_s.arg(SQLQuote(oldFile));
        for (const auto fields = db.OpenRecordset(sql.current); !fields->Eof(); fields->MoveNext()) {
            const QString field = name(*fields);
            UpdateField(connection, oldFile, newFile, field, field, value(*fields, u"OFFSET"_s).Long());
        }
    });
}

void modUpdate::UpdateColumn(const QString& connection, const QString& oldDatabase, const QString& newDatabase,
                             const QString& oldTable, const QString& newTable, const QString& oldColumn,
                             const QString& newColumn, std::int32_t columnType, std::int32_t columnNumber,
                             const QString& fieldName)
{
    Statements sql;
    Routine routine("modUpdate.UpdateColumn");
    routine.additional([&] { return sql.report(); });
    routine.run([&] {
        dao::Database& db = database(connection);

        sql.current = u"SELECT * FROM TW_COLUMN "
                      "WHERE DATABASE_NAME = '%1' AND TABLE_NAME = '%2' AND COLUMN_NAME = '%3'"_s.arg(
                          SQLQuote(oldDatabase), SQLQuote(oldTable), SQLQuote(oldColumn));
        const auto row = db.OpenRecordset(sql.current);
        sql.deletion = u"DELETE FROM TW_COLUMN "
                       "WHERE DATABASE_NAME = '%1' AND TABLE_NAME = '%2' AND COLUMN_NAME = '%3'"_s.arg(
                           SQLQuote(oldDatabase), SQLQuote(oldTable), SQLQuote(oldColumn));
        sql.insertion =
            u"INSERT INTO TW_COLUMN "
            "(DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, SQL_TYPE_NAME, LENGTH, PRECISION, "
            "SCALE, NULLABLE, UNSIGNED_ATTRIBUTE, UPDATABLE, VISIBLE, MONEY, AUTO_INCREMENT, CASE_SENSITIVE, "
            "SEARCHABLE, RADIX, DEFAULT_VALUE, REMARKS, SETFILEPARAMETER, COLUMN_TYPE, DISPLAY_NAME) "
            "VALUES ('%1', '%2', 0%3, '%4', '%5', '%6', %7, %8, %9, %10, %11, %12, %13, %14, %15, %16, %17, %18, "
            "'%19', '%20', %21, %22, '%23')"_s.arg(
                SQLQuote(newDatabase), SQLQuote(newTable), QString::number(columnNumber), SQLQuote(newColumn),
                SQLQuote(fieldName), quoted(*row, u"SQL_TYPE_NAME"_s), number(*row, u"LENGTH"_s),
                number(*row, u"PRECISION"_s), number(*row, u"SCALE"_s), number(*row, u"NULLABLE"_s),
                number(*row, u"UNSIGNED_ATTRIBUTE"_s), number(*row, u"UPDATABLE"_s), number(*row, u"VISIBLE"_s),
                number(*row, u"MONEY"_s), number(*row, u"AUTO_INCREMENT"_s), number(*row, u"CASE_SENSITIVE"_s),
                number(*row, u"SEARCHABLE"_s), number(*row, u"RADIX"_s), quoted(*row, u"DEFAULT_VALUE"_s),
                quoted(*row, u"REMARKS"_s), number(*row, u"SETFILEPARAMETER"_s), QString::number(columnType),
                quoted(*row, u"DISPLAY_NAME"_s));
        db.Execute(sql.deletion);
        db.Execute(sql.insertion);
    });
}

void modUpdate::UpdateTable(const QString& connection, const QString& oldDatabase, const QString& newDatabase,
                            const QString& oldTable, const QString& newTable)
{
    Statements sql;
    Routine routine("modUpdate.UpdateTable");
    routine.additional([&] { return sql.report(); });
    routine.run([&] {
        dao::Database& db = database(connection);

        sql.current = u"SELECT * FROM TW_TABLE WHERE DATABASE_NAME = '%1' AND TABLE_NAME = '%2'"_s.arg(
            SQLQuote(oldDatabase), SQLQuote(oldTable));
        const auto row = db.OpenRecordset(sql.current);
        sql.deletion = u"DELETE FROM TW_TABLE WHERE DATABASE_NAME = '%1' AND TABLE_NAME = '%2'"_s.arg(
            SQLQuote(oldDatabase), SQLQuote(oldTable));
        sql.insertion = u"INSERT INTO TW_TABLE "
                        "(DATABASE_NAME, TABLE_NAME, TABLE_TYPE, FILE_NAME, FILE_SPECIFICATION, NUMBER_COLUMNS, "
                        "CRITERIA, REMARKS, DISPLAY_NAME) "
                        "VALUES ('%1', '%2', '%3', '%4', '%5', 0%6, '%7', '%8', '%2')"_s.arg(
                            SQLQuote(newDatabase), SQLQuote(newTable), quoted(*row, u"TABLE_TYPE"_s),
                            quoted(*row, u"FILE_NAME"_s), quoted(*row, u"FILE_SPECIFICATION"_s),
                            number(*row, u"NUMBER_COLUMNS"_s), quoted(*row, u"CRITERIA"_s), quoted(*row, u"REMARKS"_s));
        db.Execute(sql.deletion);
        db.Execute(sql.insertion);

        sql.current =
            u"SELECT COLUMN_TYPE, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME FROM TW_COLUMN "
            "WHERE DATABASE_NAME = '%1' AND TABLE_NAME = '%2'"_s.arg(SQLQuote(oldDatabase), SQLQuote(oldTable));
        for (const auto columns = db.OpenRecordset(sql.current); !columns->Eof(); columns->MoveNext()) {
            const std::int32_t type = value(*columns, u"COLUMN_TYPE"_s).Long();
            const std::int32_t columnNumber = value(*columns, u"COLUMN_NUMBER"_s).Long();
            const QString column = value(*columns, u"COLUMN_NAME"_s).Text();
            const QString field = value(*columns, u"FIELD_NAME"_s).Text();
            UpdateColumn(connection, oldDatabase, newDatabase, oldTable, newTable, column, column, type, columnNumber,
                         field);
        }

        sql.current = u"SELECT USER_NAME FROM TW_TBLPRV WHERE DATABASE_NAME = '%1' AND TABLE_NAME = '%2'"_s.arg(
            SQLQuote(oldDatabase), SQLQuote(oldTable));
        for (const auto users = db.OpenRecordset(sql.current); !users->Eof(); users->MoveNext()) {
            const QString user = name(*users);
            UpdateTBLPRV(connection, oldDatabase, newDatabase, oldTable, newTable, user, user);
        }
    });
}

void modUpdate::UpdateTBLPRV(const QString& connection, const QString& oldDatabase, const QString& newDatabase,
                             const QString& oldTable, const QString& newTable, const QString& oldUser,
                             const QString& newUser)
{
    Statements sql;
    // It stands on the call stack, and in reports, under the name of the routine that moves a database.
    Routine routine("modUpdate.UpdateDatabase");
    routine.additional([&] { return sql.report(); });
    routine.run([&] {
        dao::Database& db = database(connection);

        sql.current = u"SELECT * FROM TW_TBLPRV "
                      "WHERE USER_NAME = '%1' AND DATABASE_NAME = '%2' AND TABLE_NAME = '%3'"_s.arg(
                          SQLQuote(oldUser), SQLQuote(oldDatabase), SQLQuote(oldTable));
        const auto row = db.OpenRecordset(sql.current);
        sql.deletion = u"DELETE FROM TW_TBLPRV "
                       "WHERE USER_NAME = '%1' AND DATABASE_NAME = '%2' AND TABLE_NAME = '%3'"_s.arg(
                           SQLQuote(oldUser), SQLQuote(oldDatabase), SQLQuote(oldTable));
        sql.insertion =
            u"INSERT INTO TW_TBLPRV "
            "(DATABASE_NAME, TABLE_NAME, USER_NAME, ALLOW_SELECT, ALLOW_INSERT, ALLOW_UPDATE, "
            "ALLOW_DELETE, REMARKS) "
            "VALUES ('%1', '%2', '%3', 0%4, 0%5, 0%6, 0%7, '%8')"_s.arg(
                SQLQuote(newDatabase), SQLQuote(newTable), SQLQuote(newUser), number(*row, u"ALLOW_SELECT"_s),
                number(*row, u"ALLOW_INSERT"_s), number(*row, u"ALLOW_UPDATE"_s), number(*row, u"ALLOW_DELETE"_s),
                quoted(*row, u"REMARKS"_s));
        db.Execute(sql.deletion);
        db.Execute(sql.insertion);
    });
}

void modUpdate::UpdateDatabase(const QString& connection, const QString& oldDatabase, const QString& newDatabase)
{
    Statements sql;
    Routine routine("modUpdate.UpdateDatabase");
    routine.additional([&] { return sql.report(); });
    routine.run([&] {
        dao::Database& db = database(connection);

        sql.current = u"SELECT * FROM TW_DB WHERE DATABASE_NAME = '%1' "_s.arg(SQLQuote(oldDatabase));
        const auto row = db.OpenRecordset(sql.current);
        sql.deletion = u"DELETE FROM TW_DB WHERE DATABASE_NAME = '%1' "_s.arg(SQLQuote(oldDatabase));
        sql.insertion =
            u"INSERT INTO TW_DB "
            "(DATABASE_NAME, DEFAULT_DIRECTORY, DRIVER_NAME, SETUP_PROCEDURE, CONNECT_STRING, REMARKS, "
            "DISPLAY_NAME) "
            "VALUES ('%1', '%2', '%3', '%4', '%5', '%6', '%1')"_s.arg(
                SQLQuote(newDatabase), quoted(*row, u"DEFAULT_DIRECTORY"_s), quoted(*row, u"DRIVER_NAME"_s),
                quoted(*row, u"SETUP_PROCEDURE"_s), quoted(*row, u"CONNECT_STRING"_s), quoted(*row, u"REMARKS"_s));
        db.Execute(sql.deletion);
        db.Execute(sql.insertion);

        // The tables take their privileges along, so that the privileges on the database find none left to move.
        sql.current = u"SELECT TABLE_NAME FROM TW_TABLE WHERE DATABASE_NAME = '%1'"_s.arg(SQLQuote(oldDatabase));
        for (const auto tables = db.OpenRecordset(sql.current); !tables->Eof(); tables->MoveNext()) {
            const QString table = name(*tables);
            UpdateTable(connection, oldDatabase, newDatabase, table, table);
        }

        sql.current = u"SELECT USER_NAME FROM TW_DBPRV WHERE DATABASE_NAME = '%1' "_s.arg(SQLQuote(oldDatabase));
        for (const auto users = db.OpenRecordset(sql.current); !users->Eof(); users->MoveNext()) {
            const QString user = name(*users);
            UpdateDBPRV(connection, oldDatabase, newDatabase, user, user);
        }
    });
}

void modUpdate::UpdateDBPRV(const QString& connection, const QString& oldDatabase, const QString& newDatabase,
                            const QString& oldUser, const QString& newUser)
{
    Statements sql;
    Routine routine("modUpdate.UpdateDBPRV");
    // The report of a statement that fails shows it whole, the password that is carried included.
    routine.additional([&] { return sql.report(); });
    routine.run([&] {
        dao::Database& db = database(connection);

        sql.current = u"SELECT * FROM TW_DBPRV WHERE DATABASE_NAME = '%1' AND USER_NAME = '%2' "_s.arg(
            SQLQuote(oldDatabase), SQLQuote(oldUser));
        const auto row = db.OpenRecordset(sql.current);
        sql.deletion = u"DELETE FROM TW_DBPRV WHERE DATABASE_NAME = '%1' AND USER_NAME = '%2' "_s.arg(
            SQLQuote(oldDatabase), SQLQuote(oldUser));
        sql.insertion =
            u"INSERT INTO TW_DBPRV "
            "(USER_NAME, DATABASE_NAME, DATABASE_USERNAME, DATABASE_PASSWORD, ALLOW_SELECT, ALLOW_INSERT, "
            "ALLOW_UPDATE, ALLOW_DELETE, SECURITY_LEVEL, REMARKS) "
            "VALUES ('%1', '%2', '%3', '%4', 0%5, 0%6, 0%7, 0%8, '%9', '%10')"_s.arg(
                SQLQuote(newUser), SQLQuote(newDatabase), quoted(*row, u"DATABASE_USERNAME"_s),
                quoted(*row, u"DATABASE_PASSWORD"_s), number(*row, u"ALLOW_SELECT"_s), number(*row, u"ALLOW_INSERT"_s),
                number(*row, u"ALLOW_UPDATE"_s), number(*row, u"ALLOW_DELETE"_s), quoted(*row, u"SECURITY_LEVEL"_s),
                quoted(*row, u"REMARKS"_s));
        db.Execute(sql.deletion);
        db.Execute(sql.insertion);

        // The privileges of every user are listed. A table on which this user has none is reported as a missing row.
        sql.current = u"SELECT TABLE_NAME FROM TW_TBLPRV WHERE DATABASE_NAME = '%1'"_s.arg(SQLQuote(oldDatabase));
        for (const auto tables = db.OpenRecordset(sql.current); !tables->Eof(); tables->MoveNext()) {
            const QString table = name(*tables);
            UpdateTBLPRV(connection, oldDatabase, newDatabase, table, table, oldUser, newUser);
        }
    });
}

void modUpdate::UpdateUser(const QString& connection, const QString& oldUser, const QString& newUser)
{
    Statements sql;
    Routine routine("modUpdate.UpdateUser");
    routine.additional([&] { return sql.report(); });
    routine.run([&] {
        dao::Database& db = database(connection);

        sql.current = u"SELECT * FROM TW_USER WHERE USER_NAME = '%1'"_s.arg(SQLQuote(oldUser));
        const auto row = db.OpenRecordset(sql.current);
        sql.deletion = u"DELETE FROM TW_USER WHERE USER_NAME = '%1'"_s.arg(SQLQuote(oldUser));
        sql.insertion = u"INSERT INTO TW_USER (USER_NAME, USER_PASSWORD, REMARKS) VALUES ('%1', '', '%2')"_s.arg(
            SQLQuote(newUser), quoted(*row, u"REMARKS"_s));
        db.Execute(sql.deletion);
        db.Execute(sql.insertion);

        sql.current = u"SELECT DATABASE_NAME FROM TW_DBPRV WHERE USER_NAME = '%1'"_s.arg(SQLQuote(oldUser));
        for (const auto databases = db.OpenRecordset(sql.current); !databases->Eof(); databases->MoveNext()) {
            const QString databaseName = name(*databases);
            UpdateDBPRV(connection, databaseName, databaseName, oldUser, newUser);
        }
    });
}
