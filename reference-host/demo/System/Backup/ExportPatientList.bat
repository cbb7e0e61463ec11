@echo off
rem Writes the list of patient folders that the backup keeps beside the database.
dir /b "C:\Tarsus\Data\Patient" > "C:\Tarsus\Temp\PatientList.txt"
