-- Records of the wholesaler, file by file. Only dates, times and zoned numbers can be null.

INSERT INTO SUPPLIER (SUPPLIER_NO, NAME, CONTACT, RATING) VALUES
    (7001, 'Harwick Rope Works',        'Agnes Thorley',     4.5),
    (7002, 'Brass & Bell Foundry',      'Owen Pryce',        3.75),
    (7003, 'Nordlys Lanterner',         'Kåre Bjørnstad',    4.9),
    (7004, 'Tuilerie du Vieux Port',    'Solène Guérin',     2.5),
    (7005, 'Weberei Östlund',           '',                  3),
    (7006, 'Κεραμική Λήμνου',           'Σταύρος Μανωλάς',   4.25),
    (7007, '瀬戸内製帆所',              '岡田 健',           5),
    (7008, 'Kuźnia Bałtycka',           'Halina Wójcik',     4.125),
    (7009, 'Salt Lane Chandlery',       'Bertram Yeo',       3.5),
    (7010, 'Oficina da Ria',            'Inês Marçal',       4);

INSERT INTO ITEM (ITEM_NO, DESCRIPTION, UNIT, WEIGHT, PRICE, SUPPLIER_NO, REORDER_AT, PICTURE_KEY) VALUES
    ('ROPE-12-HMP', 'Hemp rope, 12 mm',             'MTR',   0.105,   1.85,  7001, 400, x'00000000000000A1'),
    ('ROPE-20-NYL', 'Nylon rope, 20 mm',            'MTR',   0.26,    3.4,   7001, 250, x'00000000000000A2'),
    ('SHACKLE-08',  'Bow shackle, 8 mm, galvanised', 'PCE',  0.12,    2.1,   7008, 120, x'00000000000000B1'),
    ('BELL-200',    'Ship''s bell, brass, 200 mm',  'PCE',   3.9,   118.5,   7002,   5, x'00000000000000C4'),
    ('LANT-ANKER',  'Anchor lantern, copper',       'PCE',   1.75,   64.25,  7003,  12, x'00000000000000C9'),
    ('SAIL-CANV-5', 'Sailcloth, 5 oz',              'MTR',   0.17,    9.6,   7007, 150, x'00000000000000CE'),
    ('BLOCK-50-S',  'Single block, 50 mm',          'PCE',   0.31,   14.95,  7009,  40, x'00000000000000B7'),
    ('BLOCK-50-D',  'Double block, 50 mm',          'PCE',   0.54,   23.8,   7009,  30, x'00000000000000B8'),
    ('TILE-HEX-15', 'Hexagonal tile, 15 cm',        'PCE',   0.62,    0.98,  7004, 900, x'00000000000000D1'),
    ('BLANKET-GR',  'Woollen blanket, grey',        'PCE',   1.4,    31,     7005,  25, x'00000000000000D2'),
    ('JUG-LEMNOS',  'Stoneware jug, 2 litres',      'PCE',   1.85,   19.5,   7006,  20, x'00000000000000D5'),
    ('CLEAT-180',   'Horn cleat, 180 mm',           'PCE',   0.22,    5.75,  7010,  60, x'FFFFFFFFFFFFFFFF');

-- Every item lies in two bins.
INSERT INTO STOCK_LEVEL (ITEM_NO, BIN_NO, QUANTITY, COUNTED)
SELECT i.ITEM_NO, 100 * b.N + i.rowid, round(i.REORDER_AT * b.PART, 3),
       printf('2018-12-%02d 17:%02d:00', 10 + b.N, i.rowid * 4)
  FROM ITEM i
  JOIN (SELECT 1 AS N, 1.5 AS PART UNION ALL SELECT 2, 0.25) b
 ORDER BY i.ITEM_NO, b.N;

INSERT INTO BUYER (BUYER_NO, NAME, STREET, TOWN, COUNTRY, DISCOUNT, CREDIT_LIMIT, SINCE) VALUES
    (301, 'Pendragon Boatyard',      '1 Slipway',            'Fowey',       'GB',  7.5,  15000,   '1992-04-01'),
    (302, 'Segelhaus Kröger',        'Hafenstraße 22',       'Flensburg',   'DE',  5,     9000,   '1998-09-14'),
    (303, 'Ναυτικά Είδη Σταματίου',  'Ακτή Μιαούλη 31',      'Πειραιάς',    'GR',  2.5,   4000,   '2004-02-27'),
    (304, 'Скипидар и Парус',        'наб. Лейтенанта 3',    'Выборг',      'RU',  0,        0,   '2010-06-09'),
    (305, '横浜マリン商会',          '山下町 75',            '横浜市',      'JP',  10,   30000,   '1989-11-20'),
    (306, 'Chantier Le Goff',        '6, quai de l''Odet',   'Bénodet',     'FR',  5,     7500,   '2001-05-03'),
    (307, 'Åland Båtbygge',          'Östra hamnen 4',       'Mariehamn',   'FI',  2.5,   5000,   '2015-03-16'),
    (308, 'Estaleiro do Lima',       '',                     'Viana',       'PT',  0,     1200,   '2017-08-22'),
    (309, 'Connemara Curraghs',      'The Pier',             'Roundstone',  'IE',  0,      800.5, NULL),
    (310, 'Stocznia Mewa',           'ul. Nabrzeżna 10',     'Ustka',       'PL',  7.5,  11000,   '2007-10-05');

INSERT INTO ORDER_HEAD (ORDER_NO, BUYER_NO, ORDERED, WANTED, STATE, BUYERS_TEXT) VALUES
    (88001, 301, '2018-11-02', '2018-11-16', 'I', 'Spring refit'),
    (88002, 305, '2018-11-05', '2018-12-14', 'I', '春の展示会用'),
    (88003, 302, '2018-11-07', NULL,         'I', ''),
    (88004, 303, '2018-11-12', '2018-11-30', 'I', 'Προς κ. Σταματίου'),
    (88005, 306, '2018-11-19', '2018-12-03', 'I', 'Ring the bell at the gate'),
    (88006, 301, '2018-11-21', NULL,         'S', ''),
    (88007, 310, '2018-11-26', '2018-12-10', 'S', 'Brama nr 2'),
    (88008, 307, '2018-11-28', '2018-12-12', 'S', ''),
    (88009, 305, '2018-12-03', '2019-01-11', 'S', ''),
    (88010, 302, '2018-12-04', '2018-12-18', 'S', 'Wie telefonisch besprochen'),
    (88011, 308, '2018-12-06', NULL,         'P', ''),
    (88012, 304, '2018-12-10', '2018-12-31', 'P', 'Срочно'),
    (88013, 301, '2018-12-11', '2019-01-08', 'P', ''),
    (88014, 309, '2018-12-12', NULL,         'N', 'Pay on delivery'),
    (88015, 306, '2018-12-13', '2019-01-15', 'N', ''),
    (88016, 303, '2018-12-14', NULL,         'N', '');

-- One to three lines an order, at the item's price less the buyer's discount.
INSERT INTO ORDER_LINE (ORDER_NO, LINE_NO, ITEM_NO, QUANTITY, PRICE, SENT)
SELECT o.ORDER_NO, n.N, i.ITEM_NO, 4 * n.N + o.ORDER_NO % 9, round(i.PRICE * (1 - b.DISCOUNT / 100), 4),
       CASE WHEN o.STATE IN ('S', 'I') THEN 4 * n.N + o.ORDER_NO % 9 ELSE 0 END
  FROM ORDER_HEAD o
  JOIN BUYER b ON b.BUYER_NO = o.BUYER_NO
  JOIN (SELECT 1 AS N UNION ALL SELECT 2 UNION ALL SELECT 3) n ON n.N <= 1 + o.ORDER_NO % 3
  JOIN ITEM i ON i.rowid = 1 + (o.ORDER_NO * 7 + n.N * 5) % 12
 ORDER BY o.ORDER_NO, n.N;

-- One line was taken off its order.
DELETE FROM ORDER_LINE WHERE ORDER_NO = 88013 AND LINE_NO = 2;

-- An invoice a week after each order that has one.
INSERT INTO INVOICE (INVOICE_NO, ORDER_NO, INVOICED, NET, TAX, PAID)
SELECT 500000 + o.rowid, o.ORDER_NO, datetime(o.ORDERED, '+7 days', printf('+%d minutes', o.rowid * 97)), l.NET,
       round(l.NET * 0.2, 2), o.rowid % 3 <> 0
  FROM ORDER_HEAD o
  JOIN (SELECT ORDER_NO, round(sum(QUANTITY * PRICE), 2) AS NET FROM ORDER_LINE GROUP BY ORDER_NO) l USING (ORDER_NO)
 WHERE o.STATE = 'I'
 ORDER BY o.ORDER_NO;

-- The name of who approved it is encrypted, and stands here as it stands in its file.
INSERT INTO PURCHASE (PURCHASE_NO, SUPPLIER_NO, ITEM_NO, QUANTITY, DUE, APPROVED_BY)
SELECT 7700000000001 + 11 * rowid, SUPPLIER_NO, ITEM_NO, round(REORDER_AT * 1.125, 3),
       CASE rowid % 5 WHEN 0 THEN NULL ELSE date('2019-01-03', '+' || rowid || ' days') END,
       CAST(substr('m3!Vb8%Hd0~Nc6^Jf1@Ls', rowid, 8) AS BLOB)
  FROM ITEM;

-- A bin's number is its record's.
INSERT INTO BIN (rowid, RACK, BAY, LEVEL, MAXIMUM_LOAD, USED)
SELECT BIN_NO, CASE BIN_NO / 100 WHEN 1 THEN 'LO' ELSE 'HI' END, BIN_NO % 100, BIN_NO / 100, 250 * (BIN_NO / 100), 1
  FROM STOCK_LEVEL
 ORDER BY BIN_NO;
INSERT INTO BIN (rowid, RACK, BAY, LEVEL, MAXIMUM_LOAD, USED) VALUES (220, 'HI', 200, 255, -1, 0);

-- What came in and, behind it, what went out.
INSERT INTO MOVEMENT (KIND, ITEM_NO, QUANTITY, RECEIPT_PURCHASE)
SELECT 'R', ITEM_NO, QUANTITY, PURCHASE_NO FROM PURCHASE WHERE DUE IS NULL OR DUE < '2019-01-08' ORDER BY PURCHASE_NO;
INSERT INTO MOVEMENT (KIND, ITEM_NO, QUANTITY, ISSUE_ORDER, ISSUE_LINE)
SELECT 'I', ITEM_NO, SENT, ORDER_NO, LINE_NO FROM ORDER_LINE WHERE SENT > 0 ORDER BY ORDER_NO, LINE_NO;

-- The supplier's machine knows no weight finer than an eighth of a kilogram.
INSERT INTO PRICE_LIST (ITEM_NO, VALID_FROM, PRICE, PACK_SIZE, WEIGHT)
SELECT ITEM_NO, CASE rowid % 4 WHEN 0 THEN NULL ELSE '2019-01-01' END, round(PRICE * CASE rowid WHEN 3 THEN -1 ELSE 0.625 END, 4),
       1 + 300 * rowid, round(WEIGHT * 8) / 8 + 0.125
  FROM ITEM;

-- A parcel for each order that has been sent, three days after it came.
INSERT INTO DELIVERY (PARCEL_NO, ORDER_NO, HANDED_OVER, AT_TIME, WEIGHT, SIGNED_BY)
SELECT 35010000000000 + o.ORDER_NO, o.ORDER_NO, date(o.ORDERED, '+3 days'), printf('%02d:%02d:30', 8 + o.rowid, o.rowid * 5),
       (SELECT round(sum(l.QUANTITY * i.WEIGHT), 3)
          FROM ORDER_LINE l JOIN ITEM i ON i.ITEM_NO = l.ITEM_NO WHERE l.ORDER_NO = o.ORDER_NO),
       CASE o.rowid % 5 WHEN 0 THEN '' WHEN 1 THEN 'H. Pendragon' WHEN 2 THEN 'Kröger, Pförtnerin' WHEN 3 THEN 'J. Åkerblom'
                        ELSE 'Le Goff père & fils' END
  FROM ORDER_HEAD o
 WHERE o.STATE IN ('S', 'I')
 ORDER BY o.ORDER_NO;

INSERT INTO SCALE_READING (READ_AT, TABLE_NO, GRAMS, TEMPERATURE)
SELECT '2018-12-14 ' || AT_TIME, 1 + rowid % 3, round(WEIGHT * 1000 + 0.37 * rowid, 2), round(17.5 - 2.3 * rowid, 1) FROM DELIVERY;
