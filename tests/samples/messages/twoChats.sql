-- Two chats with a person; the first message of the first one has a picture.
INSERT INTO handle (ROWID, id, service) VALUES (1, '+15550001', 'iMessage');
INSERT INTO chat (ROWID, guid, service_name) VALUES (1, 'c1', 'iMessage'), (2, 'c2', 'SMS');
INSERT INTO chat_handle_join VALUES (1, 1), (2, 1);
INSERT INTO message (ROWID, guid, text, date, handle_id) VALUES (1, 'm1', 'one', 1, 1), (2, 'm2', 'two', 2, 1);
INSERT INTO attachment (ROWID, guid, original_guid, filename, mime_type) VALUES
    (1, 'a', 'a', '~/Library/SMS/Attachments/ab/pic''s; x.jpg', 'image/jpeg');
INSERT INTO message_attachment_join VALUES (1, 1);
INSERT INTO chat_message_join (chat_id, message_id) VALUES (1, 1), (2, 2);
