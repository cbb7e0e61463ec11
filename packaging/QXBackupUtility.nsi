; The program's package, for every user of the machine.
;
;   /S              silent
;   /CABARC=yes|no  with or without the archiver; by default with it where the folder has none
;   /LOG=FILE       adds to a file what is done
;   /D=FOLDER       another folder; the last option, without quotes
;
; Without /D the program goes where it was before; else to the folder of the host's programs, because it
; loads the host's libraries from its own folder and the system folder alone; else below Program Files.
; The settings stand in the host's part of the registry: no package writes or removes them.

!define PRODUCT "QXBackupUtility"
!define KEY "QXBackupUtility"
!define DESCRIPTION "Backup, restore and maintenance log utility"
!define UNINSTALLER "QXBackupUtility-uninstall.exe"
!define OPTION "/CABARC="
!include Package.nsh
OutFile "${PACKAGES}/QXBackupUtility-${VERSION}${MACHINE}-setup.exe"

!define PROGRAM "$INSTDIR\QXBackupUtility.exe"
!define ARCHIVER "$INSTDIR\cabarc.exe"
; An archiver that stood there before ours, kept for the day ours goes.
!define ARCHIVER_BEFORE "$INSTDIR\cabarc.exe.before"
!define SHORTCUT "$SMPROGRAMS\QXBackupUtility.lnk"

!define MUI_WELCOMEPAGE_TEXT "This installs the backup, restore and maintenance log utility of the imaging \
workstation on this computer.$\r$\n$\r$\nThe workstation's host system is installed separately."
!insertmacro MUI_PAGE_WELCOME
!define MUI_DIRECTORYPAGE_TEXT_TOP "The program belongs in the folder of the host's programs: it loads the host's \
libraries from its own folder and the system folder only."
!insertmacro MUI_PAGE_DIRECTORY
!define MUI_PAGE_CUSTOMFUNCTION_PRE ProposeArchiver
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

; The archiver in the folder is ours when the registry says so for this very folder.
!macro IfArchiverIsOurs RESULT
  ReadRegStr $9 HKLM "${UNINSTALL_KEY}" InstallLocation
  ReadRegDWORD ${RESULT} HKLM "${UNINSTALL_KEY}" Archiver
  ${If} $9 != $INSTDIR
    StrCpy ${RESULT} ""
  ${EndIf}
!macroend

!macro RemoveArchiver
  Delete "${ARCHIVER}"
  ${If} ${FileExists} "${ARCHIVER_BEFORE}"
    Rename "${ARCHIVER_BEFORE}" "${ARCHIVER}"
  ${EndIf}
  DeleteRegValue HKLM "${UNINSTALL_KEY}" Archiver
!macroend

; The program's source in the event log, of which Windows takes the words from a program of its own.
!define EVENT_SOURCE "SYSTEM\CurrentControlSet\Services\EventLog\Application\QXBackupUtility"

Var FolderIsNew

Section "Program" SectionProgram
  SectionIn RO
  Call RemoveOther
  ReadRegStr $1 HKLM "${UNINSTALL_KEY}" InstallLocation
  !insertmacro RefuseWhileInUse "$1\QXBackupUtility.exe"
  !insertmacro RefuseWhileInUse "${PROGRAM}"
  !insertmacro RefuseWhileInUse "${ARCHIVER}"
  StrCpy $FolderIsNew "yes"
  ${If} ${FileExists} "$INSTDIR\*.*"
    StrCpy $FolderIsNew "no"
  ${EndIf}
  SetOutPath "$INSTDIR"
  ClearErrors
  File "${BIN}/QXBackupUtility.exe"
  File "${BIN}/QXHostCheck.exe"
  File "${BIN}/QXSetCheck.exe"
  File "/oname=QXBackupUtility.html" "${MANUAL}"
  File "${BIN}/QXBackupUtility-notices.txt"
  File "${BIN}/QXBackupUtility.cdx.json"
  WriteUninstaller "$INSTDIR\${UNINSTALLER}"
  !insertmacro RequireWritten
  Call ProtectProgram
  WriteRegExpandStr HKLM "${EVENT_SOURCE}" EventMessageFile "%SystemRoot%\System32\EventCreate.exe"
  WriteRegDWORD HKLM "${EVENT_SOURCE}" TypesSupported 7
  ; One program serves the whole machine, so one that stands in another folder goes.
  ${If} $1 != ""
  ${AndIf} $1 != $INSTDIR
    !insertmacro Log "Removing the program from $1"
    ExecWait '"$1\${UNINSTALLER}" /S _?=$1'
    Delete "$1\${UNINSTALLER}"
    RMDir "$1"
  ${EndIf}
  CreateShortcut "${SHORTCUT}" "${PROGRAM}" "" "" "" "" "" "${DESCRIPTION}"
SectionEnd

Section /o "Archiver (cabarc.exe)" SectionArchiver
  !insertmacro IfArchiverIsOurs $2
  ${If} $2 != 1
    Rename "${ARCHIVER}" "${ARCHIVER_BEFORE}"
  ${EndIf}
  ClearErrors
  File "${BIN}/cabarc.exe"
  !insertmacro RequireWritten
  !insertmacro Protect "${ARCHIVER}" ""
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" Archiver 1
SectionEnd

Section "-List"
  SectionGetSize ${SectionProgram} $1
  ${If} ${SectionIsSelected} ${SectionArchiver}
    SectionGetSize ${SectionArchiver} $2
    IntOp $1 $1 + $2
  ${Else}
    !insertmacro IfArchiverIsOurs $2
    ${If} $2 == 1
      !insertmacro RemoveArchiver
    ${EndIf}
  ${EndIf}
  !insertmacro EnterInList "QXBackupUtility.exe" $1
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionProgram} "The program, its manual, QXHostCheck, which tells what the \
    host system lacks, and QXSetCheck, which tells whether a backup can be restored."
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionArchiver} \
    "Packs the data. For computers that have no cabarc.exe of their own."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

!insertmacro OptionFunctions ""
!insertmacro OptionFunctions "un."

Function .onInit
  !insertmacro Begin ""
  ${If} $INSTDIR == ""
    ; NSIS passes over a folder that cannot be; a silent run must not go elsewhere for that.
    System::Call "kernel32::GetCommandLine()t.r1"
    ClearErrors
    ${GetOptions} $1 "/D=" $0
    ${IfNot} ${Errors}
      !insertmacro Refuse 87 "/D=$0 is no folder that can be made."
    ${EndIf}
    Call FindFolder
  ${EndIf}
  Call ProposeArchiver
FunctionEnd

; A package of the other kind, for 32 or 64 bits, whose folder may be the same.
Function RemoveOther
  !insertmacro ReadOther $1 "${UNINSTALL_KEY}" InstallLocation
  ${If} $1 == ""
    Return
  ${EndIf}
  !insertmacro RefuseWhileInUse "$1\QXBackupUtility.exe"
  !insertmacro Log "Removing the program of the other kind from $1"
  ExecWait '"$1\${UNINSTALLER}" /S _?=$1'
  Delete "$1\${UNINSTALLER}"
  RMDir "$1"
  Call ProposeArchiver
FunctionEnd

; A folder that setup has made as a whole.
; In another one, such as the host's, others may have to write: its own files alone.
Function ProtectProgram
  ${If} $FolderIsNew == "yes"
    !insertmacro Protect "$INSTDIR" "${WITH_CONTENTS}"
  ${Else}
    !insertmacro Protect "${PROGRAM}" ""
    !insertmacro Protect "$INSTDIR\QXHostCheck.exe" ""
    !insertmacro Protect "$INSTDIR\${UNINSTALLER}" ""
  ${EndIf}
FunctionEnd

Function FindFolder
  ReadRegStr $INSTDIR HKLM "${UNINSTALL_KEY}" InstallLocation
  ${If} $INSTDIR != ""
    Return
  ${EndIf}
  ReadRegStr $0 HKLM "${HOST_KEY}" PathAppl
  StrCpy $INSTDIR "${PROGRAMS_FOLDER}\QXBackupUtility"
  ${If} ${FileExists} "$0\Program\QX32.dll"
    StrCpy $INSTDIR "$0\Program"
  ${ElseIf} ${FileExists} "$0\System\QX32.dll"
    StrCpy $INSTDIR "$0\System"
  ${ElseIf} ${FileExists} "$0\QX32.dll"
    StrCpy $INSTDIR "$0"
  ${EndIf}
FunctionEnd

Function ProposeArchiver
  ${GetParameters} $1
  ClearErrors
  ${GetOptions} $1 "/CABARC=" $0
  ${If} ${Errors}
    !insertmacro IfArchiverIsOurs $0
    ${If} $0 == 1
    ${OrIfNot} ${FileExists} "${ARCHIVER}"
      StrCpy $0 "yes"
    ${Else}
      StrCpy $0 "no"
    ${EndIf}
  ${EndIf}
  ${If} $0 == "yes"
    !insertmacro SelectSection ${SectionArchiver}
  ${ElseIf} $0 == "no"
    !insertmacro UnselectSection ${SectionArchiver}
  ${Else}
    !insertmacro Refuse 87 "/CABARC=$0 is neither yes nor no."
  ${EndIf}
FunctionEnd

Function un.onInit
  !insertmacro Begin "un."
FunctionEnd

Section Uninstall
  !insertmacro RefuseWhileInUse "${PROGRAM}"
  !insertmacro RefuseWhileInUse "${ARCHIVER}"
  ReadRegDWORD $1 HKLM "${UNINSTALL_KEY}" Archiver
  ${If} $1 == 1
    !insertmacro RemoveArchiver
  ${EndIf}
  Delete "${PROGRAM}"
  Delete "$INSTDIR\QXBackupUtility.html"
  Delete "$INSTDIR\QXBackupUtility-notices.txt"
  Delete "$INSTDIR\QXBackupUtility.cdx.json"
  Delete "$INSTDIR\QXHostCheck.exe"
  Delete "$INSTDIR\QXSetCheck.exe"
  Delete "${SHORTCUT}"
  DeleteRegKey HKLM "${EVENT_SOURCE}"
  !insertmacro LeaveList
SectionEnd
