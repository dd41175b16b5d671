#pragma once

#include "InterchangeFixture.h"

/// A user in front of the pane that exports a catalog.
class CSVExportTest : public InterchangeTest
{
protected:
    void openPane() { open(QStringLiteral("frmCSVExport")); }

    /// Everything but what is never exported.
    void emptyCatalog() const
    {
        for (const char* statement :
             {"DELETE FROM TW_FILE WHERE FILE_NAME IN ('PAYROLL', 'EMPTY')",
              "DELETE FROM TW_FIELD WHERE FILE_NAME = 'PAYROLL'", "DELETE FROM TW_DB WHERE DATABASE_NAME <> 'TW'",
              "DELETE FROM TW_TABLE WHERE DATABASE_NAME <> 'TW'", "DELETE FROM TW_COLUMN WHERE DATABASE_NAME <> 'TW'",
              "DELETE FROM TW_USER WHERE USER_NAME <> 'ADMIN'", "DELETE FROM TW_DBPRV WHERE DATABASE_NAME <> 'TW'",
              "DELETE FROM TW_TBLPRV WHERE DATABASE_NAME <> 'TW'"})
            change(QLatin1String(statement));
    }

    /// The program is ready again by the time that it says so.
    void expectDone()
    {
        boxes.expect(QStringLiteral("Catalog Exported"), boxes::Icon::Information,
                     [this] { EXPECT_EQ(statusText(), QStringLiteral("Ready")); });
    }

    /// What the catalog of the tests is written as.
    const QByteArray wholeFile = "\"FILE\",\"PAYROLL\",\"INDEXED\",\"FIXED\",12\r\n"
                                 "\"FILE\",\"EMPTY\",\"RELATIVE\",\"FIXED\",0\r\n"
                                 "\"FIELD\",\"PAYROLL\",\"EMPLOYEE\",\"CHARACTER\",0,4,0,0,0,\"\",\"\"\r\n"
                                 "\"FIELD\",\"PAYROLL\",\"SALARY\",\"CHARACTER\",8,4,0,0,0,\"\",\"\"\r\n"
                                 "\"FIELD\",\"PAYROLL\",\"BONUS\",\"CHARACTER\",4,4,0,0,0,\"\",\"\"\r\n"
                                 "\"DB\",\"SALES\",\"\",\"DISAM\",\"\",\"\"\r\n"
                                 "\"TABLE\",\"SALES\",\"ORDERS\",\"TABLE\",\"PAYROLL\",\"\",\"\",\"\"\r\n"
                                 "\"COLUMN\",\"SALES\",\"ORDERS\",\"AMOUNT\",\"SALARY\",\"\",0,0,0,\"\",\"\",0\r\n"
                                 "\"COLUMN\",\"SALES\",\"ORDERS\",\"BUYER\",\"EMPLOYEE\",\"\",0,0,0,\"\",\"\",0\r\n"
                                 "\"COLUMN\",\"SALES\",\"ORDERS\",\"RFA\",\"RFA\",\"\",0,0,0,\"\",\"\",1\r\n"
                                 "\"USER\",\"CLERK\",\"\"\r\n"
                                 "\"DBPRV\",\"CLERK\",\"SALES\",\"\",\"\",0,0,0,0,\"\"\r\n"
                                 "\"TBLPRV\",\"CLERK\",\"SALES\",\"ORDERS\",0,0,0,0\r\n";
};
