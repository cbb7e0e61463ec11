; The acceptance kit: one executable that unpacks itself to C:\QXAcceptance and starts acceptance.exe there, which tells
; what it is going to do and asks before it does it. acceptance.sh hands in KIT (the folder with everything) and OUT.

Unicode true
!ifdef AMD64
Target amd64-unicode
!endif
ManifestDPIAware true
ManifestSupportedOS all
RequestExecutionLevel admin
SetCompressor /SOLID lzma

!include LogicLib.nsh

Name "QXBackupUtility: acceptance"
Caption "QXBackupUtility: acceptance"
OutFile "${OUT}"
SilentInstall silent
InstallDir "C:\QXAcceptance"

Function .onInit
  ${If} ${FileExists} "$INSTDIR\*.*"
    MessageBox MB_OK|MB_ICONSTOP "$INSTDIR is there already. Look at what it holds, run its undo.cmd, and remove it." /SD IDOK
    SetErrorLevel 100
    Quit
  ${EndIf}
FunctionEnd

Section
  SetOutPath "$INSTDIR"
  File /r "${KIT}/*"
  ; In a window of its own, which stays until its reader has seen the end.
  ExecWait '"$SYSDIR\cmd.exe" /c ""$INSTDIR\acceptance.exe" & start "" "$INSTDIR\report.html" & pause"'
SectionEnd
