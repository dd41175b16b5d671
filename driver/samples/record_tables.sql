-- Answers with the statements that make the tables of HELD, each with the ordinary columns that clients see. Clients know a
-- table by the names of its database and itself. Dates and times are text in the form that SQLite compares; a number with
-- digits behind the point is a floating point number.

WITH DECLARED AS (
    SELECT DATABASE_NAME, TABLE_NAME, COLUMN_NUMBER,
           '[' || COLUMN_NAME || '] ' ||
           CASE WHEN SQL_TYPE_NAME IN ('CHAR', 'VARCHAR', 'DATE', 'TIME', 'TIMESTAMP') THEN 'VARCHAR(' || PRECISION || ')'
                WHEN SQL_TYPE_NAME = 'BINARY' THEN 'BLOB'
                WHEN SQL_TYPE_NAME IN ('REAL', 'FLOAT', 'DOUBLE') OR SCALE > 0 THEN 'DOUBLE'
                WHEN SQL_TYPE_NAME IN ('BIT', 'TINYINT', 'SMALLINT') THEN 'SMALLINT'
                WHEN SQL_TYPE_NAME = 'INTEGER' THEN 'INTEGER'
                ELSE 'BIGINT' END ||
           CASE NULLABLE WHEN 0 THEN ' NOT NULL' ELSE '' END AS DECLARATION
      FROM TW_COLUMN
     WHERE COLUMN_TYPE = 0 AND VISIBLE = 1)
SELECT DISTINCT
       'CREATE TABLE [' || DATABASE_NAME || '_' || TABLE_NAME || '] (' ||
       group_concat(DECLARATION, ', ') OVER (PARTITION BY DATABASE_NAME, TABLE_NAME ORDER BY COLUMN_NUMBER
                                             ROWS BETWEEN UNBOUNDED PRECEDING AND UNBOUNDED FOLLOWING) || ')'
  FROM DECLARED
 WHERE (DATABASE_NAME, TABLE_NAME) IN (SELECT DATABASE_NAME, TABLE_NAME FROM HELD);
