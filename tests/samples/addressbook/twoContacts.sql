-- ABMultiValue's property 3 is a phone number, 4 an e-mail address.
INSERT INTO ABPerson (ROWID, First, Last) VALUES (1, 'Ada', 'Lovelace');
INSERT INTO ABPerson (ROWID, First, Note) VALUES (2, 'Bad' || char(27) || 'Name', 'tab' || char(9) || 'here');
INSERT INTO ABMultiValue (UID, record_id, property, identifier, value) VALUES (1, 1, 3, 0, '+44 20 555'), (2, 1, 4, 0, 'ada@example.com');
INSERT INTO ABGroup (ROWID, Name) VALUES (7, 'Friends');
INSERT INTO ABGroupMembers (group_id, member_type, member_id) VALUES (7, 0, 1);
