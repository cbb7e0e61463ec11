@echo off
rem Writes the list of studies, with their patients, beside this file.
"C:\Tarsus\System\ExportTable.exe" StudyDB "T_TSTUDY NATURAL JOIN Patient.T_TPATIENT" T_TSTUDY.txt
