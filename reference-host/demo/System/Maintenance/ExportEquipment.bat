@echo off
rem Writes what a service engineer wants to know of the installation beside this file; the
rem maintenance log takes every text file from here. Nothing in them tells of patients.
"C:\Tarsus\System\ExportTable.exe" NetConfigDB T_EQUIPMENT Equipment.txt
"C:\Tarsus\System\ExportTable.exe" NetConfigDB T_DRIVE Drives.txt
dir /s "C:\Tarsus\Program" > Programs.txt
