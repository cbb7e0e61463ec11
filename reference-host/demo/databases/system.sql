-- The system configuration database: values by group and name.
CREATE TABLE T_CONFIG(
  GROUP_NAME TEXT NOT NULL,
  NAME TEXT NOT NULL,
  VALUE TEXT,
  PRIMARY KEY(GROUP_NAME, NAME));
-- The message table's name stands behind its language; MSG_GERMAN is the other one.
INSERT INTO T_CONFIG VALUES
  ('SysConfig', 'MsgTableName', 'ENG:MSG_ENGLISH'),
  ('SysConfig', 'SystemName', 'Tarsus'),
  ('SysConfig', 'InstitutionName', 'Demonstration Hospital'),
  ('Display', 'IdleMinutes', '15');
