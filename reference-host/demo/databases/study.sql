-- The studies of the last year and the files that belong to them. Times are local.
CREATE TABLE T_TSTUDY(
  STUDY_SEQ INTEGER PRIMARY KEY,
  PATIENT_ID TEXT NOT NULL,
  STUDY_DATETIME TEXT NOT NULL,
  REGION TEXT NOT NULL);
CREATE TABLE T_TDATA_FILE(
  FILE_SEQ INTEGER PRIMARY KEY,
  STUDY_SEQ INTEGER NOT NULL REFERENCES T_TSTUDY(STUDY_SEQ),
  URL TEXT NOT NULL);  -- "file://" and a Windows path
CREATE INDEX I_TDATA_FILE_STUDY ON T_TDATA_FILE(STUDY_SEQ);
-- Study n belongs to the patient whose images the host's image folder numbers n - 1.
WITH RECURSIVE
  REGION(NO, NAME) AS (VALUES (0, 'Thorax'), (1, 'Abdomen'), (2, 'Knee'), (3, 'Hand'), (4, 'Skull'), (5, 'Spine')),
  STUDY(NO) AS (SELECT 1 UNION ALL SELECT NO + 1 FROM STUDY WHERE NO < 300)
INSERT INTO T_TSTUDY
  SELECT STUDY.NO, printf('P%06d', 1 + (STUDY.NO - 1) % 120),
    datetime('now', 'localtime', '-' || (STUDY.NO * 37 % 365) || ' days', '-' || (STUDY.NO * 53 % 480 + 5) || ' minutes'),
    REGION.NAME
  FROM STUDY JOIN REGION ON REGION.NO = STUDY.NO % 6;
INSERT INTO T_TDATA_FILE(STUDY_SEQ, URL)
  SELECT STUDY_SEQ, printf('file://C:\Tarsus\Data\Image.ddo\%03d\%s_%05d.ddo', (STUDY_SEQ - 1) / 64, PATIENT_ID, STUDY_SEQ - 1)
  FROM T_TSTUDY WHERE STUDY_SEQ <= 256;
-- The latest studies have a report too, and some older images have moved to the archive server.
INSERT INTO T_TDATA_FILE(STUDY_SEQ, URL)
  SELECT STUDY_SEQ, printf('file://C:\Tarsus\Data\Report\%05d.txt', STUDY_SEQ) FROM T_TSTUDY
  WHERE STUDY_DATETIME >= datetime('now', 'localtime', '-30 days');
INSERT INTO T_TDATA_FILE(STUDY_SEQ, URL)
  SELECT STUDY_SEQ, printf('file://\\ARCHIVE\Image\%s_%05d.ddo', PATIENT_ID, STUDY_SEQ - 1) FROM T_TSTUDY
  WHERE STUDY_SEQ > 256;
