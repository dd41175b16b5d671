#include "ItemTest.h"

#include "FilesRoom.h"
#include "PaneRegistry.h"

using namespace Qt::StringLiterals;

void ItemTest::SetUp()
{
    ItemFixture::SetUp();
    registerFilesRoom();
    if (m_recordsCollections)
        record({{u"frmFiles"_s, 1}, {u"frmFields"_s, 2}});

    addFile(u"STOCK"_s, 40);
    const auto add = [&](int number, const char* name, const char* type, int offset, int length, int precision,
                         int scale, const char* format) {
        change(u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, OFFSET, LENGTH, "
               "PRECISION, SCALE, FORMAT) VALUES ('STOCK', %1, '%2', '%3', %4, %5, %6, %7, '%8')"_s.arg(
                   QString::number(number), QLatin1String(name), QLatin1String(type), QString::number(offset),
                   QString::number(length), QString::number(precision), QString::number(scale), QLatin1String(format)));
    };
    add(1, "CODE", "STRING", 0, 10, 10, 0, "");
    add(2, "PRICE", "PACKED", 10, 4, 8, 2, "");
    add(3, "SOLD", "DATE", 14, 12, 11, 0, "DD.MM.YY");
    add(4, "FLAGS", "HEXADECIMAL", 26, 4, 8, 0, "");
    add(5, "PIECES", "INTEGER-4", 30, 4, 10, 0, "");
    for (const char* statement : {
             "UPDATE TW_FILE SET FILE_ORGANISATION = 'INDEXED', RECORD_TYPE = 'FIXED' WHERE FILE_NAME = 'STOCK'",
             "INSERT INTO TW_DB (DATABASE_NAME) VALUES ('OTHER')",
             "INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('SALES', 'ITEMS', 'STOCK')",
             "INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('OTHER', 'ITEMS', 'EMPTY')",
             "INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, LENGTH) "
             "VALUES ('SALES', 'ITEMS', 1, 'ARTICLE', 'CODE', 10)",
             "INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME, LENGTH) "
             "VALUES ('OTHER', 'ITEMS', 1, 'ELSEWHERE', 'CODE', 10)",
         })
        change(QLatin1String(statement));
}

void ItemTest::TearDown()
{
    ItemFixture::TearDown();
    for (const char* pane : {"frmFile", "frmField", "frmFiles", "frmFields"})
        panes::remove(QLatin1String(pane));
}
