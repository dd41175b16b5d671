SELECT NULL AS TABLE_CAT,
       NULL AS TABLE_SCHEM,
       t.name AS TABLE_NAME,
       c.name AS COLUMN_NAME,
       c.code AS DATA_TYPE,
       CASE c.base WHEN 'DECIMAL_TEXT' THEN 'DECIMAL' ELSE c.base END AS TYPE_NAME,
       c.size AS COLUMN_SIZE,
       c.bytes AS BUFFER_LENGTH,
       CASE WHEN c.radix IS NOT NULL THEN c.scale WHEN c.code = 93 THEN 2
            WHEN c.code IN (91, 92) THEN 0 END AS DECIMAL_DIGITS,
       c.radix AS NUM_PREC_RADIX,
       1 - c.required AS NULLABLE,
       coalesce((SELECT n.remarks FROM NOTE n WHERE n.owner = t.name AND n.name = c.name), '') AS REMARKS,
       c.initial AS COLUMN_DEF,
       CASE WHEN c.code BETWEEN 91 AND 93 THEN 9 ELSE c.code END AS SQL_DATA_TYPE,
       CASE WHEN c.code BETWEEN 91 AND 93 THEN c.code - 90 END AS SQL_DATETIME_SUB,
       CASE WHEN c.code IN (12, -1, -2, -3, -4) THEN c.bytes END AS CHAR_OCTET_LENGTH,
       c.cid + 1 AS ORDINAL_POSITION,
       CASE c.required WHEN 0 THEN 'YES' ELSE 'NO' END AS IS_NULLABLE
  FROM THING t
  JOIN (WITH DECLARED AS (
            SELECT m.name AS owner, i.cid, i.name, i."notnull" AS required, i.dflt_value AS initial, i.type,
                   upper(CASE instr(i.type, '(') WHEN 0 THEN i.type
                                                 ELSE trim(substr(i.type, 1, instr(i.type, '(') - 1)) END) AS base,
                   CAST(substr(i.type, instr(i.type, '(') + 1) AS INTEGER) AS declared
              FROM THING m JOIN pragma_table_info(m.name) i)
        SELECT owner, cid, name, required, initial, base,
               CASE base WHEN 'SMALLINT' THEN 5 WHEN 'INTEGER' THEN 4 WHEN 'BIGINT' THEN -5
                         WHEN 'BIT' THEN -7 WHEN 'TINYINT' THEN -6 WHEN 'DECIMAL_TEXT' THEN 3
                         WHEN 'DATE' THEN 91 WHEN 'TIME' THEN 92 WHEN 'TIMESTAMP' THEN 93
                         WHEN 'DOUBLE' THEN 8 WHEN 'BLOB' THEN -2 WHEN 'TEXT' THEN -1 ELSE 12 END AS code,
               CASE base WHEN 'SMALLINT' THEN 5 WHEN 'INTEGER' THEN 10 WHEN 'BIGINT' THEN 19
                         WHEN 'BIT' THEN 1 WHEN 'TINYINT' THEN 3 WHEN 'DECIMAL_TEXT' THEN declared
                         WHEN 'DATE' THEN 10 WHEN 'TIME' THEN 8 WHEN 'TIMESTAMP' THEN 22
                         WHEN 'DOUBLE' THEN 15 WHEN 'TEXT' THEN 65536
                         ELSE CASE declared WHEN 0 THEN 255 ELSE declared END END AS size,
               CASE base WHEN 'SMALLINT' THEN 2 WHEN 'INTEGER' THEN 4 WHEN 'BIGINT' THEN 8
                         WHEN 'BIT' THEN 1 WHEN 'TINYINT' THEN 1 WHEN 'DECIMAL_TEXT' THEN declared + 2
                         WHEN 'DATE' THEN 6 WHEN 'TIME' THEN 6 WHEN 'TIMESTAMP' THEN 16
                         WHEN 'DOUBLE' THEN 8 WHEN 'TEXT' THEN 65536
                         ELSE CASE base WHEN 'BLOB' THEN 1 ELSE 4 END *
                              CASE declared WHEN 0 THEN 255 ELSE declared END END AS bytes,
               CASE WHEN base IN ('TINYINT', 'SMALLINT', 'INTEGER', 'BIGINT', 'DOUBLE', 'DECIMAL_TEXT')
                    THEN 10 END AS radix,
               CASE instr(type, ',') WHEN 0 THEN 0
                                     ELSE CAST(trim(substr(type, instr(type, ',') + 1)) AS INTEGER) END AS scale
          FROM DECLARED) c ON c.owner = t.name
 WHERE 1
