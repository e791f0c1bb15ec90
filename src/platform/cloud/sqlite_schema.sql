-- Records, the numbers of their changes, and what was deleted. Whoever writes into "clip" or
-- "template" need not know of the rest: the triggers keep it.
CREATE TABLE account (
  one INTEGER PRIMARY KEY CHECK (one = 1),
  revision INTEGER NOT NULL,
  stamp TEXT NOT NULL,
  pushing INTEGER NOT NULL DEFAULT 0   -- not 0 within a transaction that numbers its changes itself
);
CREATE TABLE change (
  revision INTEGER PRIMARY KEY,
  stamp TEXT NOT NULL,
  at INTEGER NOT NULL DEFAULT (unixepoch())
);
CREATE TABLE clip (
  id TEXT NOT NULL PRIMARY KEY,
  text TEXT,
  saved_at REAL,                       -- seconds since 1970
  source TEXT,
  tags TEXT,                           -- a JSON array of strings
  revision INTEGER NOT NULL DEFAULT 0
);
CREATE TABLE template (
  id TEXT NOT NULL PRIMARY KEY,
  title TEXT,
  body TEXT,
  created_at REAL,
  revision INTEGER NOT NULL DEFAULT 0
);
CREATE TABLE deleted (
  type TEXT NOT NULL,
  id TEXT NOT NULL,
  revision INTEGER NOT NULL,
  PRIMARY KEY (type, id)
) WITHOUT ROWID;
CREATE INDEX clip_revision ON clip (revision);
CREATE INDEX template_revision ON template (revision);
CREATE INDEX deleted_revision ON deleted (revision);

CREATE VIEW next_revision AS SELECT revision FROM account;
CREATE TRIGGER number_change INSTEAD OF UPDATE ON next_revision BEGIN
  UPDATE account SET revision = revision + 1, stamp = lower(hex(randomblob(16)));
  INSERT INTO change (revision, stamp) SELECT revision, stamp FROM account;
END;

CREATE TRIGGER clip_inserted AFTER INSERT ON clip WHEN (SELECT pushing FROM account) = 0 BEGIN
  UPDATE next_revision SET revision = 0;
  UPDATE clip SET revision = (SELECT revision FROM account) WHERE id = new.id;
END;
CREATE TRIGGER clip_updated AFTER UPDATE OF id, text, saved_at, source, tags ON clip
WHEN (SELECT pushing FROM account) = 0 BEGIN
  UPDATE next_revision SET revision = 0;
  UPDATE clip SET revision = (SELECT revision FROM account) WHERE id = new.id;
  INSERT OR REPLACE INTO deleted
    SELECT 'Clip', old.id, revision FROM account WHERE old.id <> new.id;
END;
CREATE TRIGGER clip_deleted AFTER DELETE ON clip WHEN (SELECT pushing FROM account) = 0 BEGIN
  UPDATE next_revision SET revision = 0;
  INSERT OR REPLACE INTO deleted SELECT 'Clip', old.id, revision FROM account;
END;
CREATE TRIGGER template_inserted AFTER INSERT ON template
WHEN (SELECT pushing FROM account) = 0 BEGIN
  UPDATE next_revision SET revision = 0;
  UPDATE template SET revision = (SELECT revision FROM account) WHERE id = new.id;
END;
CREATE TRIGGER template_updated AFTER UPDATE OF id, title, body, created_at ON template
WHEN (SELECT pushing FROM account) = 0 BEGIN
  UPDATE next_revision SET revision = 0;
  UPDATE template SET revision = (SELECT revision FROM account) WHERE id = new.id;
  INSERT OR REPLACE INTO deleted
    SELECT 'Template', old.id, revision FROM account WHERE old.id <> new.id;
END;
CREATE TRIGGER template_deleted AFTER DELETE ON template
WHEN (SELECT pushing FROM account) = 0 BEGIN
  UPDATE next_revision SET revision = 0;
  INSERT OR REPLACE INTO deleted SELECT 'Template', old.id, revision FROM account;
END;

INSERT INTO account (one, revision, stamp) VALUES (1, 0, lower(hex(randomblob(16))));
INSERT INTO change (revision, stamp) SELECT revision, stamp FROM account;
PRAGMA user_version = 1;
