-- Patients whose data must not leave the workstation; the build script names them as the patient database does.
CREATE TABLE T_DELETE_PATIENT(
  PATIENT_ID TEXT PRIMARY KEY,
  PATIENT_NAME TEXT);
INSERT INTO T_DELETE_PATIENT(PATIENT_ID) VALUES ('P000005'), ('P000017'), ('P000042'), ('P000108');
