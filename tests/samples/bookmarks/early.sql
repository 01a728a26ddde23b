-- Early databases know fewer columns.
CREATE TABLE bookmarks (id INTEGER PRIMARY KEY, parent INTEGER, type INTEGER, title TEXT, url TEXT, order_index INTEGER NOT NULL);
INSERT INTO bookmarks VALUES (0, NULL, 1, 'Root', NULL, 0);
