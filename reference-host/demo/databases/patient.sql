-- The patients. Their IDs are the names of the folders in Data\Patient.
CREATE TABLE T_TPATIENT(
  PATIENT_SEQ INTEGER PRIMARY KEY,
  PATIENT_ID TEXT NOT NULL UNIQUE,
  PATIENT_NAME TEXT NOT NULL,
  BIRTH_DATE TEXT NOT NULL,
  SEX TEXT NOT NULL);
WITH RECURSIVE
  FAMILY(NO, NAME) AS (VALUES (0, 'Müller'), (1, 'Schröder'), (2, 'García'), (3, 'Lindqvist'), (4, 'Okafor'),
    (5, 'Nováková'), (6, 'O''Neill'), (7, 'Tanaka'), (8, 'Jørgensen'), (9, 'Bianchi'), (10, 'Weiß'), (11, 'Kowalska')),
  GIVEN(NO, NAME, SEX) AS (VALUES (0, 'Anna', 'F'), (1, 'José', 'M'), (2, 'Karin', 'F'), (3, 'Peter', 'M'),
    (4, 'Amélie', 'F'), (5, 'Søren', 'M'), (6, 'Ines', 'F'), (7, 'Jan', 'M'), (8, 'Yuki', 'F'), (9, 'Luca', 'M')),
  PATIENT(NO) AS (SELECT 1 UNION ALL SELECT NO + 1 FROM PATIENT WHERE NO < 120)
INSERT INTO T_TPATIENT
  SELECT PATIENT.NO, printf('P%06d', PATIENT.NO), FAMILY.NAME || ' ' || GIVEN.NAME,
    date('1931-03-07', (PATIENT.NO * 257) || ' days'), GIVEN.SEX
  FROM PATIENT
  JOIN FAMILY ON FAMILY.NO = PATIENT.NO * 7 % 12
  JOIN GIVEN ON GIVEN.NO = (PATIENT.NO - 1) / 12;
