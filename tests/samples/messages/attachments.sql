-- Files inside and outside the folder of attachments, without a name, with a NUL in the name, and one that is missing.
INSERT INTO chat (ROWID, guid, account_login, service_name) VALUES (1, 'c1', 'P:+1999', 'iMessage');
INSERT INTO message (ROWID, guid, text, date, is_from_me) VALUES (1, 'm', char(65532) || 'look', 1, 1);
INSERT INTO attachment (ROWID, guid, original_guid, filename, transfer_name, mime_type, uti) VALUES
    (1, 'a1', 'a1', '~/Library/SMS/Attachments/one.bin', '', '', 'public.data'),
    (2, 'a2', 'a2', '~/../../etc/passwd', NULL, NULL, NULL),
    (3, 'a3', 'a3', '/etc/passwd', 'Messages.html', 'text/html', NULL),
    (4, 'a4', 'a4', NULL, NULL, NULL, ''),
    (5, 'a5', 'a5', CAST(x'7E2F4C6962726172790041' AS TEXT), 'x', 'a/b', 'c'),
    (6, 'a6', 'a6', '~/Library/SMS/Attachments', 'folder', NULL, NULL);
INSERT INTO message_attachment_join VALUES (1, 6), (1, 5), (1, 4), (1, 3), (1, 2), (1, 1), (1, 99);
INSERT INTO chat_message_join (chat_id, message_id) VALUES (1, 1);
