-- 1 F(2 a, 3 G(4 b), 5 E()), 6 top
INSERT INTO bookmarks (id, parent, type, title, url, order_index) VALUES
    (1, 0, 1, 'F', NULL, 0), (2, 1, 0, 'a', 'http://a', 0), (3, 1, 1, 'G', NULL, 1), (4, 3, 0, 'b', 'http://b', 0), (5, 1, 1, 'E', NULL, 2),
    (6, 0, 0, 'top', 'http://t', 1);
