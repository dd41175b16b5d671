-- Records of the wholesaler.

INSERT INTO STOCK_SUPPLIER (SUPPLIER_NO, NAME, CONTACT, RATING) VALUES
    (7001, 'Harwick Rope Works',        'Agnes Thorley',     4.5),
    (7002, 'Brass & Bell Foundry',      'Owen Pryce',        3.75),
    (7003, 'Nordlys Lanterner',         'Kåre Bjørnstad',    4.9),
    (7004, 'Tuilerie du Vieux Port',    'Solène Guérin',     2.5),
    (7005, 'Weberei Östlund',           NULL,                3),
    (7006, 'Κεραμική Λήμνου',           'Σταύρος Μανωλάς',   4.25),
    (7007, '瀬戸内製帆所',              '岡田 健',           5),
    (7008, 'Kuźnia Bałtycka',           'Halina Wójcik',     NULL),
    (7009, 'Salt Lane Chandlery',       'Bertram Yeo',       3.5),
    (7010, 'Oficina da Ria',            'Inês Marçal',       4);

INSERT INTO STOCK_ITEM (ITEM_NO, DESCRIPTION, UNIT, WEIGHT, PRICE, SUPPLIER_NO, REORDER_AT, PICTURE_KEY) VALUES
    ('ROPE-12-HMP', 'Hemp rope, 12 mm',             'MTR',   0.105,   1.85,  7001, 400, x'00000000000000A1'),
    ('ROPE-20-NYL', 'Nylon rope, 20 mm',            'MTR',   0.26,    3.4,   7001, 250, x'00000000000000A2'),
    ('SHACKLE-08',  'Bow shackle, 8 mm, galvanised', 'PCE',  0.12,    2.1,   7008, 120, x'00000000000000B1'),
    ('BELL-200',    'Ship''s bell, brass, 200 mm',  'PCE',   3.9,   118.5,   7002,   5, x'00000000000000C4'),
    ('LANT-ANKER',  'Anchor lantern, copper',       'PCE',   1.75,   64.25,  7003,  12, x'00000000000000C9'),
    ('SAIL-CANV-5', 'Sailcloth, 5 oz',              'MTR',   0.17,    9.6,   7007, 150, NULL),
    ('BLOCK-50-S',  'Single block, 50 mm',          'PCE',   0.31,   14.95,  7009,  40, x'00000000000000B7'),
    ('BLOCK-50-D',  'Double block, 50 mm',          'PCE',   0.54,   23.8,   7009,  30, x'00000000000000B8'),
    ('TILE-HEX-15', 'Hexagonal tile, 15 cm',        'PCE',   0.62,    0.98,  7004, 900, NULL),
    ('BLANKET-GR',  'Woollen blanket, grey',        'PCE',   1.4,    31,     7005,  25, x'00000000000000D2'),
    ('JUG-LEMNOS',  'Stoneware jug, 2 litres',      'PCE',   1.85,   19.5,   7006,  20, x'00000000000000D5'),
    ('CLEAT-180',   'Horn cleat, 180 mm',           'PCE',   0.22,    5.75,  7010,  60, NULL);

-- Every item lies in two bins.
INSERT INTO STOCK_STOCK_LEVEL (ITEM_NO, BIN_NO, QUANTITY, COUNTED)
SELECT i.ITEM_NO, 100 * b.N + i.rowid, round(i.REORDER_AT * b.PART, 3),
       CASE WHEN b.N = 2 AND i.rowid % 4 = 0 THEN NULL ELSE printf('2018-12-%02d 17:%02d:00', 10 + b.N, i.rowid * 4) END
  FROM STOCK_ITEM i
  JOIN (SELECT 1 AS N, 1.5 AS PART UNION ALL SELECT 2, 0.25) b
 ORDER BY i.ITEM_NO, b.N;

INSERT INTO ORDERS_BUYER (BUYER_NO, NAME, STREET, TOWN, COUNTRY, DISCOUNT, CREDIT_LIMIT, SINCE) VALUES
    (301, 'Pendragon Boatyard',      '1 Slipway',            'Fowey',       'GB',  7.5,  15000,   '1992-04-01'),
    (302, 'Segelhaus Kröger',        'Hafenstraße 22',       'Flensburg',   'DE',  5,     9000,   '1998-09-14'),
    (303, 'Ναυτικά Είδη Σταματίου',  'Ακτή Μιαούλη 31',      'Πειραιάς',    'GR',  2.5,   4000,   '2004-02-27'),
    (304, 'Скипидар и Парус',        'наб. Лейтенанта 3',    'Выборг',      'RU',  0,     NULL,   '2010-06-09'),
    (305, '横浜マリン商会',          '山下町 75',            '横浜市',      'JP',  10,   30000,   '1989-11-20'),
    (306, 'Chantier Le Goff',        '6, quai de l''Odet',   'Bénodet',     'FR',  5,     7500,   '2001-05-03'),
    (307, 'Åland Båtbygge',          'Östra hamnen 4',       'Mariehamn',   'FI',  2.5,   5000,   '2015-03-16'),
    (308, 'Estaleiro do Lima',       NULL,                   'Viana',       'PT',  0,     1200,   '2017-08-22'),
    (309, 'Connemara Curraghs',      'The Pier',             'Roundstone',  'IE',  0,      800.5, NULL),
    (310, 'Stocznia Mewa',           'ul. Nabrzeżna 10',     'Ustka',       'PL',  7.5,  11000,   '2007-10-05');

INSERT INTO ORDERS_ORDER_HEAD (ORDER_NO, BUYER_NO, ORDERED, WANTED, STATE, BUYERS_TEXT) VALUES
    (88001, 301, '2018-11-02', '2018-11-16', 'I', 'Spring refit'),
    (88002, 305, '2018-11-05', '2018-12-14', 'I', '春の展示会用'),
    (88003, 302, '2018-11-07', NULL,         'I', NULL),
    (88004, 303, '2018-11-12', '2018-11-30', 'I', 'Προς κ. Σταματίου'),
    (88005, 306, '2018-11-19', '2018-12-03', 'I', 'Ring the bell at the gate'),
    (88006, 301, '2018-11-21', NULL,         'S', NULL),
    (88007, 310, '2018-11-26', '2018-12-10', 'S', 'Brama nr 2'),
    (88008, 307, '2018-11-28', '2018-12-12', 'S', NULL),
    (88009, 305, '2018-12-03', '2019-01-11', 'S', NULL),
    (88010, 302, '2018-12-04', '2018-12-18', 'S', 'Wie telefonisch besprochen'),
    (88011, 308, '2018-12-06', NULL,         'P', NULL),
    (88012, 304, '2018-12-10', '2018-12-31', 'P', 'Срочно'),
    (88013, 301, '2018-12-11', '2019-01-08', 'P', NULL),
    (88014, 309, '2018-12-12', NULL,         'N', 'Pay on delivery'),
    (88015, 306, '2018-12-13', '2019-01-15', 'N', NULL),
    (88016, 303, '2018-12-14', NULL,         'N', NULL);

-- One to three lines an order, at the item's price less the buyer's discount.
INSERT INTO ORDERS_ORDER_LINE (ORDER_NO, LINE_NO, ITEM_NO, QUANTITY, PRICE, SENT)
SELECT o.ORDER_NO, n.N, i.ITEM_NO, 4 * n.N + o.ORDER_NO % 9, round(i.PRICE * (1 - b.DISCOUNT / 100), 4),
       CASE WHEN o.STATE IN ('S', 'I') THEN 4 * n.N + o.ORDER_NO % 9 ELSE 0 END
  FROM ORDERS_ORDER_HEAD o
  JOIN ORDERS_BUYER b ON b.BUYER_NO = o.BUYER_NO
  JOIN (SELECT 1 AS N UNION ALL SELECT 2 UNION ALL SELECT 3) n ON n.N <= 1 + o.ORDER_NO % 3
  JOIN STOCK_ITEM i ON i.rowid = 1 + (o.ORDER_NO * 7 + n.N * 5) % 12
 ORDER BY o.ORDER_NO, n.N;

-- A parcel for each order that has been sent, three days after it came.
INSERT INTO EXCHANGE_DELIVERY (PARCEL_NO, ORDER_NO, HANDED_OVER, AT_TIME, WEIGHT, SIGNED_BY)
SELECT 35010000000000 + o.ORDER_NO, o.ORDER_NO, date(o.ORDERED, '+3 days'), printf('%02d:%02d:30', 8 + o.rowid, o.rowid * 5),
       (SELECT round(sum(l.QUANTITY * i.WEIGHT), 3)
          FROM ORDERS_ORDER_LINE l JOIN STOCK_ITEM i ON i.ITEM_NO = l.ITEM_NO WHERE l.ORDER_NO = o.ORDER_NO),
       CASE o.rowid % 3 WHEN 0 THEN NULL ELSE (SELECT substr(NAME, 1, 30) FROM ORDERS_BUYER b WHERE b.BUYER_NO = o.BUYER_NO) END
  FROM ORDERS_ORDER_HEAD o
 WHERE o.STATE IN ('S', 'I')
 ORDER BY o.ORDER_NO;
