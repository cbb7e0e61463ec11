; The reference host's package: a stand-in for the host system, with made-up patients, to see and try the
; program on a machine that has no host system. It refuses a machine that has one.
;
;   /S         silent
;   /LOG=FILE  adds to a file what is done
;
; build.sh hands in STAGE (the folder with everything that goes to C:\Tarsus) and FILES (a list of what is
; in it, as instructions that delete it).
;
; Its path table, databases and scripts name C:\Tarsus, so there is no other folder.

!define PRODUCT "Tarsus reference host (demonstration)"
!define KEY "TarsusReferenceHost"
!define DESCRIPTION "Demonstration of the host system, for QXBackupUtility"
!define UNINSTALLER "ReferenceHost-uninstall.exe"
!include Package.nsh
OutFile "${PACKAGES}/ReferenceHost-${VERSION}${MACHINE}-demonstration-setup.exe"

!define SHORTCUTS "$SMPROGRAMS\Tarsus reference host (demonstration)"
!define COMPONENTS "$INSTDIR\Program\TarsusComponents.dll"
!define DATA_ACCESS "$INSTDIR\Program\TarsusDataAccess.dll"
!define DRIVER "$INSTDIR\Program\sqlite3odbc.dll"
; As the host's path table names it.
!define DRIVER_NAME "SQLite3"
!define DRIVER_KEY "SOFTWARE\ODBC\ODBCINST.INI\${DRIVER_NAME}"
!define DRIVER_LIST "SOFTWARE\ODBC\ODBCINST.INI\ODBC Drivers"

!define MUI_WELCOMEPAGE_TITLE "A demonstration, not the host system"
!define MUI_WELCOMEPAGE_TEXT "This installs a stand-in for the host system, with made-up patients, in C:\Tarsus. With \
it QXBackupUtility can be tried on a computer that has no host system.$\r$\n$\r$\nNever install it on a \
workstation that is used for patients."
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

Section "Demonstration" SectionHost
  !insertmacro RefuseWhileInUse "$INSTDIR\System\Tarsus.exe"
  !insertmacro RefuseWhileInUse "$INSTDIR\Program\QX32.dll"
  !insertmacro RefuseWhileInUse "${COMPONENTS}"
  SetOutPath "$INSTDIR"
  ClearErrors
  File /r "${STAGE}/*"
  SetDateSave off ; of the other files, which stand among the sources, the date is the checkout's
  File "/oname=THIS IS A DEMONSTRATION.txt" "Demonstration.txt"
  InitPluginsDir
  File "/oname=$PLUGINSDIR\host.reg" "../reference-host/demo/registry.reg"
  WriteUninstaller "$INSTDIR\${UNINSTALLER}"
  !insertmacro RequireWritten
  nsExec::Exec '"$SYSDIR\reg.exe" import "$PLUGINSDIR\host.reg"'
  Pop $0
  RegDLL "${COMPONENTS}"
  ${If} $0 != 0
  ${OrIf} ${Errors}
    SetErrorLevel 2
    Abort "The host's settings or components could not be registered."
  ${EndIf}
  ; Answers that it will not, and changes nothing, on a machine with a data access of its own. There the driver is what
  ; stands between that and the demonstration's databases; one of that name that is there already does as well.
  RegDLL "${DATA_ACCESS}"
  ReadRegStr $0 HKLM "${DRIVER_KEY}" Driver
  ${If} $0 == ""
    WriteRegStr HKLM "${DRIVER_KEY}" Driver "${DRIVER}"
    WriteRegStr HKLM "${DRIVER_KEY}" Setup "${DRIVER}"
    WriteRegStr HKLM "${DRIVER_LIST}" "${DRIVER_NAME}" Installed
    !insertmacro Log "Database driver: ${DRIVER}"
  ${EndIf}
  !insertmacro Protect "$INSTDIR\Program" "${WITH_CONTENTS}"
  !insertmacro Protect "$INSTDIR\System" "${WITH_CONTENTS}"
  CreateDirectory "${SHORTCUTS}"
  CreateShortcut "${SHORTCUTS}\Tarsus.lnk" "$INSTDIR\System\Tarsus.exe"
  CreateShortcut "${SHORTCUTS}\About the demonstration.lnk" "$INSTDIR\THIS IS A DEMONSTRATION.txt"
  SectionGetSize ${SectionHost} $1
  !insertmacro EnterInList "System\Tarsus.exe" $1
  Call CheckHost
SectionEnd

; Whether the program would find everything. The check must stand beside the host's libraries for that; it comes with
; the program, and here for this moment alone.
Function CheckHost
  File "/oname=$INSTDIR\Program\SetupCheck.exe" "${BIN}/QXHostCheck.exe"
  nsExec::ExecToStack '"$INSTDIR\Program\SetupCheck.exe"'
  Pop $0
  Pop $1
  Delete "$INSTDIR\Program\SetupCheck.exe"
  !insertmacro Log "Host check: $0 missing$\r$\n$1"
  ${If} $0 != 0
    !insertmacro Tell "The demonstration is installed, and its check says that something is missing. (exit code 1603)"
    SetErrorLevel 1603
    Abort "Something is missing:$\r$\n$1"
  ${EndIf}
FunctionEnd

!insertmacro OptionFunctions ""
!insertmacro OptionFunctions "un."

Function .onInit
  StrCpy $INSTDIR "C:\Tarsus"
  !insertmacro Begin ""
  ReadRegStr $0 HKLM "${UNINSTALL_KEY}" InstallLocation
  ReadRegStr $1 HKLM "${HOST_KEY}" PathAppl
  !insertmacro ReadOther $2 "${HOST_KEY}" PathAppl
  ${If} $0 == ""
    ${If} $1$2 != ""
    ${OrIf} ${FileExists} "$INSTDIR\*.*"
      !insertmacro Refuse 183 "This computer has a host system. The demonstration must not be installed beside it."
    ${EndIf}
  ${EndIf}
FunctionEnd

Function un.onInit
  !insertmacro Begin "un."
FunctionEnd

Section Uninstall
  !insertmacro RefuseWhileInUse "$INSTDIR\System\Tarsus.exe"
  !insertmacro RefuseWhileInUse "$INSTDIR\Program\QX32.dll"
  ReadRegStr $0 HKLM "${DRIVER_KEY}" Driver
  ${If} $0 == "${DRIVER}"
    DeleteRegKey HKLM "${DRIVER_KEY}"
    DeleteRegValue HKLM "${DRIVER_LIST}" "${DRIVER_NAME}"
    ; A computer without any driver has none of these keys.
    DeleteRegKey /ifnosubkeys /ifnovalues HKLM "${DRIVER_LIST}"
    DeleteRegKey /ifnosubkeys /ifnovalues HKLM "SOFTWARE\ODBC\ODBCINST.INI"
    DeleteRegKey /ifnosubkeys /ifnovalues HKLM "SOFTWARE\ODBC"
  ${EndIf}
  UnRegDLL "${DATA_ACCESS}"
  UnRegDLL "${COMPONENTS}"
  !include "${FILES}"
  Delete "$INSTDIR\THIS IS A DEMONSTRATION.txt"
  Delete "${SHORTCUTS}\*.lnk"
  RMDir "${SHORTCUTS}"
  DeleteRegKey HKLM "${HOST_KEY}"
  DeleteRegKey /ifempty HKLM "SOFTWARE\Orvantis"
  !insertmacro LeaveList
SectionEnd
