@echo off
rem Closes the host's logs under another name; the log deletion then removes those.
cd /d "C:\Tarsus\Log"
for %%f in (Acquisition Network Printer Database) do if exist %%f.log ren %%f.log %%f.old
