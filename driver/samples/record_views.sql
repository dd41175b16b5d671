-- Answers with the statements that make the tables over the file of a table of HELD: they show those of its records that
-- meet their criteria.

SELECT 'CREATE VIEW [' || t.DATABASE_NAME || '_' || t.TABLE_NAME || '] AS SELECT * FROM [' || h.DATABASE_NAME || '_' ||
       h.TABLE_NAME || '] AS [' || t.DATABASE_NAME || '_' || t.TABLE_NAME || '] WHERE ' || t.CRITERIA
  FROM HELD h
  JOIN TW_TABLE o ON o.DATABASE_NAME = h.DATABASE_NAME AND o.TABLE_NAME = h.TABLE_NAME
  JOIN TW_TABLE t ON t.DATABASE_NAME = o.DATABASE_NAME AND t.FILE_NAME = o.FILE_NAME AND t.TABLE_NAME <> o.TABLE_NAME
 WHERE t.CRITERIA <> '';
