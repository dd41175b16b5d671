-- Answers with the statements that make a temporary table for the rows of each file, with a column for each field. A row's
-- number is its record's. Dates and times are text as clients see them, and so are hexadecimal digits; bytes are BLOBs,
-- and so are those of an encrypted field.

WITH DECLARED AS (
    SELECT f.FILE_NAME, f.FIELD_NUMBER,
           '[' || replace(f.FIELD_NAME, '-', '_') || '] ' ||
           CASE WHEN f.ENCRYPTED <> 0 OR l.SQL_TYPE_NAME = 'BINARY' THEN 'BLOB'
                WHEN l.SQL_TYPE_NAME IN ('CHAR', 'VARCHAR', 'DATE', 'TIME', 'TIMESTAMP') THEN 'TEXT'
                ELSE 'NUMERIC' END AS DECLARATION
      FROM TW_FIELD f
      JOIN TW_LOCDT l ON l.LOCAL_TYPE_NAME = f.LOCAL_TYPE_NAME
     WHERE f.FILE_NAME IN (SELECT FILE_NAME FROM LAYOUT))
SELECT DISTINCT
       'CREATE TEMP TABLE [' || replace(FILE_NAME, '-', '_') || '] (' ||
       group_concat(DECLARATION, ', ') OVER (PARTITION BY FILE_NAME ORDER BY FIELD_NUMBER
                                             ROWS BETWEEN UNBOUNDED PRECEDING AND UNBOUNDED FOLLOWING) || ')'
  FROM DECLARED;
