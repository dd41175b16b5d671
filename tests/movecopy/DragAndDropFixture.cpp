#include "DragAndDropFixture.h"

using namespace Qt::StringLiterals;

void DragAndDrop::furnish() const
{
    for (const QString& statement : {
             u"INSERT INTO TW_DB (DATABASE_NAME) VALUES ('DEPOT')"_s,
             u"INSERT INTO TW_FILE (FILE_NAME) VALUES ('LEDGER')"_s,
             u"INSERT INTO TW_FIELD (FILE_NAME, FIELD_NAME) VALUES ('LEDGER', 'TOTAL')"_s,
             u"INSERT INTO TW_TABLE (DATABASE_NAME, TABLE_NAME, FILE_NAME) VALUES ('DEPOT', 'PARTS', 'PAYROLL')"_s,
             u"INSERT INTO TW_COLUMN (DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER, COLUMN_NAME, FIELD_NAME) "
             "VALUES ('DEPOT', 'PARTS', 77, 'WEIGHT', 'SALARY')"_s,
             u"INSERT INTO TW_USER (USER_NAME) VALUES ('GUARD')"_s,
             u"INSERT INTO TW_DBPRV (USER_NAME, DATABASE_NAME) VALUES ('GUARD', 'DEPOT')"_s,
             u"INSERT INTO TW_TBLPRV (DATABASE_NAME, TABLE_NAME, USER_NAME) VALUES ('DEPOT', 'PARTS', 'GUARD')"_s,
         })
        changeOther(statement);
}
