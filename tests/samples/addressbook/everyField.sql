-- Rows of every kind, in whatever version of the tables.
INSERT INTO ABPerson (ROWID, Prefix, First, Middle, Last, Suffix, FirstPhonetic, LastPhonetic, MiddlePhonetic, Nickname, Organization, Department,
    JobTitle, Note, Birthday) VALUES (7, 'Dr.', 'Ada', 'K.', 'Lovelace', 'II', 'aida', 'lavleis', 'kay', 'Countess', 'Engines', '', 'Analyst',
    'line' || char(10) || 'two', '-547783200.000000');
INSERT INTO ABMultiValueLabel (rowid, value) VALUES (1, '_$!<Mobile>!$_'), (2, 'boat'), (3, '_$!<Home>!$_');
INSERT INTO ABMultiValueEntryKey (rowid, value) VALUES (11, 'ZIP'), (12, 'street'), (13, 'City'), (14, 'State'), (15, 'Country'), (16, 'CountryCode'),
    (17, 'username'), (18, 'Service');
INSERT INTO ABMultiValue (UID, record_id, property, identifier, label, value) VALUES (9, 7, 3, 1, NULL, '2'), (5, 7, 3, 0, 1, '+1'), (6, 7, 4, 0, 2, 'a@b'),
    (20, 7, 5, 0, 3, NULL), (21, 7, 13, 0, 3, NULL), (22, 7, 12, 0, NULL, '0'), (23, 7, 22, 0, 99, 'http://x'), (24, 7, 23, 0, 2, 'Byron'),
    (25, 7, 16, 0, 2, 'ringtone'), (26, 404, 3, 0, 1, 'nobody');
INSERT INTO ABMultiValueEntry (parent_id, key, value) VALUES (21, 17, 'ada'), (20, 12, 'Main 1'), (20, 11, '1000'), (20, 13, 'London'), (20, 14, ''),
    (20, 15, 'UK'), (20, 16, 'gb'), (21, 18, 'Chat'), (777, 11, 'orphan'), (20, 999, 'unknown');
