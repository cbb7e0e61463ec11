@echo off
rem Tells the host that the patient database has been replaced.
echo patients restored >> "C:\Tarsus\Log\Restore.log"
