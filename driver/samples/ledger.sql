-- A bank: accounts and their postings in record-managed files, its payroll in indexed sequential files.

INSERT INTO TW_DB (DATABASE_NAME, DEFAULT_DIRECTORY, DRIVER_NAME, CONNECT_STRING, REMARKS, DISPLAY_NAME) VALUES
    ('BANK',    'LEDGER_DATA:',      'VAX-RMS', '', 'Customers, accounts and postings', 'Bank'),
    ('PAYROLL', 'data/payroll', 'DISAM',   '', 'Employees and what they are paid', 'Payroll');

INSERT INTO TW_FILE (FILE_NAME, OPEN_STRING, FILE_ORGANISATION, RECORD_TYPE, REMARKS) VALUES
    ('ACCOUNT',        '',        'INDEXED',    'FIXED',    'One record for each account'),
    ('BRANCH',         '',        'RELATIVE',   'FIXED',    'Branches by their number'),
    ('CHEQUE-BOOK',    '',        'INDEXED',    'FIXED',    'Cheque books handed out'),
    ('CUSTOMER',       '',        'INDEXED',    'FIXED',    'Who owns the accounts'),
    ('JOURNAL',        'SHR=GET COUNTED-2', 'SEQUENTIAL', 'VARIABLE', 'Day''s journal: header, entry and trailer records in one file'),
    ('POSTING',        '',        'INDEXED',    'FIXED',    'Every movement on an account'),
    ('RATE',           '',        'INDEXED',    'FIXED',    'Exchange and interest rates by day'),
    ('STANDING-ORDER', '',        'INDEXED',    'FIXED',    'Payments that repeat'),
    ('EMPLOYEE',       '',        'INDEXED',    'FIXED',    'Staff'),
    ('PAY-RUN',        '',        'INDEXED',    'FIXED',    'Months that have been paid'),
    ('PAYSLIP',        '',        'INDEXED',    'FIXED',    'What an employee got in a month'),
    ('TAX-CODE',       '',        'SEQUENTIAL', 'FIXED',    'Tax codes and their allowances'),
    ('TIMESHEET',      '',        'INDEXED',    'FIXED',    'Hours by day');

INSERT INTO LAYOUT (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, LENGTH, PRECISION, SCALE, FORMAT, REMARKS) VALUES
    ('ACCOUNT',         1, 'ACCOUNT-NO',     'ZONED-U',       10, 10, 0, '', 'Primary key'),
    ('ACCOUNT',         2, 'CUSTOMER-NO',    'PACKED-U',       5, 10, 0, '', 'Owner'),
    ('ACCOUNT',         3, 'BRANCH-NO',      'UNSIGNED-2',     2,  5, 0, '', ''),
    ('ACCOUNT',         4, 'CURRENCY',       'STRING',         3,  3, 0, '', 'ISO 4217 code'),
    ('ACCOUNT',         5, 'BALANCE',        'PACKED',         8, 16, 2, '', 'Booked balance'),
    ('ACCOUNT',         6, 'CREDIT-LIMIT',   'PACKED',         6, 12, 2, '', ''),
    ('ACCOUNT',         7, 'INTEREST-RATE',  'INTEGER-4',      4, 10, 4, '', 'Per cent a year'),
    ('ACCOUNT',         8, 'OPENED',         'DATE',          10, 10, 0, 'YYYY-MM-DD', ''),
    ('ACCOUNT',         9, 'CLOSED',         'DATE',          10, 10, 0, 'YYYY-MM-DD', 'Blank while open'),
    ('ACCOUNT',        10, 'BLOCKED',        'BOOLEAN',        1,  1, 0, '', ''),

    ('BRANCH',          1, 'BRANCH-NO',      'UNSIGNED-2',     2,  5, 0, '', 'Also the record''s number'),
    ('BRANCH',          2, 'NAME',           'STRING',        30, 30, 0, '', ''),
    ('BRANCH',          3, 'TOWN',           'STRING',        24, 24, 0, '', ''),
    ('BRANCH',          4, 'OPENS',          'TIME',           5,  5, 0, 'hh:mm', ''),
    ('BRANCH',          5, 'CLOSES',         'TIME',           5,  5, 0, 'hh:mm', ''),

    ('CHEQUE-BOOK',     1, 'ACCOUNT-NO',     'ZONED-U',       10, 10, 0, '', ''),
    ('CHEQUE-BOOK',     2, 'FIRST-NO',       'UNSIGNED-4',     4, 10, 0, '', ''),
    ('CHEQUE-BOOK',     3, 'LAST-NO',        'UNSIGNED-4',     4, 10, 0, '', ''),
    ('CHEQUE-BOOK',     4, 'ISSUED',         'DATE-YYYYMMDD',  8,  8, 0, 'YYYYMMDD', ''),
    ('CHEQUE-BOOK',     5, 'SEAL',           'HEXADECIMAL',    4,  8, 0, '', 'Check sum printed on each cheque'),
    ('CHEQUE-BOOK',     6, 'CODE-WORD',      'STRING',         8,  8, 0, '', 'For orders by telephone'),

    ('CUSTOMER',        1, 'CUSTOMER-NO',    'PACKED-U',       5, 10, 0, '', 'Primary key'),
    ('CUSTOMER',        2, 'SURNAME',        'STRING',        30, 30, 0, '', 'First alternate key'),
    ('CUSTOMER',        3, 'FIRST-NAME',     'STRING',        20, 20, 0, '', ''),
    ('CUSTOMER',        4, 'STREET',         'STRING',        30, 30, 0, '', ''),
    ('CUSTOMER',        5, 'TOWN',           'STRING',        24, 24, 0, '', ''),
    ('CUSTOMER',        6, 'POSTCODE',       'STRING',         8,  8, 0, '', ''),
    ('CUSTOMER',        7, 'BORN',           'DATE-YYYYMMDD',  8,  8, 0, 'YYYYMMDD', ''),
    ('CUSTOMER',        8, 'SIGNATURE',      'HEXADECIMAL',   16, 32, 0, '', 'Check sum of the specimen signature'),
    ('CUSTOMER',        9, 'REMARK',         'STRING-COUNTED',62, 62, 0, '', ''),

    ('POSTING',         1, 'ACCOUNT-NO',     'ZONED-U',       10, 10, 0, '', 'Primary key with POSTING-NO'),
    ('POSTING',         2, 'POSTING-NO',     'UNSIGNED-4',     4, 10, 0, '', ''),
    ('POSTING',         3, 'BOOKED',         'TIMESTAMP-8',    8, 19, 0, '', ''),
    ('POSTING',         4, 'VALUE-DATE',     'DATE',          10, 10, 0, 'DD.MM.YYYY', ''),
    ('POSTING',         5, 'AMOUNT',         'PACKED',         8, 16, 2, '', 'Negative for a debit'),
    ('POSTING',         6, 'KIND',           'STRING',         2,  2, 0, '', ''),
    ('POSTING',         7, 'TEXT',           'STRING',        40, 40, 0, '', ''),
    ('POSTING',         8, 'TELLER',         'ZONED',          5,  5, 0, '', 'Employee who booked it'),

    ('RATE',            1, 'CURRENCY',       'STRING',         3,  3, 0, '', ''),
    ('RATE',            2, 'RATE-DATE',      'DATE-YYYYMMDD',  8,  8, 0, 'YYYYMMDD', ''),
    ('RATE',            3, 'BUYING',         'D-FLOAT',        8, 16, 0, '', ''),
    ('RATE',            4, 'SELLING',        'D-FLOAT',        8, 16, 0, '', ''),
    ('RATE',            5, 'INTEREST',       'F-FLOAT',        4,  7, 0, '', ''),

    ('STANDING-ORDER',  1, 'ORDER-NO',       'INTEGER-4',      4, 10, 0, '', 'Primary key'),
    ('STANDING-ORDER',  2, 'FROM-ACCOUNT',   'ZONED-U',       10, 10, 0, '', ''),
    ('STANDING-ORDER',  3, 'TO-ACCOUNT',     'ZONED-U',       10, 10, 0, '', ''),
    ('STANDING-ORDER',  4, 'AMOUNT',         'PACKED',         6, 12, 2, '', ''),
    ('STANDING-ORDER',  5, 'DAY-OF-MONTH',   'INTEGER-1',      1,  3, 0, '', ''),
    ('STANDING-ORDER',  6, 'FIRST-DATE',     'DATE',          10, 10, 0, 'YYYY-MM-DD', ''),
    ('STANDING-ORDER',  7, 'LAST-DATE',      'DATE',          10, 10, 0, 'YYYY-MM-DD', ''),
    ('STANDING-ORDER',  8, 'TEXT',           'STRING',        40, 40, 0, '', ''),

    ('EMPLOYEE',        1, 'EMPLOYEE-NO',    'ZONED',          5,  5, 0, '', 'Primary key'),
    ('EMPLOYEE',        2, 'SURNAME',        'STRING',        30, 30, 0, '', ''),
    ('EMPLOYEE',        3, 'FIRST-NAME',     'STRING',        20, 20, 0, '', ''),
    ('EMPLOYEE',        4, 'BORN',           'DATE-YYMMDD',    6,  6, 0, 'YYMMDD', ''),
    ('EMPLOYEE',        5, 'ENTERED',        'DATE',          10, 10, 0, 'YYYY-MM-DD', ''),
    ('EMPLOYEE',        6, 'GRADE',          'STRING',         3,  3, 0, '', ''),
    ('EMPLOYEE',        7, 'SALARY',         'PACKED',         5, 10, 2, '', 'A month'),
    ('EMPLOYEE',        8, 'TAX-CODE',       'STRING',         4,  4, 0, '', ''),
    ('EMPLOYEE',        9, 'HOLIDAYS-LEFT',  'ZONED-RO',       3,  3, 1, '', 'Days'),

    ('PAY-RUN',         1, 'PERIOD',         'ZONED-U',        6,  6, 0, '', 'Year and month'),
    ('PAY-RUN',         2, 'PAID',           'TIMESTAMP',     19, 19, 0, 'YYYY-MM-DD hh:mm:ss', ''),
    ('PAY-RUN',         3, 'EMPLOYEES',      'INTEGER-2-BE',   2,  5, 0, '', ''),
    ('PAY-RUN',         4, 'TOTAL',          'PACKED',         8, 16, 2, '', ''),

    ('PAYSLIP',         1, 'PERIOD',         'ZONED-U',        6,  6, 0, '', 'Primary key with EMPLOYEE-NO'),
    ('PAYSLIP',         2, 'EMPLOYEE-NO',    'ZONED',          5,  5, 0, '', ''),
    ('PAYSLIP',         3, 'GROSS',          'PACKED',         5, 10, 2, '', ''),
    ('PAYSLIP',         4, 'TAX',            'PACKED',         5, 10, 2, '', ''),
    ('PAYSLIP',         5, 'INSURANCE',      'PACKED',         5, 10, 2, '', ''),
    ('PAYSLIP',         6, 'NET',            'PACKED',         5, 10, 2, '', ''),
    ('PAYSLIP',         7, 'ACCOUNT-NO',     'ZONED-U',       10, 10, 0, '', 'Where it was paid to'),

    ('TAX-CODE',        1, 'TAX-CODE',       'STRING',         4,  4, 0, '', ''),
    ('TAX-CODE',        2, 'ALLOWANCE',      'NUMERIC',        9,  9, 2, '', ''),
    ('TAX-CODE',        3, 'RATE',           'NUMERIC',        5,  5, 2, '', 'Per cent'),
    ('TAX-CODE',        4, 'DESCRIPTION',    'STRING',        40, 40, 0, '', ''),

    ('TIMESHEET',       1, 'EMPLOYEE-NO',    'ZONED',          5,  5, 0, '', 'Primary key with DAY'),
    ('TIMESHEET',       2, 'DAY',            'DATE-YYYYMMDD',  8,  8, 0, 'YYYYMMDD', ''),
    ('TIMESHEET',       3, 'CAME',           'TIME-HHMMSS',    6,  6, 0, 'hhmmss', ''),
    ('TIMESHEET',       4, 'WENT',           'TIME-HHMMSS',    6,  6, 0, 'hhmmss', ''),
    ('TIMESHEET',       5, 'HOURS',          'ZONED-S',        5,  5, 2, '', '');

-- The journal holds three kinds of record, told apart by their first byte.
INSERT INTO LAYOUT (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, LENGTH, PRECISION, SCALE, AT, FORMAT, REMARKS) VALUES
    ('JOURNAL',         1, 'RECORD-KIND',    'STRING',         1,  1, 0, NULL, '', 'H, E or T'),
    ('JOURNAL',         2, 'ENTRY-ACCOUNT',  'ZONED-U',       10, 10, 0, NULL, '', 'Entry'),
    ('JOURNAL',         3, 'ENTRY-AMOUNT',   'PACKED',         8, 16, 2, NULL, '', 'Entry'),
    ('JOURNAL',         4, 'ENTRY-TEXT',     'STRING',        40, 40, 0, NULL, '', 'Entry'),
    ('JOURNAL',         5, 'HEADER-DATE',    'DATE-YYYYMMDD',  8,  8, 0,    1, 'YYYYMMDD', 'Header'),
    ('JOURNAL',         6, 'HEADER-BRANCH',  'UNSIGNED-2',     2,  5, 0,    9, '', 'Header'),
    ('JOURNAL',         7, 'TRAILER-COUNT',  'UNSIGNED-4',     4, 10, 0,    1, '', 'Trailer'),
    ('JOURNAL',         8, 'TRAILER-TOTAL',  'PACKED',         8, 16, 2,    5, '', 'Trailer');

UPDATE LAYOUT SET DEFAULT_VALUE = 'EUR' WHERE FILE_NAME = 'ACCOUNT' AND FIELD_NAME = 'CURRENCY';
UPDATE LAYOUT SET DEFAULT_VALUE = '0' WHERE FILE_NAME = 'ACCOUNT' AND FIELD_NAME IN ('BALANCE', 'CREDIT-LIMIT');
UPDATE LAYOUT SET ENCRYPTED = 1 WHERE FILE_NAME = 'CHEQUE-BOOK' AND FIELD_NAME = 'CODE-WORD';
UPDATE LAYOUT SET ENCRYPTED = 2 WHERE FILE_NAME = 'CUSTOMER' AND FIELD_NAME = 'SIGNATURE';
UPDATE LAYOUT SET REMARKS = 'CR, DR, IN for interest, FE for a fee' WHERE FILE_NAME = 'POSTING' AND FIELD_NAME = 'KIND';

INSERT INTO MAPPED (DATABASE_NAME, TABLE_NAME, FILE_NAME, FILE_SPECIFICATION, DISPLAY_NAME, CRITERIA, REMARKS) VALUES
    ('BANK',    'ACCOUNT',        'ACCOUNT',        'ACCOUNT.DAT',  'Account', '', 'All accounts'),
    ('BANK',    'OVERDRAWN',      'ACCOUNT',        'ACCOUNT.DAT',  'Overdrawn', 'BANK_OVERDRAWN.BALANCE < 0 ', 'Accounts in debt, over the same file'),
    ('BANK',    'BRANCH',         'BRANCH',         'BRANCH.DAT',   'Branch', '', ''),
    ('BANK',    'CHEQUE_BOOK',    'CHEQUE-BOOK',    'CHEQUE.DAT',   '', '', ''),
    ('BANK',    'CUSTOMER',       'CUSTOMER',       'CUSTOMER.DAT', 'Customer', '', ''),
    ('BANK',    'JOURNAL',        'JOURNAL',        'JOURNAL.SEQ',  'Journal', 'BANK_JOURNAL.RECORD_KIND = ''E'' ', 'Entries of the day''s journal'),
    ('BANK',    'JOURNAL_DAY',    'JOURNAL',        'JOURNAL.SEQ',  '', 'BANK_JOURNAL_DAY.RECORD_KIND = ''H'' ', 'Its headers'),
    ('BANK',    'JOURNAL_SUM',    'JOURNAL',        'JOURNAL.SEQ',  '', 'BANK_JOURNAL_SUM.RECORD_KIND = ''T'' ', 'Its trailers'),
    ('BANK',    'POSTING',        'POSTING',        'POSTING.DAT',  'Posting', '', ''),
    ('BANK',    'RATE',           'RATE',           'RATE.DAT',     'Rate', '', ''),
    ('BANK',    'STANDING_ORDER', 'STANDING-ORDER', 'STORDER.DAT',  '', '', ''),
    ('PAYROLL', 'EMPLOYEE',       'EMPLOYEE',       'employee',     'Employee', '', ''),
    ('PAYROLL', 'PAY_RUN',        'PAY-RUN',        'payrun',       'Pay_Run', '', ''),
    ('PAYROLL', 'PAYSLIP',        'PAYSLIP',        'payslip',      'PaySlip', '', ''),
    ('PAYROLL', 'TAX_CODE',       'TAX-CODE',       'taxcode',      '', '', ''),
    ('PAYROLL', 'TIMESHEET',      'TIMESHEET',      'timesheet',    'TimeSheet', '', '');

-- In one kind of record the fields of the others hold nothing.
INSERT INTO LEFT_OUT (DATABASE_NAME, TABLE_NAME, FIELD_NAME)
SELECT m.DATABASE_NAME, m.TABLE_NAME, f.FIELD_NAME
  FROM MAPPED m
  JOIN LAYOUT f ON f.FILE_NAME = m.FILE_NAME
  JOIN (SELECT 'JOURNAL' AS TABLE_NAME, 'ENTRY%' AS OWN UNION ALL SELECT 'JOURNAL_DAY', 'HEADER%'
        UNION ALL SELECT 'JOURNAL_SUM', 'TRAILER%') k ON k.TABLE_NAME = m.TABLE_NAME
 WHERE f.FIELD_NAME <> 'RECORD-KIND' AND f.FIELD_NAME NOT LIKE k.OWN;
-- Only the bank's own programs have the key of signatures.
INSERT INTO LEFT_OUT (DATABASE_NAME, TABLE_NAME, FIELD_NAME) VALUES ('BANK', 'CUSTOMER', 'SIGNATURE');

INSERT INTO SPECIAL (DATABASE_NAME, TABLE_NAME, COLUMN_TYPE, REMARKS) VALUES
    ('BANK',    'ACCOUNT',  1, ''), ('BANK', 'ACCOUNT', 2, ''), ('BANK', 'ACCOUNT', 3, ''), ('BANK', 'ACCOUNT', 4, ''),
    ('BANK',    'ACCOUNT',  5, ''),
    ('BANK',    'BRANCH',   7, ''),
    ('BANK',    'POSTING',  1, ''), ('BANK', 'POSTING', 8, 'POSTING_NO'),
    ('PAYROLL', 'EMPLOYEE', 2, ''), ('PAYROLL', 'EMPLOYEE', 6, ''),
    ('PAYROLL', 'PAYSLIP',  6, '');

INSERT INTO TW_USER (USER_NAME, USER_PASSWORD, REMARKS) VALUES
    ('TELLER',    'counter', 'At the counter'),
    ('AUDITOR',   'ledger',  'Reads everything, changes nothing'),
    ('PAYMASTER', 'friday',  'Runs the payroll'),
    ('GUEST',     '',        'No rights yet');

INSERT INTO DATABASE_RIGHT (USER_NAME, DATABASE_NAME, RIGHTS, SECURITY_LEVEL, DATABASE_USERNAME, DATABASE_PASSWORD, REMARKS) VALUES
    ('ADMIN',     'BANK',    'SIUD', 'DATABASE', '',       '',        ''),
    ('ADMIN',     'PAYROLL', 'SIUD', 'DATABASE', '',       '',        ''),
    ('TELLER',    'BANK',    'SIU',  'TABLE',    'TELLER', 'counter', 'Table by table'),
    ('AUDITOR',   'BANK',    'S',    'DATABASE', '',       '',        ''),
    ('AUDITOR',   'PAYROLL', 'S',    'DATABASE', '',       '',        ''),
    ('PAYMASTER', 'PAYROLL', 'SIU',  'TABLE',    'PAY',    'friday',  '');

INSERT INTO TABLE_RIGHT (USER_NAME, DATABASE_NAME, TABLE_NAME, RIGHTS) VALUES
    ('TELLER',    'BANK',    'ACCOUNT',     'SU'),
    ('TELLER',    'BANK',    'CUSTOMER',    'SIU'),
    ('TELLER',    'BANK',    'POSTING',     'SI'),
    ('TELLER',    'BANK',    'RATE',        'S'),
    ('TELLER',    'BANK',    'CHEQUE_BOOK', 'SI'),
    ('PAYMASTER', 'PAYROLL', 'EMPLOYEE',    'SU'),
    ('PAYMASTER', 'PAYROLL', 'PAY_RUN',     'SI'),
    ('PAYMASTER', 'PAYROLL', 'PAYSLIP',     'SIUD'),
    ('PAYMASTER', 'PAYROLL', 'TIMESHEET',   'S');
