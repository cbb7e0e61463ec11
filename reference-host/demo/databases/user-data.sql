-- The users as the viewer knows them; the build script adds those of users.tsv.
CREATE TABLE T_MUSER(
  USER_ID TEXT PRIMARY KEY,
  DISP_NAME TEXT NOT NULL,
  TOOL TEXT NOT NULL DEFAULT 'Zoom');
