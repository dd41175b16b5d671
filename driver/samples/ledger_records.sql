-- Records of the bank and its payroll.

INSERT INTO BANK_CUSTOMER (CUSTOMER_NO, SURNAME, FIRST_NAME, STREET, TOWN, POSTCODE, BORN, REMARK) VALUES
    (10010001, 'Albright',     'Harriet',   '4 Quay Street',        'Harwick',       'HW1 4QS', '1948-02-29', NULL),
    (10010002, 'Brandt',       'Jürgen',    'Gänsemarkt 17',        'Lübeck',        '23552',   '1961-07-14', 'Writes only, does not telephone'),
    (10010003, 'Соколова',     'Ирина',     'ул. Садовая, 12',      'Псков',         '180000',  '1975-11-03', NULL),
    (10010004, 'O''Donnell',   'Niamh',     '9 Bridge Row',         'Galway',        NULL,      '1983-05-21', 'Keeps the chapel''s fund'),
    (10010005, 'Παπαδάκη',     'Ελένη',     'Αριστοτέλους 8',       'Θεσσαλονίκη',   '546 24',  '1990-01-30', NULL),
    (10010006, '山本',         '由美',      '大手町3丁目7',         '高松市',        '760-0017', '1969-09-09', 'Speaks English'),
    (10010007, 'Łukaszewicz',  'Zofia',     'ul. Długa 41',         'Gdańsk',        '80-831',  '1957-12-24', NULL),
    (10010008, 'حداد',         'ليلى',      'شارع الميناء 5',       'صور',           NULL,      NULL,         'Date of birth to be proved'),
    (10010009, 'Nørgaard',     'Søren',     'Havnegade 2, 3. th.',  'Ærøskøbing',    '5970',    '1944-04-01', NULL),
    (10010010, 'Ferreira',     'João',      'Rua do Cais 88',       'Viana',         '4900-001', '1979-08-17', NULL),
    (10010011, 'Tarnwick Sailmakers', NULL, 'The Old Rope Walk',    'Harwick',       'HW1 2RW', NULL,         'A firm; two signatures needed'),
    (10010012, 'Whitlock',     'Ezra',      NULL,                   NULL,            NULL,      '1931-10-10', 'Moved; address unknown');

-- The balances follow from the postings below.
INSERT INTO BANK_ACCOUNT
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
INSERT INTO BANK_POSTING (ACCOUNT_NO, POSTING_NO, BOOKED, VALUE_DATE, AMOUNT, KIND, TEXT, TELLER)
SELECT a.ACCOUNT_NO,
       900000 + 3 * a.rowid + m.N,
       '2018-10-' || m.DAY || printf(' %02d:%02d:00', 9 + a.rowid % 7, a.rowid * 17 % 60),
       '2018-10-' || m.DAY,
       round(CASE m.KIND WHEN 'CR' THEN 310.4 * (1 + a.rowid % 4) WHEN 'DR' THEN -264.15 * (1 + a.rowid % 5)
                         ELSE -2.5 END, 2),
       m.KIND,
       CASE WHEN m.KIND = 'CR' AND a.CUSTOMER_NO = 10010003 THEN 'Зарплата за октябрь' ELSE m.TEXT END,
       CASE m.KIND WHEN 'FE' THEN NULL ELSE 10001 + a.rowid % 4 END
  FROM BANK_ACCOUNT a
  JOIN (SELECT 1 AS N, '01' AS DAY, 'CR' AS KIND, 'Salary October' AS TEXT
        UNION ALL SELECT 2, '15', 'DR', 'Rent, paid at the counter'
        UNION ALL SELECT 3, '31', 'FE', 'Account keeping') m
 WHERE a.CLOSED IS NULL
 ORDER BY a.ACCOUNT_NO, m.N;

UPDATE BANK_ACCOUNT
   SET BALANCE = (SELECT round(total(AMOUNT), 2) FROM BANK_POSTING p WHERE p.ACCOUNT_NO = BANK_ACCOUNT.ACCOUNT_NO);

-- Each account pays the next one.
INSERT INTO BANK_STANDING_ORDER (ORDER_NO, FROM_ACCOUNT, TO_ACCOUNT, AMOUNT, DAY_OF_MONTH, FIRST_DATE, LAST_DATE, TEXT)
SELECT 5000 + f.rowid, f.ACCOUNT_NO, t.ACCOUNT_NO, 25.5 * f.rowid, 1 + f.rowid * 3 % 28,
       printf('2017-%02d-01', f.rowid), CASE f.rowid % 3 WHEN 0 THEN NULL ELSE printf('2020-%02d-28', f.rowid) END,
       CASE f.rowid % 2 WHEN 0 THEN 'Savings' ELSE 'Share of the boat''s keep' END
  FROM BANK_ACCOUNT f
  JOIN BANK_ACCOUNT t ON t.rowid = f.rowid + 1
 ORDER BY f.rowid;

INSERT INTO PAYROLL_EMPLOYEE
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
    (10010, 'Kalweit',   'Birgit',  '1994-08-03', '2017-11-20', 'A2',  1890.25, NULL, 25);

-- Three months of pay.
INSERT INTO PAYROLL_PAYSLIP (PERIOD, EMPLOYEE_NO, GROSS, TAX, INSURANCE, NET, ACCOUNT_NO)
SELECT m.PERIOD, e.EMPLOYEE_NO, e.SALARY, round(e.SALARY * 0.19, 2), round(e.SALARY * 0.085, 2),
       round(e.SALARY - round(e.SALARY * 0.19, 2) - round(e.SALARY * 0.085, 2), 2), 4400200000 + e.EMPLOYEE_NO
  FROM PAYROLL_EMPLOYEE e
  JOIN (SELECT 201808 AS PERIOD UNION ALL SELECT 201809 UNION ALL SELECT 201810) m
 ORDER BY m.PERIOD, e.EMPLOYEE_NO;
