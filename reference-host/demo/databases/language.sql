-- The language database; the build script fills it from the catalogue's files.
CREATE TABLE MSG_ENGLISH(
  "ID" INTEGER PRIMARY KEY,
  BUTTONS INTEGER NOT NULL CHECK(BUTTONS IN (1, 2)),
  ICON TEXT NOT NULL CHECK(ICON IN ('information', 'question', 'warning', 'error')),
  "String" TEXT);
CREATE TABLE MSG_GERMAN(
  "ID" INTEGER PRIMARY KEY,
  BUTTONS INTEGER NOT NULL CHECK(BUTTONS IN (1, 2)),
  ICON TEXT NOT NULL CHECK(ICON IN ('information', 'question', 'warning', 'error')),
  "String" TEXT);
