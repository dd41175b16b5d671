-- A wholesaler: orders in indexed sequential files, stock in record-managed files, and flat files from other houses.

INSERT INTO TW_DB (DATABASE_NAME, DEFAULT_DIRECTORY, DRIVER_NAME, CONNECT_STRING, REMARKS, DISPLAY_NAME) VALUES
    ('ORDERS',   'data/orders',    'DISAM',   '', 'Customers, orders and invoices', 'Orders'),
    ('STOCK',    'data/warehouse', 'VAX-RMS', '', 'Items and where they lie',       'Stock'),
    ('EXCHANGE', 'data/exchange',  'FLAT',    '', 'Files from suppliers and carriers', 'Exchange');

INSERT INTO TW_FILE (FILE_NAME, OPEN_STRING, FILE_ORGANISATION, RECORD_TYPE, REMARKS) VALUES
    ('BUYER',        '', 'INDEXED',    'FIXED',    'Customers'),
    ('ORDER-HEAD',   '', 'INDEXED',    'FIXED',    'Orders'),
    ('ORDER-LINE',   '', 'INDEXED',    'FIXED',    'Lines of the orders'),
    ('INVOICE',      '', 'INDEXED',    'FIXED',    ''),
    ('ITEM',         '', 'INDEXED',    'FIXED',    'What is sold'),
    ('BIN',          'SLOT-4', 'RELATIVE',   'FIXED',    'Bins of the high-rise rack by their number'),
    ('STOCK-LEVEL',  '', 'INDEXED',    'FIXED',    'How many of an item lie in a bin'),
    ('MOVEMENT',     'COUNTED-2', 'SEQUENTIAL', 'VARIABLE', 'Receipts and issues in one file'),
    ('SUPPLIER',     '', 'INDEXED',    'FIXED',    ''),
    ('PURCHASE',     '', 'INDEXED',    'FIXED',    'Orders to suppliers'),
    ('PRICE-LIST',   'EBCDIC-037', 'SEQUENTIAL', 'FIXED',    'From a supplier''s mainframe'),
    ('DELIVERY',     'LINE LATIN-1', 'SEQUENTIAL', 'FIXED',    'From the carrier, one line a parcel'),
    ('SCALE-READING', '', 'SEQUENTIAL', 'FIXED',   'Readings of the packing table''s scales');

INSERT INTO LAYOUT (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, LENGTH, PRECISION, SCALE, FORMAT, REMARKS) VALUES
    ('BUYER',           1, 'BUYER-NO',       'INTEGER-4-BE',   4, 10, 0, '', 'Primary key'),
    ('BUYER',           2, 'NAME',           'STRING',        60, 60, 0, '', ''),
    ('BUYER',           3, 'STREET',         'STRING',        30, 30, 0, '', ''),
    ('BUYER',           4, 'TOWN',           'STRING',        30, 30, 0, '', ''),
    ('BUYER',           5, 'COUNTRY',        'STRING',         2,  2, 0, '', 'ISO 3166 code'),
    ('BUYER',           6, 'DISCOUNT',       'ZONED-U',        4,  4, 2, '', 'Per cent'),
    ('BUYER',           7, 'CREDIT-LIMIT',   'PACKED',         5, 10, 2, '', ''),
    ('BUYER',           8, 'SINCE',          'DATE',          10, 10, 0, 'DD/MM/YYYY', ''),

    ('ORDER-HEAD',      1, 'ORDER-NO',       'INTEGER-4-BE',   4, 10, 0, '', 'Primary key'),
    ('ORDER-HEAD',      2, 'BUYER-NO',       'INTEGER-4-BE',   4, 10, 0, '', ''),
    ('ORDER-HEAD',      3, 'ORDERED',        'DATE',          10, 10, 0, 'YYYY-MM-DD', ''),
    ('ORDER-HEAD',      4, 'WANTED',         'DATE',          10, 10, 0, 'YYYY-MM-DD', ''),
    ('ORDER-HEAD',      5, 'STATE',          'STRING',         1,  1, 0, '', 'N new, P picked, S sent, I invoiced'),
    ('ORDER-HEAD',      6, 'BUYERS-TEXT',    'STRING-ZERO',   51, 51, 0, '', ''),

    ('ORDER-LINE',      1, 'ORDER-NO',       'INTEGER-4-BE',   4, 10, 0, '', 'Primary key with LINE-NO'),
    ('ORDER-LINE',      2, 'LINE-NO',        'INTEGER-2-BE',   2,  5, 0, '', ''),
    ('ORDER-LINE',      3, 'ITEM-NO',        'STRING',        12, 12, 0, '', ''),
    ('ORDER-LINE',      4, 'QUANTITY',       'PACKED',         4,  8, 3, '', ''),
    ('ORDER-LINE',      5, 'PRICE',          'PACKED',         5, 10, 4, '', 'A piece'),
    ('ORDER-LINE',      6, 'SENT',           'PACKED',         4,  8, 3, '', ''),

    ('INVOICE',         1, 'INVOICE-NO',     'INTEGER-4-BE',   4, 10, 0, '', 'Primary key'),
    ('INVOICE',         2, 'ORDER-NO',       'INTEGER-4-BE',   4, 10, 0, '', ''),
    ('INVOICE',         3, 'INVOICED',       'SECONDS-4',      4, 19, 0, '', ''),
    ('INVOICE',         4, 'NET',            'PACKED',         6, 12, 2, '', ''),
    ('INVOICE',         5, 'TAX',            'PACKED',         6, 12, 2, '', ''),
    ('INVOICE',         6, 'PAID',           'BOOLEAN',        1,  1, 0, '', ''),

    ('ITEM',            1, 'ITEM-NO',        'STRING',        12, 12, 0, '', 'Primary key'),
    ('ITEM',            2, 'DESCRIPTION',    'STRING',        40, 40, 0, '', ''),
    ('ITEM',            3, 'UNIT',           'STRING',         3,  3, 0, '', ''),
    ('ITEM',            4, 'WEIGHT',         'F-FLOAT',        4,  7, 0, '', 'Kilograms'),
    ('ITEM',            5, 'PRICE',          'ZONED-RO',       9,  9, 4, '', ''),
    ('ITEM',            6, 'SUPPLIER-NO',    'UNSIGNED-3',     3,  8, 0, '', ''),
    ('ITEM',            7, 'REORDER-AT',     'INTEGER-4',      4, 10, 0, '', ''),
    ('ITEM',            8, 'PICTURE-KEY',    'BINARY-STRING',  8, 16, 0, '', ''),

    ('BIN',             1, 'RACK',           'STRING',         2,  2, 0, '', ''),
    ('BIN',             2, 'BAY',            'UNSIGNED-1',     1,  3, 0, '', ''),
    ('BIN',             3, 'LEVEL',          'UNSIGNED-1',     1,  3, 0, '', ''),
    ('BIN',             4, 'MAXIMUM-LOAD',   'INTEGER-2',      2,  5, 0, '', 'Kilograms'),
    ('BIN',             5, 'USED',           'BOOLEAN',        1,  1, 0, '', ''),

    ('STOCK-LEVEL',     1, 'ITEM-NO',        'STRING',        12, 12, 0, '', 'Primary key with BIN-NO'),
    ('STOCK-LEVEL',     2, 'BIN-NO',         'INTEGER-4',      4, 10, 0, '', ''),
    ('STOCK-LEVEL',     3, 'QUANTITY',       'PACKED',         4,  8, 3, '', ''),
    ('STOCK-LEVEL',     4, 'COUNTED',        'TIMESTAMP-8',    8, 19, 0, '', 'Last stocktaking'),

    ('SUPPLIER',        1, 'SUPPLIER-NO',    'UNSIGNED-3',     3,  8, 0, '', 'Primary key'),
    ('SUPPLIER',        2, 'NAME',           'STRING',        40, 40, 0, '', ''),
    ('SUPPLIER',        3, 'CONTACT',        'STRING',        30, 30, 0, '', ''),
    ('SUPPLIER',        4, 'RATING',         'G-FLOAT',        8, 15, 0, '', ''),

    ('PURCHASE',        1, 'PURCHASE-NO',    'INTEGER-8',      8, 19, 0, '', 'Primary key'),
    ('PURCHASE',        2, 'SUPPLIER-NO',    'UNSIGNED-3',     3,  8, 0, '', ''),
    ('PURCHASE',        3, 'ITEM-NO',        'STRING',        12, 12, 0, '', ''),
    ('PURCHASE',        4, 'QUANTITY',       'PACKED',         4,  8, 3, '', ''),
    ('PURCHASE',        5, 'DUE',            'DATE-YYYYMMDD',  8,  8, 0, 'YYYYMMDD', ''),
    ('PURCHASE',        6, 'APPROVED-BY',    'STRING',         8,  8, 0, '', ''),

    ('PRICE-LIST',      1, 'ITEM-NO',        'STRING-EBCDIC', 12, 12, 0, '', ''),
    ('PRICE-LIST',      2, 'VALID-FROM',     'DATE-YYMMDD',    6,  6, 0, 'YYMMDD', ''),
    ('PRICE-LIST',      3, 'PRICE',          'ZONED',          9,  9, 4, '', ''),
    ('PRICE-LIST',      4, 'PACK-SIZE',      'UNSIGNED-2-BE',  2,  5, 0, '', ''),
    ('PRICE-LIST',      5, 'WEIGHT',         'HEX-FLOAT-4',    4,  6, 0, '', ''),

    ('DELIVERY',        1, 'PARCEL-NO',      'NUMERIC',       14, 14, 0, '', ''),
    ('DELIVERY',        2, 'ORDER-NO',       'NUMERIC',       10, 10, 0, '', ''),
    ('DELIVERY',        3, 'HANDED-OVER',    'DATE',          11, 11, 0, 'DD-MMM-YYYY', ''),
    ('DELIVERY',        4, 'AT-TIME',        'TIME',           8,  8, 0, 'hh:mm:ss', ''),
    ('DELIVERY',        5, 'WEIGHT',         'ZONED-LS',       8,  8, 3, '', 'Kilograms'),
    ('DELIVERY',        6, 'SIGNED-BY',      'STRING',        30, 30, 0, '', ''),

    ('SCALE-READING',   1, 'READ-AT',        'TIMESTAMP',     19, 19, 0, 'YYYY-MM-DD hh:mm:ss', ''),
    ('SCALE-READING',   2, 'TABLE-NO',       'UNSIGNED-1',     1,  3, 0, '', ''),
    ('SCALE-READING',   3, 'GRAMS',          'FLOAT-8',        8, 15, 0, '', ''),
    ('SCALE-READING',   4, 'TEMPERATURE',    'FLOAT-4',        4,  7, 0, '', 'Degrees Celsius');

-- A movement is a receipt or an issue, told apart by its first byte.
INSERT INTO LAYOUT (FILE_NAME, FIELD_NUMBER, FIELD_NAME, LOCAL_TYPE_NAME, LENGTH, PRECISION, SCALE, AT, FORMAT, REMARKS) VALUES
    ('MOVEMENT',        1, 'KIND',           'STRING',         1,  1, 0, NULL, '', 'R or I'),
    ('MOVEMENT',        2, 'ITEM-NO',        'STRING',        12, 12, 0, NULL, '', ''),
    ('MOVEMENT',        3, 'QUANTITY',       'PACKED',         4,  8, 3, NULL, '', ''),
    ('MOVEMENT',        4, 'RECEIPT-PURCHASE', 'INTEGER-8',    8, 19, 0, NULL, '', 'Receipt'),
    ('MOVEMENT',        5, 'ISSUE-ORDER',    'INTEGER-4-BE',   4, 10, 0,   17, '', 'Issue'),
    ('MOVEMENT',        6, 'ISSUE-LINE',     'INTEGER-2-BE',   2,  5, 0,   21, '', 'Issue');

UPDATE LAYOUT SET DEFAULT_VALUE = 'N' WHERE FILE_NAME = 'ORDER-HEAD' AND FIELD_NAME = 'STATE';
UPDATE LAYOUT SET DEFAULT_VALUE = 'PCE' WHERE FILE_NAME = 'ITEM' AND FIELD_NAME = 'UNIT';
UPDATE LAYOUT SET ENCRYPTED = 1 WHERE FILE_NAME = 'PURCHASE' AND FIELD_NAME = 'APPROVED-BY';

INSERT INTO MAPPED (DATABASE_NAME, TABLE_NAME, FILE_NAME, FILE_SPECIFICATION, DISPLAY_NAME, CRITERIA, REMARKS) VALUES
    ('ORDERS',   'BUYER',       'BUYER',         'buyer',          'Buyer', '', ''),
    ('ORDERS',   'ORDER_HEAD',  'ORDER-HEAD',    'orderhead',      'Order_Head', '', ''),
    ('ORDERS',   'OPEN_ORDER',  'ORDER-HEAD',    'orderhead',      'Open_Order', 'ORDERS_OPEN_ORDER.STATE = ''N'' OR ORDERS_OPEN_ORDER.STATE = ''P'' ', 'Orders that wait, over the same file'),
    ('ORDERS',   'ORDER_LINE',  'ORDER-LINE',    'orderline',      'Order_Line', '', ''),
    ('ORDERS',   'INVOICE',     'INVOICE',       'invoice',        'Invoice', '', ''),
    ('STOCK',    'ITEM',        'ITEM',          'ITEM.DAT',       'Item', '', ''),
    ('STOCK',    'BIN',         'BIN',           'BIN.DAT',        'Bin', '', ''),
    ('STOCK',    'STOCK_LEVEL', 'STOCK-LEVEL',   'LEVEL.DAT',      '', '', ''),
    ('STOCK',    'RECEIPT',     'MOVEMENT',      'MOVEMENT.SEQ',   'Receipt', 'STOCK_RECEIPT.KIND = ''R'' ', 'Receipts among the movements'),
    ('STOCK',    'ISSUE',       'MOVEMENT',      'MOVEMENT.SEQ',   'Issue', 'STOCK_ISSUE.KIND = ''I'' ', 'Issues among the movements'),
    ('STOCK',    'SUPPLIER',    'SUPPLIER',      'SUPPLIER.DAT',   'Supplier', '', ''),
    ('STOCK',    'PURCHASE',    'PURCHASE',      'PURCHASE.DAT',   '', '', ''),
    ('EXCHANGE', 'PRICE_LIST',  'PRICE-LIST',    'prices.bin',     '', '', ''),
    ('EXCHANGE', 'DELIVERY',    'DELIVERY',      'delivery.txt',   'Delivery', '', ''),
    ('EXCHANGE', 'SCALES',      'SCALE-READING', 'scales.log',     'Scales', '', '');

-- In one kind of movement the fields of the other hold nothing.
INSERT INTO LEFT_OUT (DATABASE_NAME, TABLE_NAME, FIELD_NAME) VALUES
    ('STOCK', 'RECEIPT', 'ISSUE-ORDER'), ('STOCK', 'RECEIPT', 'ISSUE-LINE'), ('STOCK', 'ISSUE', 'RECEIPT-PURCHASE');

INSERT INTO SPECIAL (DATABASE_NAME, TABLE_NAME, COLUMN_TYPE, REMARKS) VALUES
    ('ORDERS', 'ORDER_HEAD', 2, ''), ('ORDERS', 'ORDER_HEAD', 5, ''), ('ORDERS', 'ORDER_HEAD', 6, ''),
    ('ORDERS', 'ORDER_LINE', 6, ''),
    ('STOCK',  'ITEM',       1, ''), ('STOCK',  'ITEM',       3, ''), ('STOCK',  'ITEM',       4, ''),
    ('STOCK',  'BIN',        7, ''), ('STOCK',  'BIN',        8, 'BAY'),
    ('STOCK',  'RECEIPT',    1, '');

INSERT INTO TW_USER (USER_NAME, USER_PASSWORD, REMARKS) VALUES
    ('PICKER',  'forklift', 'Fetches what was ordered'),
    ('SALES',   'summer',   'Takes orders'),
    ('CARRIER', 'van',      'Brings the delivery file');

INSERT INTO DATABASE_RIGHT (USER_NAME, DATABASE_NAME, RIGHTS, SECURITY_LEVEL, DATABASE_USERNAME, DATABASE_PASSWORD, REMARKS) VALUES
    ('ADMIN',   'ORDERS',   'SIUD', 'DATABASE', '',       '',         ''),
    ('ADMIN',   'STOCK',    'SIUD', 'DATABASE', '',       '',         ''),
    ('ADMIN',   'EXCHANGE', 'SIUD', 'DATABASE', '',       '',         ''),
    ('PICKER',  'STOCK',    'SU',   'TABLE',    'PICKER', 'forklift', ''),
    ('PICKER',  'ORDERS',   'S',    'TABLE',    'PICKER', 'forklift', ''),
    ('SALES',   'ORDERS',   'SIUD', 'DATABASE', '',       '',         ''),
    ('SALES',   'STOCK',    'S',    'DATABASE', '',       '',         'May look what is there'),
    ('CARRIER', 'EXCHANGE', 'SI',   'TABLE',    '',       '',         '');

INSERT INTO TABLE_RIGHT (USER_NAME, DATABASE_NAME, TABLE_NAME, RIGHTS) VALUES
    ('PICKER',  'STOCK',    'STOCK_LEVEL', 'SU'),
    ('PICKER',  'STOCK',    'BIN',         'SU'),
    ('PICKER',  'STOCK',    'ITEM',        'S'),
    ('PICKER',  'ORDERS',   'OPEN_ORDER',  'S'),
    ('PICKER',  'ORDERS',   'ORDER_LINE',  'SU'),
    ('CARRIER', 'EXCHANGE', 'DELIVERY',    'SI');
