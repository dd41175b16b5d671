SELECT NULL AS TABLE_CAT,
       NULL AS TABLE_SCHEM,
       t.name AS TABLE_NAME,
       c.name AS COLUMN_NAME,
       c.code AS DATA_TYPE,
       c.base AS TYPE_NAME,
       c.size AS COLUMN_SIZE,
       c.bytes AS BUFFER_LENGTH,
       CASE WHEN c.radix IS NULL THEN NULL ELSE 0 END AS DECIMAL_DIGITS,
       c.radix AS NUM_PREC_RADIX,
       1 - c.required AS NULLABLE,
       '' AS REMARKS,
       c.initial AS COLUMN_DEF,
       c.code AS SQL_DATA_TYPE,
       NULL AS SQL_DATETIME_SUB,
       CASE WHEN c.code IN (12, -1) THEN c.bytes END AS CHAR_OCTET_LENGTH,
       c.cid + 1 AS ORDINAL_POSITION,
       CASE c.required WHEN 0 THEN 'YES' ELSE 'NO' END AS IS_NULLABLE
  FROM sqlite_master t
  JOIN (WITH DECLARED AS (
            SELECT m.name AS owner, i.cid, i.name, i."notnull" AS required, i.dflt_value AS initial,
                   upper(CASE instr(i.type, '(') WHEN 0 THEN i.type
                                                 ELSE trim(substr(i.type, 1, instr(i.type, '(') - 1)) END) AS base,
                   CAST(substr(i.type, instr(i.type, '(') + 1) AS INTEGER) AS declared
              FROM sqlite_master m JOIN pragma_table_info(m.name) i)
        SELECT owner, cid, name, required, initial, base,
               CASE base WHEN 'SMALLINT' THEN 5 WHEN 'INTEGER' THEN 4 WHEN 'BIGINT' THEN -5
                         WHEN 'DOUBLE' THEN 8 WHEN 'BLOB' THEN -2 WHEN 'TEXT' THEN -1 ELSE 12 END AS code,
               CASE base WHEN 'SMALLINT' THEN 5 WHEN 'INTEGER' THEN 10 WHEN 'BIGINT' THEN 19
                         WHEN 'DOUBLE' THEN 15 WHEN 'BLOB' THEN 255 WHEN 'TEXT' THEN 65536
                         ELSE CASE declared WHEN 0 THEN 255 ELSE declared END END AS size,
               CASE base WHEN 'SMALLINT' THEN 2 WHEN 'INTEGER' THEN 4 WHEN 'BIGINT' THEN 8
                         WHEN 'DOUBLE' THEN 8 WHEN 'BLOB' THEN 255 WHEN 'TEXT' THEN 65536
                         ELSE 4 * CASE declared WHEN 0 THEN 255 ELSE declared END END AS bytes,
               CASE WHEN base IN ('SMALLINT', 'INTEGER', 'BIGINT', 'DOUBLE') THEN 10 END AS radix
          FROM DECLARED) c ON c.owner = t.name
 WHERE t.type IN ('table', 'view')
   AND t.name NOT LIKE 'sqlite\_%' ESCAPE '\'
