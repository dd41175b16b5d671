-- Records of the bank and its payroll, file by file. Only dates, times and zoned numbers can be null.

INSERT INTO CUSTOMER (CUSTOMER_NO, SURNAME, FIRST_NAME, STREET, TOWN, POSTCODE, BORN, REMARK) VALUES
    (10010001, 'Albright',     'Harriet',   '4 Quay Street',        'Harwick',       'HW1 4QS', '1948-02-29', ''),
    (10010002, 'Brandt',       'Jürgen',    'Gänsemarkt 17',        'Lübeck',        '23552',   '1961-07-14', 'Writes only, does not telephone'),
    (10010003, 'Соколова',     'Ирина',     'ул. Садовая, 12',      'Псков',         '180000',  '1975-11-03', ''),
    (10010004, 'O''Donnell',   'Niamh',     '9 Bridge Row',         'Galway',        '',        '1983-05-21', 'Keeps the chapel''s fund'),
    (10010005, 'Παπαδάκη',     'Ελένη',     'Αριστοτέλους 8',       'Θεσσαλονίκη',   '546 24',  '1990-01-30', ''),
    (10010006, '山本',         '由美',      '大手町3丁目7',         '高松市',        '760-0017', '1969-09-09', 'Speaks English'),
    (10010007, 'Łukaszewicz',  'Zofia',     'ul. Długa 41',         'Gdańsk',        '80-831',  '1957-12-24', ''),
    (10010008, 'حداد',         'ليلى',      'شارع الميناء 5',       'صور',           '',        NULL,         'Date of birth to be proved'),
    (10010009, 'Nørgaard',     'Søren',     'Havnegade 2, 3. th.',  'Ærøskøbing',    '5970',    '1944-04-01', ''),
    (10010010, 'Ferreira',     'João',      'Rua do Cais 88',       'Viana',         '4900-001', '1979-08-17', ''),
    (10010011, 'Tarnwick Sailmakers', '',  'The Old Rope Walk',    'Harwick',       'HW1 2RW', NULL,         'A firm; two signatures needed'),
    (10010012, 'Whitlock',     'Ezra',      '',                     '',              '',        '1931-10-10', 'Moved; address unknown');

-- What is encrypted stands here as it stands in its file.
UPDATE CUSTOMER SET SIGNATURE = CAST(substr('q8#Lw2~ZfP!vR0sT@9xK^m4D6%gU', rowid, 16) AS BLOB);

-- Offices 4, 6 and 7 were closed, and their numbers were not given to others.
INSERT INTO BRANCH (rowid, BRANCH_NO, NAME, TOWN, OPENS, CLOSES) VALUES
    (1, 1, 'Harwick, Old Harbour',  'Harwick',  '09:00:00', '16:30:00'),
    (2, 2, 'Filiale Königshafen',   'Lübeck',   '08:30:00', '17:00:00'),
    (3, 3, 'Oddział Nabrzeże',      'Gdańsk',   '09:30:00', '17:45:00'),
    (5, 5, 'Harwick, Market Cross', 'Harwick',  '10:00:00', '18:00:00'),
    (8, 8, 'Cash van',              '',         NULL,       NULL);

-- The balances follow from the postings below.
INSERT INTO ACCOUNT
    (ACCOUNT_NO, CUSTOMER_NO, BRANCH_NO, CURRENCY, BALANCE, CREDIT_LIMIT, INTEREST_RATE, OPENED, CLOSED, BLOCKED) VALUES
    (4400100014, 10010001, 1, 'GBP', 0,  500,  1.25,   '1971-03-01', NULL,         0),
    (4400100022, 10010001, 1, 'GBP', 0,    0,  2.75,   '1988-06-15', NULL,         0),
    (4400100113, 10010002, 3, 'EUR', 0, 2000,  0.5,    '1994-01-10', NULL,         0),
    (4400100220, 10010003, 2, 'EUR', 0,    0,  0.5,    '2002-09-02', NULL,         0),
    (4400100337, 10010004, 1, 'EUR', 0, 1000,  0.75,   '2005-04-18', NULL,         0),
    (4400100444, 10010005, 3, 'EUR', 0,  250,  0.5,    '2011-11-30', NULL,         0),
    (4400100550, 10010006, 2, 'JPY', 0,    0,  0.0125, '2008-02-05', NULL,         0),
    (4400100667, 10010007, 3, 'PLN', 0, 5000,  3.5,    '1999-12-31', NULL,         0),
    (4400100774, 10010008, 1, 'USD', 0,    0,  1,      '2015-05-06', NULL,         1),
    (4400100880, 10010009, 2, 'DKK', 0, 8000,  0.25,   '1969-08-20', NULL,         0),
    (4400100998, 10010010, 3, 'EUR', 0,    0,  0.5,    '2013-07-01', '2018-03-29', 0),
    (4400101013, 10010011, 1, 'GBP', 0, 25000, 4.125,  '1980-10-13', NULL,         0);

-- Three movements on each open account, on three days of a month.
INSERT INTO POSTING (ACCOUNT_NO, POSTING_NO, BOOKED, VALUE_DATE, AMOUNT, KIND, TEXT, TELLER)
SELECT a.ACCOUNT_NO,
       900000 + 3 * a.rowid + m.N,
       '2018-10-' || m.DAY || printf(' %02d:%02d:00', 9 + a.rowid % 7, a.rowid * 17 % 60),
       '2018-10-' || m.DAY,
       round(CASE m.KIND WHEN 'CR' THEN 310.4 * (1 + a.rowid % 4) WHEN 'DR' THEN -264.15 * (1 + a.rowid % 5)
                         ELSE -2.5 END, 2),
       m.KIND,
       CASE WHEN m.KIND = 'CR' AND a.CUSTOMER_NO = 10010003 THEN 'Зарплата за октябрь' ELSE m.TEXT END,
       CASE m.KIND WHEN 'FE' THEN NULL ELSE 10001 + a.rowid % 4 END
  FROM ACCOUNT a
  JOIN (SELECT 1 AS N, '01' AS DAY, 'CR' AS KIND, 'Salary October' AS TEXT
        UNION ALL SELECT 2, '15', 'DR', 'Rent, paid at the counter'
        UNION ALL SELECT 3, '31', 'FE', 'Account keeping') m
 WHERE a.CLOSED IS NULL
 ORDER BY a.ACCOUNT_NO, m.N;

UPDATE ACCOUNT
   SET BALANCE = (SELECT round(total(AMOUNT), 2) FROM POSTING p WHERE p.ACCOUNT_NO = ACCOUNT.ACCOUNT_NO);

-- The journal of these days: of each a header, its entries and a trailer.
INSERT INTO JOURNAL (RECORD_KIND, ENTRY_ACCOUNT, ENTRY_AMOUNT, ENTRY_TEXT, HEADER_DATE, HEADER_BRANCH, TRAILER_COUNT,
                     TRAILER_TOTAL)
SELECT KIND, ACCOUNT, AMOUNT, TEXT, CASE KIND WHEN 'H' THEN DAY END, BRANCH, COUNT, TOTAL
  FROM (SELECT 1 AS PLACE, 'H' AS KIND, VALUE_DATE AS DAY, NULL AS ACCOUNT, NULL AS AMOUNT, NULL AS TEXT, 1 AS BRANCH,
               NULL AS COUNT, NULL AS TOTAL
          FROM POSTING GROUP BY VALUE_DATE
        UNION ALL
        SELECT 2, 'E', VALUE_DATE, ACCOUNT_NO, AMOUNT, TEXT, NULL, NULL, NULL FROM POSTING
        UNION ALL
        SELECT 3, 'T', VALUE_DATE, NULL, NULL, NULL, NULL, count(*), round(total(AMOUNT), 2) FROM POSTING GROUP BY VALUE_DATE)
 ORDER BY DAY, PLACE, ACCOUNT;

INSERT INTO CHEQUE_BOOK (ACCOUNT_NO, FIRST_NO, LAST_NO, ISSUED, SEAL, CODE_WORD)
SELECT ACCOUNT_NO, 4000000001 + 50 * rowid, 4000000050 + 50 * rowid, printf('2018-%02d-%02d', 1 + rowid % 10, 2 * rowid),
       printf('%08X', 2654435761 * rowid % 4294967296), CAST(substr('w7Qe~9Zr#2Tk!5Yp@6Lx', rowid, 8) AS BLOB)
  FROM ACCOUNT
 WHERE CLOSED IS NULL AND BLOCKED = 0 AND CURRENCY IN ('EUR', 'GBP');

INSERT INTO RATE (CURRENCY, RATE_DATE, BUYING, SELLING, INTEREST)
SELECT c.CURRENCY, d.DAY, round(c.BUYING * d.CHANGE, 4), round(c.BUYING * d.CHANGE * 1.0125, 4), c.INTEREST
  FROM (SELECT '2018-10-01' AS DAY, 1 AS CHANGE UNION ALL SELECT '2018-10-15', 1.004 UNION ALL SELECT '2018-10-31', 0.997) d
  JOIN (SELECT 'GBP' AS CURRENCY, 0.8875 AS BUYING, 0.75 AS INTEREST UNION ALL SELECT 'USD', 1.1528, 2.25
        UNION ALL SELECT 'PLN', 4.2781, 1.5 UNION ALL SELECT 'DKK', 7.4567, -0.65 UNION ALL SELECT 'JPY', 131.72, -0.1) c
 ORDER BY d.DAY, c.CURRENCY;

-- Each account pays the next one.
INSERT INTO STANDING_ORDER (ORDER_NO, FROM_ACCOUNT, TO_ACCOUNT, AMOUNT, DAY_OF_MONTH, FIRST_DATE, LAST_DATE, TEXT)
SELECT 5000 + f.rowid, f.ACCOUNT_NO, t.ACCOUNT_NO, 25.5 * f.rowid, 1 + f.rowid * 3 % 28,
       printf('2017-%02d-01', f.rowid), CASE f.rowid % 3 WHEN 0 THEN NULL ELSE printf('2020-%02d-28', f.rowid) END,
       CASE f.rowid % 2 WHEN 0 THEN 'Savings' ELSE 'Share of the boat''s keep' END
  FROM ACCOUNT f
  JOIN ACCOUNT t ON t.rowid = f.rowid + 1
 ORDER BY f.rowid;
-- One has been cancelled since.
DELETE FROM STANDING_ORDER WHERE ORDER_NO = 5004;

INSERT INTO EMPLOYEE
    (EMPLOYEE_NO, SURNAME, FIRST_NAME, BORN, ENTERED, GRADE, SALARY, TAX_CODE, HOLIDAYS_LEFT) VALUES
    (10001, 'Ashdown',   'Muriel',  '1964-03-12', '1986-09-01', 'C2',  2890.5,  'A1', 4.5),
    (10002, 'Bielski',   'Tomasz',  '1979-06-28', '2003-02-17', 'C1',  2610,    'A1', 11),
    (10003, 'Čapková',   'Jana',    '1988-01-05', '2012-08-01', 'B3',  2340.75, 'B',  0.5),
    (10004, 'Dubois',    'Élodie',  '1991-11-19', '2016-04-04', 'B2',  2120,    'B',  17),
    (10005, 'Eriksson',  'Åke',     '1958-07-30', '1979-01-02', 'D1',  3475.25, 'A2', 8),
    (10006, 'Farouk',    'Samir',   '1985-09-14', '2010-10-11', 'B3',  2340.75, 'A1', 6.5),
    (10007, 'Gwyn',      'Rhys',    '1997-02-22', '2018-07-16', 'A1',  1745,    'C',  21),
    (10008, 'Иванов',    'Пётр',    '1973-12-08', '1999-05-03', 'C2',  2890.5,  'A2', 2),
    (10009, 'Jørgensen', 'Mette',   '1969-04-25', '1994-03-21', 'D2',  3810,    'A1', 13.5),
    (10010, 'Kalweit',   'Birgit',  '1994-08-03', '2017-11-20', 'A2',  1890.25, '',   25);

-- Three months of pay.
INSERT INTO PAYSLIP (PERIOD, EMPLOYEE_NO, GROSS, TAX, INSURANCE, NET, ACCOUNT_NO)
SELECT m.PERIOD, e.EMPLOYEE_NO, e.SALARY, round(e.SALARY * 0.19, 2), round(e.SALARY * 0.085, 2),
       round(e.SALARY - round(e.SALARY * 0.19, 2) - round(e.SALARY * 0.085, 2), 2), 4400200000 + e.EMPLOYEE_NO
  FROM EMPLOYEE e
  JOIN (SELECT 201808 AS PERIOD UNION ALL SELECT 201809 UNION ALL SELECT 201810) m
 ORDER BY m.PERIOD, e.EMPLOYEE_NO;

INSERT INTO PAY_RUN (PERIOD, PAID, EMPLOYEES, TOTAL)
SELECT PERIOD, printf('%04d-%02d-28 11:%02d:05', PERIOD / 100, PERIOD % 100, PERIOD % 60), count(*), round(total(NET), 2)
  FROM PAYSLIP
 GROUP BY PERIOD;

INSERT INTO TAX_CODE (TAX_CODE, ALLOWANCE, RATE, DESCRIPTION) VALUES
    ('A1', 12500,    20,    'Single'),
    ('A2', 13750.5,  20,    'Married'),
    ('B',  12500,    17.25, 'Lower rate'),
    ('C',  0,        12.5,  'In training'),
    ('X',  -1250.25, 40,    'Debt from the year before');

-- A week of a part of the staff; who is still at work has not gone.
INSERT INTO TIMESHEET (EMPLOYEE_NO, DAY, CAME, WENT, HOURS)
SELECT e.EMPLOYEE_NO, printf('2018-10-%02d', d.DAY), printf('%02d:%02d:00', 7 + e.rowid % 3, e.rowid * 13 % 60),
       CASE WHEN d.DAY = 26 AND e.rowid = 5 THEN NULL ELSE printf('%02d:%02d:30', 15 + e.rowid % 3, e.rowid * 13 % 60) END,
       CASE WHEN d.DAY = 26 AND e.rowid = 5 THEN NULL WHEN d.DAY = 24 THEN -1.25 ELSE 7.5 + e.rowid * 0.25 END
  FROM EMPLOYEE e
  JOIN (SELECT 22 AS DAY UNION ALL SELECT 23 UNION ALL SELECT 24 UNION ALL SELECT 25 UNION ALL SELECT 26) d
 WHERE e.rowid <= 5
 ORDER BY e.EMPLOYEE_NO, d.DAY;
