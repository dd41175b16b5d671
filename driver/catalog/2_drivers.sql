-- The file-access drivers. SYSTEM serves the catalog's own files and is offered to nobody.

INSERT INTO TW_DRIVER
    (DRIVER_NAME, DRIVER_VERSION, INDEXED_FILES, RELATIVE_FILES, SEQUENTIAL_FILES, READ_ONLY, REMARKS)
VALUES
    ('SYSTEM',  '1.0', 1, 0, 0, 0, 'The catalog''s own files'),
    ('VAX-RMS', '1.0', 1, 1, 1, 0, 'Record-managed files: indexed, relative and sequential'),
    ('DISAM',   '1.0', 1, 0, 0, 0, 'Indexed sequential files, a data file with an index file beside it'),
    ('FLAT',    '1.0', 0, 0, 1, 0, 'Plain files of records one after the other, with or without line ends');
