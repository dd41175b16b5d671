-- The SQL data types that tables can show, as SQLGetTypeInfo describes types: LENGTH is the octet length of the default
-- transfer form, PRECISION the column size, SEARCHABLE 0 to 3 as SQL_UNSEARCHABLE to SQL_SEARCHABLE. Where ODBC gives a
-- null because a property does not apply, 0 or the empty text stands: clients copy these values into statements.
-- Clients hold lengths in 16 bits with a sign, so none is beyond 32767, that of the long types neither.
-- LOCAL_TYPE_NAME is the storage type that holds such a column most naturally.

INSERT INTO TW_SQLDT
    (SQL_TYPE_NAME, SQL_DATA_TYPE, LENGTH, PRECISION, LITERAL_PREFIX, LITERAL_SUFFIX, CREATE_PARAMS, NULLABLE,
     CASE_SENSITIVE, SEARCHABLE, UNSIGNED_ATTRIBUTE, MONEY, AUTO_INCREMENT, RADIX, LOCAL_TYPE_NAME, REMARKS)
VALUES
    ('CHAR',           1,   254,   254, '''', '''', 'length',          1, 1, 3, 0, 0, 0,  0, 'STRING',         'Character string of a fixed length'),
    ('VARCHAR',       12, 32767, 32767, '''', '''', 'max length',      1, 1, 3, 0, 0, 0,  0, 'STRING',         'Character string up to a length'),
    ('LONGVARCHAR',   -1, 32767, 32767, '''', '''', 'max length',      1, 1, 1, 0, 0, 0,  0, 'STRING',         'Long character string'),
    ('DECIMAL',        3,    33,    31, '',   '',   'precision,scale', 1, 0, 2, 0, 0, 0, 10, 'PACKED',         'Exact decimal number'),
    ('NUMERIC',        2,    33,    31, '',   '',   'precision,scale', 1, 0, 2, 0, 0, 0, 10, 'ZONED',          'Exact decimal number'),
    ('BIT',           -7,     1,     1, '',   '',   '',                1, 0, 2, 1, 0, 0,  0, 'BOOLEAN',        'Yes or no'),
    ('TINYINT',       -6,     1,     3, '',   '',   '',                1, 0, 2, 0, 0, 0, 10, 'INTEGER-1',      'Whole number of 1 byte'),
    ('SMALLINT',       5,     2,     5, '',   '',   '',                1, 0, 2, 0, 0, 0, 10, 'INTEGER-2',      'Whole number of 2 bytes'),
    ('INTEGER',        4,     4,    10, '',   '',   '',                1, 0, 2, 0, 0, 0, 10, 'INTEGER-4',      'Whole number of 4 bytes'),
    ('BIGINT',        -5,     8,    19, '',   '',   '',                1, 0, 2, 0, 0, 0, 10, 'INTEGER-8',      'Whole number of 8 bytes'),
    ('REAL',           7,     4,     7, '',   '',   '',                1, 0, 2, 0, 0, 0, 10, 'FLOAT-4',        'Floating point number of 4 bytes'),
    ('FLOAT',          6,     8,    15, '',   '',   '',                1, 0, 2, 0, 0, 0, 10, 'FLOAT-8',        'Floating point number of 8 bytes'),
    ('DOUBLE',         8,     8,    15, '',   '',   '',                1, 0, 2, 0, 0, 0, 10, 'FLOAT-8',        'Floating point number of 8 bytes'),
    ('DATE',          91,     6,    10, '#',  '#',  '',                1, 0, 2, 0, 0, 0,  0, 'DATE',           'Day'),
    ('TIME',          92,     6,     8, '#',  '#',  '',                1, 0, 2, 0, 0, 0,  0, 'TIME',           'Time of the day'),
    ('TIMESTAMP',     93,    16,    19, '#',  '#',  '',                1, 0, 2, 0, 0, 0,  0, 'TIMESTAMP',      'Day and time of the day'),
    ('BINARY',        -2,   254,   254, '0x', '',   'length',          1, 0, 2, 0, 0, 0,  0, 'BINARY-STRING',  'Bytes of a fixed length'),
    ('VARBINARY',     -3, 32767, 32767, '0x', '',   'max length',      1, 0, 2, 0, 0, 0,  0, 'BINARY-STRING',  'Bytes up to a length'),
    ('LONGVARBINARY', -4, 32767, 32767, '0x', '',   'max length',      1, 0, 0, 0, 0, 0,  0, 'BINARY-STRING',  'Long run of bytes');
