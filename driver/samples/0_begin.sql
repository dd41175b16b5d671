-- Working tables of a sample catalog. The scripts of a sample fill them; 9_finish.sql turns them into catalog rows.

-- Record layouts. AT is a field's offset where it does not simply follow the one before: in a second kind of record of
-- the same file. Such fields stand behind all others of their file.
CREATE TEMP TABLE LAYOUT (
    FILE_NAME TEXT, FIELD_NUMBER INTEGER, FIELD_NAME TEXT, LOCAL_TYPE_NAME TEXT, LENGTH INTEGER, PRECISION INTEGER,
    SCALE INTEGER DEFAULT 0, AT INTEGER, FORMAT TEXT DEFAULT '', DEFAULT_VALUE TEXT DEFAULT '',
    ENCRYPTED INTEGER DEFAULT 0, REMARKS TEXT DEFAULT '');

-- Tables, each with a column for every field of its file.
CREATE TEMP TABLE MAPPED (
    DATABASE_NAME TEXT, TABLE_NAME TEXT, FILE_NAME TEXT, FILE_SPECIFICATION TEXT, DISPLAY_NAME TEXT DEFAULT '',
    CRITERIA TEXT DEFAULT '', REMARKS TEXT DEFAULT '');

-- Special columns by their code; REMARKS names the column that a relative index works on.
CREATE TEMP TABLE SPECIAL (DATABASE_NAME TEXT, TABLE_NAME TEXT, COLUMN_TYPE INTEGER, REMARKS TEXT DEFAULT '');

-- Users' rights, one letter for each: S, I, U, D.
CREATE TEMP TABLE TABLE_RIGHT (USER_NAME TEXT, DATABASE_NAME TEXT, TABLE_NAME TEXT, RIGHTS TEXT);
CREATE TEMP TABLE DATABASE_RIGHT (
    USER_NAME TEXT, DATABASE_NAME TEXT, RIGHTS TEXT, SECURITY_LEVEL TEXT, DATABASE_USERNAME TEXT DEFAULT '',
    DATABASE_PASSWORD TEXT DEFAULT '', REMARKS TEXT DEFAULT '');
