@echo off
rem Writes the list of studies beside this file, without anything that tells who the patients are.
"C:\Tarsus\System\ExportTable.exe" StudyDB "T_TSTUDY NATURAL JOIN Patient.T_TPATIENT" T_TSTUDY.txt PATIENT_SEQ PATIENT_ID PATIENT_NAME BIRTH_DATE
