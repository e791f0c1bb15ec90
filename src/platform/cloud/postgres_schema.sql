-- The records of many people, each of whom is a database role and sees only their own. Whoever
-- writes into "clip" or "template" need not know of the other tables: the triggers keep them.
-- Strings are UTF-8 in bytea, since "text" cannot hold every character that a clip can.
CREATE SCHEMA brimlo;

CREATE TABLE brimlo.version (version integer NOT NULL);
INSERT INTO brimlo.version VALUES (1);

-- The number of a person's last change. Held until the end of a transaction that changes anything,
-- so that changes become visible in the order of their numbers.
CREATE TABLE brimlo.account (
  owner name NOT NULL DEFAULT current_user PRIMARY KEY,
  revision bigint NOT NULL,
  stamp uuid NOT NULL
);
CREATE TABLE brimlo.change (
  owner name NOT NULL DEFAULT current_user,
  revision bigint NOT NULL,
  stamp uuid NOT NULL,
  at timestamptz NOT NULL DEFAULT now(),
  PRIMARY KEY (owner, revision)
);
CREATE TABLE brimlo.clip (
  owner name NOT NULL DEFAULT current_user,
  id bytea NOT NULL,
  text bytea,
  saved_at double precision,          -- seconds since 1970
  source bytea,
  tags json,                          -- an array of strings
  revision bigint NOT NULL,
  PRIMARY KEY (owner, id)
);
CREATE TABLE brimlo.template (
  owner name NOT NULL DEFAULT current_user,
  id bytea NOT NULL,
  title bytea,
  body bytea,
  created_at double precision,
  revision bigint NOT NULL,
  PRIMARY KEY (owner, id)
);
CREATE TABLE brimlo.deleted (
  owner name NOT NULL DEFAULT current_user,
  type text NOT NULL,
  id bytea NOT NULL,
  revision bigint NOT NULL,
  PRIMARY KEY (owner, type, id)
);
CREATE INDEX change_at ON brimlo.change (owner, at);
CREATE INDEX clip_revision ON brimlo.clip (owner, revision);
CREATE INDEX template_revision ON brimlo.template (owner, revision);
CREATE INDEX deleted_revision ON brimlo.deleted (owner, revision);

ALTER TABLE brimlo.account ENABLE ROW LEVEL SECURITY, FORCE ROW LEVEL SECURITY;
ALTER TABLE brimlo.change ENABLE ROW LEVEL SECURITY, FORCE ROW LEVEL SECURITY;
ALTER TABLE brimlo.clip ENABLE ROW LEVEL SECURITY, FORCE ROW LEVEL SECURITY;
ALTER TABLE brimlo.template ENABLE ROW LEVEL SECURITY, FORCE ROW LEVEL SECURITY;
ALTER TABLE brimlo.deleted ENABLE ROW LEVEL SECURITY, FORCE ROW LEVEL SECURITY;
CREATE POLICY own ON brimlo.account USING (owner = current_user);
CREATE POLICY own ON brimlo.change USING (owner = current_user);
CREATE POLICY own ON brimlo.clip USING (owner = current_user);
CREATE POLICY own ON brimlo.template USING (owner = current_user);
CREATE POLICY own ON brimlo.deleted USING (owner = current_user);

-- The number of this transaction's changes to what "who" owns, which the first of them takes.
CREATE FUNCTION brimlo.next_revision(who name) RETURNS bigint LANGUAGE plpgsql
SET search_path = pg_catalog AS $$
DECLARE
  memo text := current_setting('brimlo.revision', true);
  number bigint;
  mark uuid := gen_random_uuid();
BEGIN
  IF memo = split_part(memo, ' ', 1) || ' ' || who THEN
    RETURN split_part(memo, ' ', 1)::bigint;
  END IF;
  INSERT INTO brimlo.account AS a (owner, revision, stamp) VALUES (who, 1, mark)
    ON CONFLICT (owner) DO UPDATE SET revision = a.revision + 1, stamp = mark
    RETURNING a.revision INTO number;
  INSERT INTO brimlo.change (owner, revision, stamp) VALUES (who, number, mark);
  PERFORM set_config('brimlo.revision', number || ' ' || who, true);
  RETURN number;
END $$;

CREATE FUNCTION brimlo.number_change() RETURNS trigger LANGUAGE plpgsql
SET search_path = pg_catalog AS $$
BEGIN
  IF TG_OP <> 'DELETE' THEN
    NEW.revision := brimlo.next_revision(NEW.owner);
  END IF;
  IF TG_OP = 'DELETE' OR (TG_OP = 'UPDATE' AND (OLD.owner, OLD.id) <> (NEW.owner, NEW.id)) THEN
    INSERT INTO brimlo.deleted AS d (owner, type, id, revision)
      VALUES (OLD.owner, TG_ARGV[0], OLD.id, brimlo.next_revision(OLD.owner))
      ON CONFLICT (owner, type, id) DO UPDATE SET revision = excluded.revision;
  END IF;
  IF TG_OP = 'DELETE' THEN
    RETURN OLD;
  END IF;
  RETURN NEW;
END $$;
CREATE TRIGGER number_change BEFORE INSERT OR UPDATE OR DELETE ON brimlo.clip
  FOR EACH ROW EXECUTE FUNCTION brimlo.number_change('Clip');
CREATE TRIGGER number_change BEFORE INSERT OR UPDATE OR DELETE ON brimlo.template
  FOR EACH ROW EXECUTE FUNCTION brimlo.number_change('Template');

-- TRUNCATE has no rows to number: everybody pulls everything anew.
CREATE FUNCTION brimlo.forget_places() RETURNS trigger LANGUAGE plpgsql
SET search_path = pg_catalog AS $$
BEGIN
  DELETE FROM brimlo.change;
  UPDATE brimlo.account SET stamp = gen_random_uuid();
  RETURN NULL;
END $$;
CREATE TRIGGER forget_places AFTER TRUNCATE ON brimlo.clip
  FOR EACH STATEMENT EXECUTE FUNCTION brimlo.forget_places();
CREATE TRIGGER forget_places AFTER TRUNCATE ON brimlo.template
  FOR EACH STATEMENT EXECUTE FUNCTION brimlo.forget_places();
