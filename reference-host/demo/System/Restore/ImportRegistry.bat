@echo off
rem Puts the exported registry values of the host back. Started by the restore, whose staging
rem folder's archive folder holds the export; the newest one wins.
for /d %%d in ("%TEMP%\*") do if exist "%%d\CABFILE\*.reg" for %%f in ("%%d\CABFILE\*.reg") do regedit /S "%%f"
